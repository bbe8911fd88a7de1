// SPDX-License-Identifier: MIT
#include "browser/textgrid.h"

#include <algorithm>
#include <array>
#include <utility>

namespace TextGrid {

namespace {

bool isWide(char32_t c)
{
    static constexpr std::array<std::pair<char32_t, char32_t>, 9> ranges{{{0x1100, 0x115F},
                                                                          {0x2E80, 0x303E},
                                                                          {0x3041, 0xA4CF},
                                                                          {0xAC00, 0xD7A3},
                                                                          {0xF900, 0xFAFF},
                                                                          {0xFE30, 0xFE6F},
                                                                          {0xFF00, 0xFF60},
                                                                          {0x1F300, 0x1FAFF},
                                                                          {0x20000, 0x3FFFD}}};
    return std::any_of(ranges.begin(), ranges.end(),
                       [c](const auto& range) { return c >= range.first && c <= range.second; });
}

int columnsOf(char32_t c)
{
    const auto category = QChar::category(c);
    const bool isNone = category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing ||
                        category == QChar::Other_Format;
    return isNone ? 0 : isWide(c) ? 2 : 1;
}

/// Where the piece that begins at `from` ends: a wide character, or a word with the blanks behind it.
qsizetype endOfPiece(QStringView text, qsizetype from)
{
    qsizetype at = from;
    while (at < text.size() && text[at] != u' ' && !isWide(text[at].unicode())) {
        ++at;
    }
    at += at == from && at < text.size() && text[at] != u' ' ? 1 : 0;
    while (at < text.size() && text[at] == u' ') {
        ++at;
    }
    return at;
}

QString withoutEnd(QString text)
{
    while (text.endsWith(u' ')) {
        text.chop(1);
    }
    return text;
}

} // namespace

int columns(QStringView text)
{
    int sum = 0;
    for (const char32_t c : text.toUcs4()) {
        sum += columnsOf(c);
    }
    return sum;
}

QStringList wrapped(const QString& text, int width)
{
    QStringList lines;
    QString line;
    int used = 0;
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype end = endOfPiece(text, begin);
        const QString piece = text.mid(begin, end - begin);
        if (!line.isEmpty() && used + columns(withoutEnd(piece)) > width) {
            lines += withoutEnd(std::exchange(line, {}));
            used = 0;
        }
        line += piece;
        used += columns(piece);
        begin = end;
    }
    lines += withoutEnd(line);
    return lines;
}

QString padded(const QString& text, int width)
{
    return text + QString(std::max(0, width - columns(text)), u' ');
}

QStringList besideEachOther(const QList<QStringList>& columns, const QList<int>& widths)
{
    qsizetype height = 0;
    for (const auto& lines : columns) {
        height = std::max(height, lines.size());
    }
    QStringList rows;
    for (qsizetype row = 0; row < height; ++row) {
        QString line;
        for (qsizetype i = 0; i < columns.size(); ++i) {
            line += padded(columns[i].value(row), widths[i]) + QString(Gap, u' ');
        }
        rows += withoutEnd(line);
    }
    return rows;
}

} // namespace TextGrid
