// SPDX-License-Identifier: MIT
#include "jump/jumpdelegate.h"

#include "jump/jumpmodel.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace {

constexpr int SideMargin = 8; // pixels
constexpr int LineMargin = 4; // pixels above and below
constexpr int PartGap = 16;   // pixels between text and place
constexpr qreal PlaceOpacity = 0.7;
constexpr int Rounding = 2;    // pixels that a text may need beyond its measure
constexpr int LeastPlace = 60; // pixels; less is not shown
constexpr int TextPart = 65;   // per cent of the row that the text may take before the place does

/// One line with some letters in bold. As the letters are to be found again in what is left, it is cut at its
/// end.
void drawText(QPainter* painter, const QRect& rect, const QString& text, const QFont& font,
              const std::vector<int>& letters)
{
    const QString shown = QFontMetrics(font).elidedText(text, Qt::ElideRight, rect.width());
    QTextLayout layout(shown, font);
    QList<QTextLayout::FormatRange> formats;
    for (const int letter : letters) {
        if (letter < shown.size() && shown.at(letter) == text.at(letter)) {
            QTextLayout::FormatRange format;
            format.start = letter;
            format.length = 1;
            format.format.setFontWeight(QFont::Bold);
            formats.append(format);
        }
    }
    layout.setFormats(formats);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    layout.draw(painter, rect.topLeft());
}

} // namespace

void JumpDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    const auto& model = static_cast<const JumpModel&>(*index.model());
    const bool isCurrent = option.state.testFlag(QStyle::State_Selected);
    QStyleOptionViewItem ground(option);
    const auto* style = option.widget == nullptr ? QApplication::style() : option.widget->style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &ground, painter, option.widget);

    painter->save();
    QColor color = option.palette.color(isCurrent ? QPalette::HighlightedText : QPalette::Text);
    painter->setPen(color);
    QRect rect = option.rect.adjusted(SideMargin, LineMargin, -SideMargin, -LineMargin);
    const QString text = index.data().toString().simplified();
    const auto letters =
        text.size() == index.data().toString().size() ? model.letters(index) : std::vector<int>();
    const QFontMetrics metrics(option.font);
    QFont bold(option.font);
    bold.setWeight(QFont::Bold);
    const int wanted = QFontMetrics(bold).horizontalAdvance(text);
    const QString place = model.placeOf(index);
    const int room = rect.width() - std::min(wanted, rect.width() * TextPart / 100) - PartGap;
    const int placeWidth =
        room < LeastPlace ? 0 : std::min(room, metrics.horizontalAdvance(place) + Rounding);
    const int textWidth = placeWidth == 0 ? rect.width() : rect.width() - placeWidth - PartGap;
    drawText(painter, QRect(rect.topLeft(), QSize(textWidth, rect.height())), text, option.font, letters);
    color.setAlphaF(PlaceOpacity);
    painter->setPen(color);
    painter->setFont(option.font);
    rect.setLeft(rect.right() - placeWidth);
    painter->drawText(rect, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                      metrics.elidedText(place, Qt::ElideMiddle, placeWidth));
    painter->restore();
}

QSize JumpDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const
{
    return {0, QFontMetrics(option.font).height() + 2 * LineMargin};
}
