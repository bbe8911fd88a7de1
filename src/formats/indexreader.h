// SPDX-License-Identifier: MIT
#pragma once

#include "formats/linereader.h"

#include <QStringView>

/// One keyword line of an index file.
struct IndexLine {
    QStringView keyword;
    QStringView page;   ///< as written; the path is the index file's directory followed by it
    int parent = -1;    ///< position of the keyword that a sub-keyword stands under; -1 for a keyword
    int line = 0;       ///< counted from 1
    bool isCut = false; ///< was too long and ends early
};

/// Walks the keywords of the text of an index file, which outlives it.
class IndexReader {
public:
    explicit IndexReader(QStringView text) : m_lines(text) {}

    /// Steps to the next keyword; false when there is none.
    bool next();
    [[nodiscard]] const IndexLine& line() const { return m_line; }

private:
    LineReader m_lines;
    IndexLine m_line;
    int m_position = -1;
    int m_lastKeyword = -1;
};
