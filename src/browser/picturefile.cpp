// SPDX-License-Identifier: MIT
#include "browser/picturefile.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {

/// The image reader takes any file that begins as XML for a possible SVG picture, XHTML pages as well.
bool hasSvgRoot(const QString& fileName)
{
    constexpr qint64 headSize = 4096;
    QFile file(fileName);
    const QByteArray head = file.open(QIODevice::ReadOnly) ? file.read(headSize).toLower() : QByteArray();
    const qsizetype svg = head.indexOf("<svg");
    const qsizetype html = head.indexOf("<html");
    return svg >= 0 && (html < 0 || svg < html);
}

/// Whether a reference of an SVG picture holds a whole picture that leads nowhere itself.
bool isEmbeddedBitmap(QStringView reference)
{
    static const QString mark = QStringLiteral("base64,");
    const qsizetype start = reference.lastIndexOf(mark);
    if (!reference.startsWith(u"data:") || start < 0) {
        return false;
    }
    QByteArray bytes = QByteArray::fromBase64(reference.sliced(start + mark.size()).toLatin1());
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    return !reader.format().startsWith("svg") && !reader.read().isNull();
}

/// Whether an element of an SVG picture makes the toolkit open another file, be it a pipe or a device.
bool leadsOut(const QXmlStreamReader& reader)
{
    const auto attributes = reader.attributes();
    return reader.name().compare(u"image", Qt::CaseInsensitive) == 0 &&
           std::any_of(attributes.begin(), attributes.end(), [](const auto& attribute) {
               return attribute.name() == u"href" && !isEmbeddedBitmap(attribute.value());
           });
}

/// An SVG picture without its references to other files; empty when it is malformed.
QByteArray closedSvg(const QString& fileName)
{
    QFile file(fileName);
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader reader(&file);
    QByteArray result;
    QXmlStreamWriter writer(&result);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && leadsOut(reader)) {
            reader.skipCurrentElement();
        } else if (reader.isStartElement() || reader.isEndElement() || reader.isCharacters()) {
            writer.writeCurrentToken(reader);
        }
    }
    return reader.hasError() ? QByteArray() : result;
}

template <typename Get>
auto read(const QString& fileName, Get get)
{
    QImageReader reader(fileName);
    if (reader.format() != "svg") {
        return get(reader);
    }
    QByteArray bytes = closedSvg(fileName);
    QBuffer buffer(&bytes);
    QImageReader svgReader(&buffer, "svg");
    return get(svgReader);
}

} // namespace

bool isPicture(const QString& fileName)
{
    if (fileName.isEmpty() || !QFileInfo(fileName).isFile()) {
        return false;
    }
    const QByteArray format = QImageReader::imageFormat(fileName);
    // What is in a compressed SVG picture cannot be told.
    return format == "svg" ? hasSvgRoot(fileName) : !format.isEmpty() && format != "svgz";
}

QImage readPicture(const QString& fileName)
{
    return isPicture(fileName) ? read(fileName, [](QImageReader& reader) { return reader.read(); })
                               : QImage();
}

QSize pictureSize(const QString& fileName)
{
    return isPicture(fileName) ? read(fileName, [](QImageReader& reader) { return reader.size(); }) : QSize();
}
