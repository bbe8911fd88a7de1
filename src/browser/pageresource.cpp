// SPDX-License-Identifier: MIT
#include "browser/pageresource.h"

#include "browser/picturefile.h"
#include "pages/pagefile.h"

#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QTextDocument>

namespace {

// Larger style sheets are written for web browsers: rich text follows little of them and takes seconds over
// it.
constexpr qint64 LargestStyleSheet = 4096; // bytes

/// An empty frame, crossed out.
QImage missingPicture()
{
    constexpr int size = 16;
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setPen(Qt::gray);
    painter.drawRect(0, 0, size - 1, size - 1);
    painter.drawLine(0, 0, size - 1, size - 1);
    return image;
}

} // namespace

QVariant loadPageResource(int type, const QUrl& url)
{
    const QString file = url.isLocalFile() && url.host().isEmpty() ? url.toLocalFile() : QString();
    if (type == QTextDocument::ImageResource) {
        const QImage picture = readPicture(file);
        return picture.isNull() ? missingPicture() : picture;
    }
    const QFileInfo info(file);
    const bool isSmall = info.isFile() && info.size() <= LargestStyleSheet;
    const auto sheet = isSmall ? readPage(file) : Result<PageText, PageError>(PageError::TooLarge);
    // Never a null value: the document would then open the file by itself, whatever it is.
    return sheet.ok() ? sheet.value().text : QStringLiteral("");
}

int pictureWidth(const QString& file)
{
    return isPicture(file) ? qMax(1, pictureSize(file).width()) : 0;
}
