// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

/// At least as many as the text has lines.
[[nodiscard]] size_t lineBound(QStringView text);

/// Walks the lines of a text that outlives it. A line ends with LF, CRLF or a lone CR; the ends are not part
/// of it. Of a line that is too long for anything that people read, there is only the beginning.
class LineReader {
public:
    static constexpr qsizetype MaximumLength = 1 << 14;

    explicit LineReader(QStringView text) : m_text(text) {}

    /// Steps to the next line; false at the end of the text.
    bool next();
    [[nodiscard]] QStringView line() const { return m_line; }
    /// The line without white space at both ends.
    [[nodiscard]] QStringView trimmed() const { return m_line.trimmed(); }
    [[nodiscard]] bool isCut() const { return m_line.size() == MaximumLength; }
    /// Counted from 1.
    [[nodiscard]] int number() const { return m_number; }

private:
    [[nodiscard]] qsizetype find(QChar end, qsizetype cached) const;

    QStringView m_text;
    QStringView m_line;
    qsizetype m_position = 0;
    qsizetype m_nextLineFeed = -1;
    qsizetype m_nextReturn = -1;
    int m_number = 0;
};
