// SPDX-License-Identifier: MIT
#include "browser/documenttext.h"

#include "browser/textgrid.h"
#include "pages/linkcode.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextList>
#include <QTextTable>

#include <algorithm>
#include <numeric>
#include <vector>

namespace {

constexpr int PixelsPerColumn = 10;
constexpr int SpaceBefore = 10; // pixels that become an empty line
constexpr int SpaceBehind = 5;
constexpr int LeastWidth = 20; // columns
constexpr int Unlimited = 1'000'000;

/// What a terminal would take for a command is no text.
QString printable(QString text)
{
    for (auto& c : text) {
        const bool isTab = c == u'\t';
        c = c == QChar::LineSeparator || c == QChar::ParagraphSeparator ? QChar(u'\n')
            : c == QChar::Nbsp || isTab                                 ? QChar(u' ')
            : c.category() == QChar::Other_Control && c != u'\n'        ? QChar(u'?')
                                                                        : c;
    }
    return text.remove(QChar::ObjectReplacementCharacter);
}

QString markOf(const QTextBlock& block)
{
    const auto* list = block.textList();
    if (list == nullptr) {
        return {};
    }
    const auto style = list->format().style();
    const bool isNumbered = style <= QTextListFormat::ListDecimal;
    return (isNumbered ? list->itemText(block) : QStringLiteral("•")) + u' ';
}

int indentOf(const QTextBlock& block)
{
    const auto* list = block.textList();
    const int levels = block.blockFormat().indent() + (list == nullptr ? 0 : list->format().indent() - 1);
    return std::max(0, levels) * 2 +
           std::max(0, int(block.blockFormat().leftMargin()) / PixelsPerColumn / 2 * 2);
}

/// The document keeps an empty paragraph before and behind each table.
bool isFiller(const QTextBlock& block)
{
    return block.length() <= 1 &&
           !block.blockFormat().hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth);
}

QStringList indented(const QStringList& lines, int indent, const QString& mark)
{
    const QString blanks(indent + TextGrid::columns(mark), u' ');
    QStringList result;
    for (const auto& line : lines) {
        const QString begin = result.isEmpty() ? QString(indent, u' ') + mark : blanks;
        result += line.isEmpty() && !result.isEmpty() ? QString() : begin + line;
    }
    return result;
}

int widest(const QStringList& lines)
{
    int width = 0;
    for (const auto& line : lines) {
        width = std::max(width, TextGrid::columns(line));
    }
    return width;
}

/// What columns take when none is wider than a limit.
qint64 sumWithin(const QList<int>& widths, int limit)
{
    return std::accumulate(widths.begin(), widths.end(), qint64(0),
                           [limit](qint64 sum, int width) { return sum + std::min(width, limit); });
}

/// Takes from the widest columns until all fit.
QList<int> fitted(QList<int> widths, int width)
{
    const qint64 room = std::max<qint64>(widths.size(), width - TextGrid::Gap * (widths.size() - 1));
    int limit = 1; // with it, all fit
    int beyond = *std::max_element(widths.begin(), widths.end()) + 1;
    while (beyond - limit > 1) {
        const int middle = limit + (beyond - limit) / 2;
        (sumWithin(widths, middle) <= room ? limit : beyond) = middle;
    }
    qint64 rest = room - sumWithin(widths, limit);
    std::for_each(widths.rbegin(), widths.rend(), [&](int& column) {
        column = std::min(column, limit + (rest > 0 && column > limit ? 1 : 0));
        rest -= column > limit ? 1 : 0;
    });
    return widths;
}

int sumOf(const QList<int>& widths, int column, int span)
{
    int sum = TextGrid::Gap * (span - 1);
    for (int i = column; i < column + span; ++i) {
        sum += widths[i];
    }
    return sum;
}

/// Calls `use` with the cells that begin in a row, and their columns.
template <typename Use>
void forEachCell(const QTextTable& table, int row, Use use)
{
    for (int column = 0; column < table.columns(); ++column) {
        const auto cell = table.cellAt(row, column);
        if (cell.row() == row && cell.column() == column) {
            use(cell, column);
        }
    }
}

} // namespace

QString DocumentText::write(const QTextDocument& document, int width)
{
    m_targets.clear();
    m_numbers.clear();
    m_widths.clear();
    const auto* root = document.rootFrame();
    QStringList lines = linesOf(root->begin(), root->end(), std::max(LeastWidth, width));
    if (!m_targets.isEmpty()) {
        lines += QString();
        for (qsizetype i = 0; i < m_targets.size(); ++i) {
            lines += QStringLiteral("[%1] %2").arg(i + 1).arg(m_targets[i]);
        }
    }
    return lines.isEmpty() ? QString() : lines.join(u'\n') + u'\n';
}

void DocumentText::add(QStringList& lines, const Lines& added, Lines& last)
{
    const bool isList = added.isItem && last.isItem;
    if (!lines.isEmpty() && !isList && (last.needsSpaceAfter || added.needsSpaceBefore)) {
        lines += QString();
    }
    lines += added.lines;
    last = {{}, false, added.needsSpaceAfter, added.isItem};
}

