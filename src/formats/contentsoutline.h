// SPDX-License-Identifier: MIT
#pragma once

#include "formats/problem.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <vector>

/// What an entry of a contents file opens.
enum class EntryTarget {
    Page,     ///< a page file
    Nothing,  ///< a book without a page: the entry's page is the bare directory
    Contents, ///< a further contents file, whose entries stand below
};

/// One row of an outline. Rows are linked by their positions in ContentsOutline::entries; -1 means none.
struct OutlineEntry {
    QStringView title;
    QStringView page; ///< as written; ContentsOutline::page() gives the path
    int parent = -1;
    int firstChild = -1;
    int nextSibling = -1;
    int helpSet = -1; ///< position in ContentsOutline::titles; -1 while the file has named no title
    int file = 0;     ///< position in ContentsOutline::files
    int line = 0;
    EntryTarget target = EntryTarget::Page;
};

/// An index file that a contents file names.
struct IndexReference {
    QString fileName;
    QString title; ///< of the contents file, null when it had named none yet
    int file = 0;
    int line = 0;
};

/// All that one contents file, with the files that it includes, says. The entries view into the texts, which
/// keep their place in memory when the outline is moved.
struct ContentsOutline {
    ContentsOutline() = default;
    Q_DISABLE_COPY(ContentsOutline)
    ContentsOutline(ContentsOutline&&) = default;
    ContentsOutline& operator=(ContentsOutline&&) = default;
    ~ContentsOutline() = default;

    /// Directory of the file that holds the entry followed by the page; of an including line only the name as
    /// written.
    [[nodiscard]] QString page(const OutlineEntry& entry) const
    {
        return entry.target == EntryTarget::Contents ? entry.page.toString()
                                                     : directories[size_t(entry.file)] + entry.page;
    }

    std::vector<OutlineEntry> entries; ///< in reading order
    int firstTop = -1;
    int firstPage = -1; ///< first entry, in reading order, that is no including line
    QString title;      ///< null when no file names one
    QString ownTitle;   ///< that the top file itself names; null for none
    std::vector<QString> files;
    std::vector<QString> directories; ///< that the pages of each file are relative to; they end with "/"
    std::vector<QString> texts;       ///< of the files that have been read
    std::vector<QString> titles;
    std::vector<IndexReference> indexFiles;
    std::vector<Problem> problems;
    QString limitReached;       ///< a sentence on what was left out; null when all was read
    QStringList malformedFiles; ///< files with an over-deep entry line, by resolved path
    bool readable = false;      ///< the top file could be read
};
