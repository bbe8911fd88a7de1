// SPDX-License-Identifier: MIT
#include "browser/picturerooms.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace {

constexpr qreal LeastRoom = 32; // pixels

qreal edges(const QTextFrameFormat& format)
{
    return format.leftMargin() + format.rightMargin() + 2 * (format.border() + format.padding());
}

} // namespace

PictureRooms::PictureRooms(const QTextDocument& document, WantedWidth wantedWidth)
    : m_document(document), m_wantedWidth(std::move(wantedWidth))
{
}

qreal PictureRooms::roomAt(int position)
{
    if (std::exchange(m_pageWidth, m_document.pageSize().width()) != m_document.pageSize().width()) {
        m_tables.clear();
    }
    if (m_pageWidth <= 0) {
        return std::numeric_limits<qreal>::max();
    }
    const auto block = m_document.findBlock(position);
    const auto format = block.blockFormat();
    const int indent =
        format.indent() + (block.textList() == nullptr ? 0 : block.textList()->format().indent());
    return std::max(LeastRoom, roomIn(QTextCursor(block).currentFrame(), position) - format.leftMargin() -
                                   format.rightMargin() - indent * m_document.indentWidth());
}

qreal PictureRooms::roomIn(QTextFrame* frame, int position)
{
    if (frame == nullptr || frame->parentFrame() == nullptr) {
        return m_pageWidth - edges(m_document.rootFrame()->frameFormat());
    }
    auto* table = qobject_cast<QTextTable*>(frame);
    if (table == nullptr) {
        return roomIn(frame->parentFrame(), position) - edges(frame->frameFormat());
    }
    const auto& columns = columnsOf(*table);
    const auto cell = table->cellAt(position);
    if (!cell.isValid()) {
        return columns.room;
    }
    const auto first = columns.wanted.begin() + cell.column();
    const qreal wanted = std::accumulate(first, first + cell.columnSpan(), qreal(0));
    return columns.sum <= columns.room ? columns.room - (columns.sum - wanted)
                                       : columns.room * wanted / columns.sum;
}

const PictureRooms::Columns& PictureRooms::columnsOf(QTextTable& table)
{
    const auto known = m_tables.constFind(&table);
    if (known != m_tables.cend()) {
        return *known;
    }
    Columns columns;
    const auto format = table.format();
    const auto count = table.columns();
    columns.room = roomIn(table.parentFrame(), table.firstPosition() - 1) - edges(format) -
                   (count + 1) * format.cellSpacing() - count * 2 * (format.cellPadding() + format.border());
    columns.wanted.assign(size_t(count), LeastRoom);
    const int end = table.lastPosition();
    for (auto block = m_document.findBlock(table.firstPosition()); block.isValid() && block.position() <= end;
         block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const auto fragment = it.fragment();
            if (!fragment.charFormat().isImageFormat()) {
                continue;
            }
            const auto cell = table.cellAt(fragment.position());
            const qreal share = m_wantedWidth(fragment.charFormat().toImageFormat()) / cell.columnSpan();
            for (int i = cell.column(); i < cell.column() + cell.columnSpan(); ++i) {
                columns.wanted[size_t(i)] = std::max(columns.wanted[size_t(i)], share);
            }
        }
    }
    columns.sum = std::accumulate(columns.wanted.begin(), columns.wanted.end(), qreal(0));
    return *m_tables.insert(&table, columns);
}
