// SPDX-License-Identifier: MIT
#include "browser/selectedtext.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

namespace {

/// The row of a table that a position is in.
struct Place {
    const QTextTable* table = nullptr;
    int row = -1;
    int column = -1;
};

Place placeOf(const QTextBlock& block)
{
    const auto* table = QTextCursor(block).currentTable();
    if (table == nullptr) {
        return {};
    }
    const auto cell = table->cellAt(block.position());
    return {table, cell.row(), cell.column()};
}

QString separatorBetween(const Place& before, const Place& after)
{
    const bool isNextCell = after.table != nullptr && before.table == after.table &&
                            before.row == after.row && before.column != after.column;
    return isNextCell ? QStringLiteral("\t") : QStringLiteral("\n");
}

bool isTableIn(const QTextBlock& block, const QTextFrame* frame)
{
    const auto* table = block.isValid() ? QTextCursor(block).currentTable() : nullptr;
    return table != nullptr && table->parentFrame() == frame;
}

/// The document keeps an empty paragraph before and behind each table, which is not to be seen.
bool isBesideTable(const QTextBlock& block)
{
    const auto* frame = QTextCursor(block).currentFrame();
    return block.length() == 1 && (isTableIn(block.previous(), frame) || isTableIn(block.next(), frame));
}

QString plain(QString text)
{
    return text.remove(QChar::ObjectReplacementCharacter)
        .replace(QChar::Nbsp, u' ')
        .replace(QChar::LineSeparator, u'\n');
}

} // namespace

QString selectedText(const QTextCursor& selection)
{
    const int begin = selection.selectionStart();
    const int end = selection.selectionEnd();
    QString result;
    Place before;
    auto block = selection.document()->findBlock(begin);
    for (bool isFirst = true; block.isValid() && block.position() < end; block = block.next()) {
        const Place place = placeOf(block);
        if (!isBesideTable(block)) {
            result += isFirst ? QString() : separatorBetween(before, place);
            const int from = qMax(begin - block.position(), 0);
            const int to = qMin(end - block.position(), block.length() - 1);
            result += plain(block.text().sliced(from, qMax(to - from, 0)));
            isFirst = false;
            before = place;
        }
    }
    if (block.isValid() && block.position() == end && block.position() > begin) {
        result += u'\n';
    }
    return result;
}
