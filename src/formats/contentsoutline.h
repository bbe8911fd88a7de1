// SPDX-License-Identifier: MIT
#pragma once

#include "formats/problem.h"

#include <QString>
#include <QStringList>

#include <vector>

/// What an entry of a contents file opens.
enum class EntryTarget {
    Page,     ///< a page file
    Nothing,  ///< a book without a page: the entry's page is the bare directory
    Contents, ///< a further contents file, whose entries stand below
};

/// One row of an outline. Rows are linked by their positions in ContentsOutline::entries; -1 means none.
struct OutlineEntry {
    QString title;
    QString
        page; ///< directory followed by the page as written; of an including line only the name as written
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

/// All that one contents file, with the files that it includes, says.
struct ContentsOutline {
    std::vector<OutlineEntry> entries; ///< in reading order
    int firstTop = -1;
    int firstPage = -1; ///< first entry, in reading order, that is no including line
    QString title;      ///< null when no file names one
    std::vector<QString> files;
    std::vector<QString> titles;
    std::vector<IndexReference> indexFiles;
    std::vector<Problem> problems;
    QStringList malformedFiles; ///< files with an over-deep entry line, by resolved path
    bool readable = false;      ///< the top file could be read
};
