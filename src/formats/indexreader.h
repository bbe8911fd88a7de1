// SPDX-License-Identifier: MIT
#pragma once

#include "formats/regularfile.h"
#include "formats/result.h"

#include <QString>
#include <QStringView>

#include <stop_token>
#include <vector>

/// One keyword line of an index file.
struct IndexLine {
    QStringView keyword;
    QStringView page; ///< as written; the path is the index file's directory followed by it
    int parent = -1;  ///< position of the keyword that a sub-keyword stands under; -1 for a keyword
    int line = 0;     ///< counted from 1
};

/// What an index file says. The lines view into the text, which keeps its place in memory when this is moved
/// or copied.
struct IndexOutline {
    QString text;
    QString directory;            ///< ends with "/"
    std::vector<IndexLine> lines; ///< in reading order
};

/// Once a stop has been asked for, the outline ends anywhere.
[[nodiscard]] Result<IndexOutline, FileError> readIndex(const QString& fileName,
                                                        const std::stop_token& stop = {});
