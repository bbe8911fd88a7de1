// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/searchsource.h"

#include <QHash>
#include <QStringList>

#include <stop_token>
#include <vector>

/// A page file of a help set with the entries that lead to it.
struct SourcePage {
    QString file;            ///< absolute path without dot steps
    int64_t size;            ///< bytes
    int64_t time;            ///< of the last change, nanoseconds
    std::vector<int> topics; ///< positions in SearchSource::topics(), in order
    std::vector<int> keywords;
};

/// The page files that a help set names and that exist.
class SourcePages {
public:
    /// Looks at each file once. Once a stop has been asked for, pages are missing.
    SourcePages(const SearchSource& source, const std::stop_token& stop);

    [[nodiscard]] const std::vector<SourcePage>& all() const { return m_pages; }
    /// Those that the pages are in: the folders that they are named from, and what pages outside have in
    /// common. Each ends with "/".
    [[nodiscard]] const QStringList& folders() const { return m_folders; }
    /// Null when there is none.
    [[nodiscard]] const SourcePage* find(const QString& file) const;

private:
    int pageOf(QStringView name);
    int addFile(const QString& file);
    void findFolders(const SearchSource& source);

    std::vector<SourcePage> m_pages;
    QStringList m_folders;
    QHash<QString, int> m_positions; ///< of names without their anchors; -1 when there is no such file
};

/// Where the anchor, with its "#", begins in the name of a page of this file; the name's size when it has
/// none.
[[nodiscard]] qsizetype anchorBegin(QStringView name, QStringView file);
