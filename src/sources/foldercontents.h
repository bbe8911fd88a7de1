// SPDX-License-Identifier: MIT
#pragma once

#include "sources/folderfiles.h"

/// Finds the rows of a folder's contents.
class FolderContents {
public:
    FolderContents(const FolderFiles& files, const std::stop_token& stop) : m_files(files), m_stop(stop) {}

    /// All pages have a row but the one with which readers begin, which may have none.
    [[nodiscard]] std::vector<FolderRow> rows();

private:
    [[nodiscard]] std::vector<FolderRow> listedRows();
    void addExpanded(std::vector<FolderRow> rows);
    void addBranches();
    void addCrates();
    void addOthers();
    void addBranch(const QString& folder, const std::vector<FolderRow>& rows);
    void add(FolderRow row);
    [[nodiscard]] bool isFirstOfFolder(const QString& page) const;
    [[nodiscard]] std::vector<FolderRow> unknownRows(const QString& page);

    const FolderFiles& m_files;
    const std::stop_token& m_stop;
    std::vector<FolderRow> m_rows;
    bool m_isListComplete = false; ///< the generator's list says all that there is to say
    qint64 m_bytesLookedAt = 0;
    int m_foldersLookedAt = 0;
    QSet<QString> m_named; ///< pages without their anchors
};

/// How the page with which readers begin may be named, best first.
[[nodiscard]] const QStringList& startPageNames();
/// That page, relative to the folder; empty when there is no page at all.
[[nodiscard]] QString startPage(const FolderFiles& files);
