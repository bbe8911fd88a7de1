// SPDX-License-Identifier: MIT
#include "search/searchdelegate.h"

#include "search/searchmodel.h"
#include "search/snippetlayout.h"

#include <QApplication>
#include <QListView>
#include <QPainter>

namespace {

constexpr int Margin = 6;           // pixels around a row's texts
constexpr int Gap = 1;              // pixels between its parts
constexpr int NarrowWidth = 320;    // pixels; below, a snippet has one more line
constexpr int SnippetLines = 2;     // of a wide list
constexpr qreal PlaceSize = 0.9;    // of the font's size
constexpr qreal PlaceOpacity = 0.7; // of the text's colour

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
    return {hit, option.font, width - 2 * Margin, width < NarrowWidth ? SnippetLines + 1 : SnippetLines};
}

/// Draws one line in the upper part of `rect`, elided, and moves `rect` below it.
void drawLine(QPainter* painter, const QFont& font, const QString& text, Qt::TextElideMode mode, QRect& rect)
{
    const QFontMetrics metrics(font);
    painter->setFont(font);
    painter->drawText(rect, Qt::AlignTop | Qt::TextSingleLine,
                      metrics.elidedText(QString(text).replace(u'\t', u' '), mode, rect.width()));
    rect.setTop(rect.top() + metrics.height() + Gap);
}

} // namespace

void SearchDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const
{
    QStyleOptionViewItem background = option;
    background.index = index;
    const auto* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &background, painter, option.widget);

    const auto& hit = hitOf(index);
    const auto group = !option.state.testFlag(QStyle::State_Enabled) ? QPalette::Disabled
                       : option.state.testFlag(QStyle::State_Active) ? QPalette::Active
                                                                     : QPalette::Inactive;
    QColor text = option.palette.color(
        group, option.state.testFlag(QStyle::State_Selected) ? QPalette::HighlightedText : QPalette::Text);
    QRect rect = option.rect.adjusted(Margin, Margin, -Margin, -Margin);
    painter->save();
    painter->setClipRect(option.rect);
    painter->setPen(text);
    drawLine(painter, titleFont(option), hit.title, Qt::ElideRight, rect);
    text.setAlphaF(PlaceOpacity);
    painter->setPen(text);
    drawLine(painter, placeFont(option), placeOf(hit), Qt::ElideMiddle, rect);
    text.setAlphaF(1);
    painter->setPen(text);
    snippetLayout(option, hit, option.rect.width()).draw(painter, rect.topLeft());
    painter->restore();
}

QSize SearchDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto* view = qobject_cast<const QListView*>(option.widget);
    const int width = view != nullptr ? view->viewport()->width() : option.rect.width();
    const int lines = QFontMetrics(titleFont(option)).height() + QFontMetrics(placeFont(option)).height();
    return {0, 2 * Margin + lines + 2 * Gap + snippetLayout(option, hitOf(index), width).height()};
}
