// SPDX-License-Identifier: MIT
#include "browser/pagepictures.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QImage>
#include <QPaintDevice>
#include <QPainter>
#include <QTextDocument>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int Patience = 100;    // ms for decoding in a turn of the event loop
constexpr int MostTurns = 100;   // one after the other
constexpr qreal PaperFactor = 3; // pixels on paper for each of the screen
constexpr int MissingSize = 16;  // pixels

/// An empty frame, crossed out.
void paintMissing(QPainter& painter, const QPointF& corner)
{
    constexpr int end = MissingSize - 1;
    painter.translate(corner);
    painter.setPen(Qt::gray);
    painter.drawRect(0, 0, end, end);
    painter.drawLine(0, 0, end, end);
}

/// Pixels of the device for each unit that is painted.
qreal factorOf(const QPainter& painter)
{
    const auto transform = painter.deviceTransform();
    return std::max(std::hypot(transform.m11(), transform.m12()),
                    std::hypot(transform.m21(), transform.m22()));
}

} // namespace

PagePictures* PagePictures::install(QTextDocument& document, Use use)
{
    auto* pictures = new PagePictures(document, use);
    document.documentLayout()->registerHandler(QTextFormat::ImageObject, pictures);
    return pictures;
}

PagePictures::PagePictures(QTextDocument& document, Use use)
    : QObject(&document), m_document(document), m_use(use),
      m_rooms(document, [this](const QTextImageFormat& picture) { return wantedSize(picture).width(); })
{
    m_nextTurn.setSingleShot(true);
    connect(&m_nextTurn, &QTimer::timeout, this, &PagePictures::finishTurn);
    // Before the layout hears of it.
    connect(&document, &QTextDocument::contentsChange, this, [this] { m_rooms.clear(); });
}

void PagePictures::clear()
{
    m_store.clear();
    m_rooms.clear();
    m_turns = 0;
    m_backdropArea = 0;
}

/// Where what is seen takes more memory than may be kept, pictures would push each other out for ever.
void PagePictures::finishTurn()
{
    m_decoding.invalidate();
    const bool isLeft = std::exchange(m_isIncomplete, false);
    m_turns = isLeft ? m_turns + 1 : 0;
    if (isLeft && m_turns < MostTurns) {
        Q_EMIT m_document.documentLayout()->update();
    }
}

QString PagePictures::fileAt(const QUrl& url) const
{
    const QUrl resolved = m_document.baseUrl().resolved(url);
    return resolved.isLocalFile() && resolved.host().isEmpty() ? resolved.toLocalFile() : QString();
}

QString PagePictures::fileOf(const QTextFormat& format) const
{
    return fileAt(QUrl(format.toImageFormat().name()));
}

/// As the page asks for it.
QSizeF PagePictures::wantedSize(const QTextFormat& format)
{
    const auto wanted = format.toImageFormat();
    QSizeF size = m_store.size(fileOf(format));
    if (size.isEmpty()) {
        size = {MissingSize, MissingSize};
    }
    if (wanted.width() > 0 && wanted.height() > 0) {
        return {wanted.width(), wanted.height()};
    }
    if (wanted.width() > 0) {
        return size * (wanted.width() / size.width());
    }
    return wanted.height() > 0 ? size * (wanted.height() / size.height()) : size;
}

QSizeF PagePictures::shownSize(int position, const QTextFormat& format)
{
    QSizeF size = wantedSize(format);
    const QSizeF page = m_document.pageSize();
    // The line that holds the picture is a little higher than the picture.
    const qreal height = m_use == Use::View || page.height() <= 0
                             ? size.height()
                             : page.height() - 2 * QFontMetricsF(m_document.defaultFont()).height();
    const qreal factor =
        std::min({qreal(1), m_rooms.roomAt(position) / size.width(), height / size.height()});
    return size * factor;
}

bool PagePictures::isAsWideAsCanBe(int position, const QTextFormat& format)
{
    return shownSize(position, format).width() + 1 > m_rooms.roomAt(position);
}

QSizeF PagePictures::intrinsicSize(QTextDocument* /*document*/, int position, const QTextFormat& format)
{
    return shownSize(position, format);
}

void PagePictures::drawObject(QPainter* painter, const QRectF& rect, QTextDocument* /*document*/,
                              int /*position*/, const QTextFormat& format)
{
    const QString file = fileOf(format);
    const qreal factor = m_use == Use::Print ? std::max(PaperFactor, factorOf(*painter)) : factorOf(*painter);
    const QSize pixels = (rect.size() * factor).toSize();
    if (!m_store.isReady(file, pixels) && !mayDecode()) {
        m_isIncomplete = true;
        return;
    }
    const QImage picture = m_store.picture(file, pixels);
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    if (picture.isNull()) {
        paintMissing(*painter, rect.topLeft());
    } else {
        painter->drawImage(rect, picture);
    }
    painter->restore();
}

bool PagePictures::mayDecode()
{
    if (m_use == Use::Print) {
        return true;
    }
    if (!m_decoding.isValid()) {
        m_decoding.start();
        m_nextTurn.start();
    }
    return !m_decoding.hasExpired(Patience);
}

QImage PagePictures::backdrop(const QUrl& url)
{
    const PictureFile file(fileAt(url));
    const qint64 area = qint64(file.size().width()) * file.size().height();
    QImage image;
    if (area > 0 && m_backdropArea + area <= LargestBackdrops) {
        m_backdropArea += area;
        image = file.read(file.size());
    }
    if (image.isNull()) {
        image = QImage(1, 1, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
    }
    return image;
}

QString PagePictures::reducedAt(const QPointF& point)
{
    const auto* layout = m_document.documentLayout();
    if (layout->imageAt(point).isEmpty() || !layout->anchorAt(point).isEmpty()) {
        return {};
    }
    const auto format = layout->formatAt(point);
    const bool isReduced = shownSize(layout->hitTest(point, Qt::ExactHit), format).width() <
                           m_store.size(fileOf(format)).width();
    return isReduced ? fileOf(format) : QString();
}
