// SPDX-License-Identifier: MIT
#pragma once

#include "formats/regularfile.h"
#include "formats/result.h"

#include <QString>

#include <vector>

/// One keyword line of an index file.
struct IndexLine {
    QString keyword;
    QString link;         ///< the index file's directory followed by the page as written
    int parent = -1;      ///< position of the keyword that a sub-keyword stands under; -1 for a keyword
    int line = 0;         ///< counted from 1
    bool hasPage = false; ///< the line names a page
};

/// The keywords of an index file in reading order.
[[nodiscard]] Result<std::vector<IndexLine>, FileError> readIndex(const QString& fileName);