QStringList DocumentText::linesOf(QTextFrame::iterator from, const QTextFrame::iterator& end, int width)
{
    QStringList lines;
    Lines last;
    for (; from != end; ++from) {
        const auto* frame = from.currentFrame();
        if (frame == nullptr) {
            if (const auto block = from.currentBlock(); !isFiller(block)) {
                add(lines, linesOf(block, width), last);
            }
        } else if (const auto* table = qobject_cast<const QTextTable*>(frame)) {
            add(lines, linesOf(*table, width), last);
        } else {
            add(lines, {linesOf(frame->begin(), frame->end(), width), true, true}, last);
        }
    }
    return lines;
}

DocumentText::Lines DocumentText::linesOf(const QTextBlock& block, int width)
{
    const auto format = block.blockFormat();
    Lines result;
    if (format.hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth)) {
        result.lines += QString(std::min(width, 40), u'─');
    }
    const QString mark = markOf(block);
    const int indent = std::min(indentOf(block), width / 2);
    const int room = std::max(1, width - indent - TextGrid::columns(mark));
    const QString text = textOf(block);
    if (!text.isEmpty()) {
        QStringList lines;
        for (const auto& line : text.split(u'\n')) {
            lines += format.nonBreakableLines() ? QStringList(line) : TextGrid::wrapped(line, room);
        }
        result.lines += indented(lines, indent, mark);
    }
    const int level = format.headingLevel();
    if (level > 0 && !text.isEmpty()) {
        result.lines += QString(indent, u' ') +
                        QString(std::min(room, widest(result.lines) - indent), level == 1 ? u'=' : u'-');
    }
    result.isItem = block.textList() != nullptr;
    result.needsSpaceBefore = level > 0 || format.topMargin() >= SpaceBefore;
    result.needsSpaceAfter = level > 0 || format.bottomMargin() >= SpaceBehind;
    return result;
}

/// Cells beside each other; one cell is a box.
DocumentText::Lines DocumentText::linesOf(const QTextTable& table, int width)
{
    if (table.rows() == 1 && table.columns() == 1) {
        const auto cell = table.cellAt(0, 0);
        return {indented(linesOf(cell.begin(), cell.end(), std::max(LeastWidth, width - 2)), 2, {}), true,
                true};
    }
    const auto widths = fitted(naturalWidths(table), width);
    Lines result{{}, true, true};
    for (int row = 0; row < table.rows(); ++row) {
        result.lines += linesOfRow(table, row, widths);
    }
    return result;
}

const QList<int>& DocumentText::naturalWidths(const QTextTable& table)
{
    if (const auto known = m_widths.constFind(&table); known != m_widths.constEnd()) {
        return *known;
    }
    struct WideCell {
        int column;
        int span;
        int width;
    };
    QList<int> widths(table.columns(), 1);
    std::vector<WideCell> wideCells;
    for (int row = 0; row < table.rows(); ++row) {
        forEachCell(table, row, [&](const QTextTableCell& cell, int column) {
            const int width = widest(linesOf(cell.begin(), cell.end(), Unlimited));
            if (const int span = cell.columnSpan(); span > 1) {
                wideCells.push_back({column, span, width});
            } else {
                widths[column] = std::max(widths[column], width);
            }
        });
    }
    for (const auto& cell : wideCells) {
        widths[cell.column + cell.span - 1] +=
            std::max(0, cell.width - sumOf(widths, cell.column, cell.span));
    }
    return *m_widths.insert(&table, widths);
}

QStringList DocumentText::linesOfRow(const QTextTable& table, int row, const QList<int>& widths)
{
    QList<QStringList> cells;
    QList<int> cellWidths;
    int next = 0;
    forEachCell(table, row, [&](const QTextTableCell& cell, int column) {
        for (; next < column; ++next) {
            cells += QStringList();
            cellWidths += widths[next];
        }
        cellWidths += sumOf(widths, column, cell.columnSpan());
        cells += linesOf(cell.begin(), cell.end(), cellWidths.back());
        next = column + cell.columnSpan();
    });
    return TextGrid::besideEachOther(cells, cellWidths);
}

QString DocumentText::textOf(const QTextBlock& block)
{
    QString text;
    QString open;
    for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
        const auto fragment = piece.fragment();
        const QString href = fragment.charFormat().anchorHref();
        if (!open.isEmpty() && href != open) {
            text += numberOf(open);
        }
        open = href;
        text += fragment.text();
    }
    return printable(text + (open.isEmpty() ? QString() : numberOf(open)));
}

/// The number of a link, when links have numbers; the same for all links to a place.
QString DocumentText::numberOf(const QString& href)
{
    const int link = linkNumber(href);
    if (m_links == nullptr || link < 0 || size_t(link) >= m_links->size()) {
        return {};
    }
    const QString target = printable((*m_links)[size_t(link)].href.simplified());
    auto& number = m_numbers[target];
    if (number == 0) {
        m_targets += target;
        number = m_targets.size();
    }
    return QStringLiteral("[%1]").arg(number);
}
