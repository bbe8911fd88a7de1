// SPDX-License-Identifier: MIT
#include "browser/pagepictures.h"

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>
#include <QUrl>

namespace {

constexpr qreal LeastRoom = 32; // pixels

QImage pictureOf(const QTextDocument& document, const QTextFormat& format)
{
    return document.resource(QTextDocument::ImageResource, QUrl(format.toImageFormat().name()))
        .value<QImage>();
}

/// As the page asks for it.
QSizeF wantedSize(const QTextDocument& document, const QTextFormat& format)
{
    const auto wanted = format.toImageFormat();
    QSizeF size = pictureOf(document, format).deviceIndependentSize();
    if (wanted.width() > 0 && wanted.height() > 0) {
        return {wanted.width(), wanted.height()};
    }
    if (wanted.width() > 0 && !size.isEmpty()) {
        return size * (wanted.width() / size.width());
    }
    if (wanted.height() > 0 && !size.isEmpty()) {
        return size * (wanted.height() / size.height());
    }
    return size;
}

qreal roomAt(const QTextDocument& document, int position)
{
    const auto page = document.rootFrame()->frameFormat();
    const auto block = document.findBlock(position);
    const auto format = block.blockFormat();
    const int indent =
        format.indent() + (block.textList() == nullptr ? 0 : block.textList()->format().indent());
    return qMax(LeastRoom, document.pageSize().width() - page.leftMargin() - page.rightMargin() -
                               format.leftMargin() - format.rightMargin() - indent * document.indentWidth());
}

QSizeF shownSize(const QTextDocument& document, int position, const QTextFormat& format)
{
    const QSizeF size = wantedSize(document, format);
    const qreal room = roomAt(document, position);
    return document.pageSize().width() <= 0 || size.width() <= room ? size : size * (room / size.width());
}

} // namespace

PagePictures* PagePictures::install(QTextDocument& document)
{
    auto* pictures = new PagePictures(&document);
    document.documentLayout()->registerHandler(QTextFormat::ImageObject, pictures);
    return pictures;
}

QSizeF PagePictures::intrinsicSize(QTextDocument* document, int position, const QTextFormat& format)
{
    return shownSize(*document, position, format);
}

void PagePictures::drawObject(QPainter* painter, const QRectF& rect, QTextDocument* document,
                              int /*position*/, const QTextFormat& format)
{
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(rect, pictureOf(*document, format));
    painter->restore();
}

QString PagePictures::reducedAt(const QTextDocument& document, const QPointF& point)
{
    const auto* layout = document.documentLayout();
    const QString name = layout->imageAt(point);
    if (name.isEmpty() || !layout->anchorAt(point).isEmpty()) {
        return {};
    }
    const int position = layout->hitTest(point, Qt::ExactHit);
    const auto format = layout->formatAt(point);
    const bool isReduced = shownSize(document, position, format).width() <
                           pictureOf(document, format).deviceIndependentSize().width();
    return isReduced ? QUrl(name).toLocalFile() : QString();
}
