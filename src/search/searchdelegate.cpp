// SPDX-License-Identifier: MIT
#include "search/searchdelegate.h"

#include "library/sharedbeginning.h"
#include "search/searchmodel.h"
#include "search/snippetlayout.h"

#include <QListView>
#include <QPainter>
#include <QTextLayout>

namespace {

constexpr int RowMargin = 6;        // pixels around a row's texts
constexpr int PartGap = 1;          // pixels between its parts
constexpr int NarrowWidth = 320;    // pixels; below, a snippet has one more line
constexpr int SnippetLines = 2;     // of a wide list
constexpr int LeastSection = 40;    // pixels
constexpr qreal PlaceSize = 0.9;    // of the font's size
constexpr qreal PlaceOpacity = 0.7; // of the text's colour
constexpr float WeakGround = 0.3F;  // of the highlight colour
constexpr float HoverGround = 0.1F;

QFont titleFont(const QStyleOptionViewItem& option)
{
    QFont font = option.font;
    font.setWeight(QFont::DemiBold);
    return font;
}

QFont placeFont(const QStyleOptionViewItem& option)
{
    QFont font = option.font;
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * PlaceSize);
    }
    return font;
}

const SearchHit& hitOf(const QModelIndex& index)
{
    return static_cast<const SearchModel*>(index.model())->hit(index);
}

SnippetLayout snippetLayout(const QStyleOptionViewItem& option, const SearchHit& hit, int width)
{
    return {hit, option.font, width - 2 * RowMargin, width < NarrowWidth ? SnippetLines + 1 : SnippetLines};
}

/// Draws one line in the upper part of `rect`, elided, and moves `rect` below it.
void drawLine(QPainter* painter, const QFont& font, const QString& text, Qt::TextElideMode mode, QRect& rect)
{
    const QFontMetrics metrics(font);
    painter->setFont(font);
    painter->drawText(rect, Qt::AlignTop | Qt::TextSingleLine,
                      metrics.elidedText(QString(text).replace(u'\t', u' '), mode, rect.width()));
    rect.setTop(rect.top() + metrics.height() + PartGap);
}

QString titleAt(const QModelIndex& index)
{
    return index.isValid() ? QString(hitOf(index).title).replace(u'\t', u' ') : QString();
}

/// On one line, or on two when it is long.
QStringList divided(const QString& text, const QFont& font, int width)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    auto line = layout.createLine();
    line.setLineWidth(width);
    layout.endLayout();
    const qsizetype end = line.textLength();
    if (end == text.size()) {
        return {text};
    }
    return {text.first(end), text.sliced(end).trimmed()};
}

/// The title on at most two lines. One that is too long for them is cut: first what the titles above or below
/// begin with as well, then in the middle, as the ends of titles tell them apart.
QStringList titleLines(const QModelIndex& index, const QFont& font, int width)
{
    const QFontMetrics metrics(font);
    const QString title = titleAt(index);
    const auto fits = [&](const QString& text) {
        return metrics.horizontalAdvance(divided(text, font, width).constLast()) <= width;
    };
    auto lines = divided(title, font, width);
    if (!fits(title)) {
        lines = divided(withoutSharedBeginning(title, titleAt(index.siblingAtRow(index.row() - 1)),
                                               titleAt(index.siblingAtRow(index.row() + 1)), fits),
                        font, width);
    }
    lines.last() = metrics.elidedText(lines.constLast(), Qt::ElideMiddle, width);
    return lines;
}

/// The title in bold, behind it the headings that the text stands under, as far as there is room.
void drawHeadline(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                  QRect& rect)
{
    const auto& hit = hitOf(index);
    const QFont bold = titleFont(option);
    const auto lines = titleLines(index, bold, rect.width());
    QRect rest = rect;
    for (const auto& line : lines) {
        rest = rect;
        drawLine(painter, bold, line, Qt::ElideRight, rect);
    }
    const int used = QFontMetrics(bold).horizontalAdvance(lines.last());
    if (!hit.section.isEmpty() && used + LeastSection < rest.width()) {
        const QString section = QStringLiteral(" › ") + hit.section.join(QStringLiteral(" › "));
        rest.setLeft(rest.left() + used);
        drawLine(painter, option.font, section, Qt::ElideRight, rest);
    }
}

/// The ground of a row: the current one tells by its strength whether keys go to the list. Returns the colour
/// of text on it.
QColor drawGround(QPainter* painter, const QStyleOptionViewItem& option)
{
    const auto group = option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    const bool isCurrent = option.state.testFlag(QStyle::State_Selected);
    const bool hasKeys = isCurrent && option.state.testFlag(QStyle::State_HasFocus);
    QColor ground = option.palette.color(group, QPalette::Highlight);
    ground.setAlphaF(hasKeys                                          ? 1
                     : isCurrent                                      ? WeakGround
                     : option.state.testFlag(QStyle::State_MouseOver) ? HoverGround
                                                                      : 0);
    painter->fillRect(option.rect, ground);
    return option.palette.color(group, hasKeys ? QPalette::HighlightedText : QPalette::Text);
}

} // namespace

void SearchDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const
{
    const auto& hit = hitOf(index);
    QRect rect = option.rect.adjusted(RowMargin, RowMargin, -RowMargin, -RowMargin);
    painter->save();
    painter->setClipRect(option.rect);
    QColor color = drawGround(painter, option);
    painter->setPen(color);
    drawHeadline(painter, option, index, rect);
    color.setAlphaF(PlaceOpacity);
    painter->setPen(color);
    drawLine(painter, placeFont(option), placeOf(hit), Qt::ElideMiddle, rect);
    color.setAlphaF(1);
    painter->setPen(color);
    snippetLayout(option, hit, option.rect.width()).draw(painter, rect.topLeft());
    painter->restore();
}

QSize SearchDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto* view = qobject_cast<const QListView*>(option.widget);
    const int width = view != nullptr ? view->viewport()->width() : option.rect.width();
    const auto title = titleLines(index, titleFont(option), width - 2 * RowMargin);
    const int titleHeight = int(title.size()) * (QFontMetrics(titleFont(option)).height() + PartGap);
    const int placeHeight = QFontMetrics(placeFont(option)).height() + PartGap;
    return {0,
            2 * RowMargin + titleHeight + placeHeight + snippetLayout(option, hitOf(index), width).height()};
}
