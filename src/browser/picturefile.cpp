// SPDX-License-Identifier: MIT
#include "browser/picturefile.h"

#include "sources/pagefiles.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <memory>

namespace {

constexpr qint64 HeadSize = 4096;             // bytes that tell what a file is
constexpr qint64 LargestDrawing = 16'000'000; // bytes of an SVG picture

/// Opened for reading; null when there is no such file.
std::unique_ptr<QIODevice> openPicture(const QString& fileName)
{
    std::unique_ptr<QIODevice> device;
    if (fileName.isEmpty()) {
        return device;
    }
    if (QFileInfo(fileName).isFile()) {
        device = std::make_unique<QFile>(fileName);
    } else if (isPageFile(fileName)) {
        const auto bytes = readPageFile(fileName);
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(bytes.ok() ? bytes.value() : QByteArray());
        device = std::move(buffer);
    }
    if (device != nullptr && !device->open(QIODevice::ReadOnly)) {
        device.reset();
    }
    return device;
}

/// The image reader takes any file that begins as XML for a possible SVG picture, XHTML pages as well.
bool hasSvgRoot(QIODevice& device)
{
    const QByteArray head = device.peek(HeadSize).toLower();
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

/// An SVG picture without its references to other files; empty when it is malformed or very large.
QByteArray closedSvg(QIODevice& device)
{
    if (device.size() > LargestDrawing) {
        return {};
    }
    QXmlStreamReader reader(&device);
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

/// What begins as text may be text that begins like a picture.
bool hasBinaryHead(QIODevice& device)
{
    return device.peek(HeadSize).contains('\0');
}

/// Decoding allocates at most this much.
qint64 largestImage() // bytes
{
    constexpr qint64 mega = 1 << 20;
    return QImageReader::allocationLimit() * mega;
}

} // namespace

PictureFile::PictureFile(const QString& fileName)
{
    const auto device = openPicture(fileName);
    if (device == nullptr) {
        return;
    }
    QImageReader reader(device.get());
    const QByteArray format = reader.format();
    // What is in a compressed SVG picture cannot be told.
    if (format.isEmpty() || format == "svgz" || (format == "svg" && !hasSvgRoot(*device))) {
        return;
    }
    m_fileName = fileName;
    if (format == "svg") {
        m_drawing = closedSvg(*device);
        QBuffer buffer(&m_drawing);
        m_size = QImageReader(&buffer, "svg").size();
        return;
    }
    m_size = reader.size();
    if (!m_size.isValid()) {
        m_size = reader.read().size(); // some formats do not say
    } else if (m_size.width() * qint64(m_size.height()) * 4 > largestImage() &&
               !reader.supportsOption(QImageIOHandler::ScaledSize)) {
        m_size = {};
    }
}

QImage PictureFile::read(const QSize& pixels) const
{
    QByteArray drawing = m_drawing;
    QBuffer buffer(&drawing);
    const auto device = drawing.isEmpty() ? openPicture(m_fileName) : nullptr;
    QImageReader reader;
    if (device != nullptr) {
        reader.setDevice(device.get());
    } else {
        reader.setDevice(&buffer);
        reader.setFormat("svg");
    }
    const QSize wanted = (drawing.isEmpty() ? pixels.boundedTo(m_size) : pixels).expandedTo({1, 1});
    if (wanted != m_size) {
        reader.setScaledSize(wanted);
    }
    return m_size.isEmpty() ? QImage() : reader.read();
}

bool isPicture(const QString& fileName)
{
    const auto device = openPicture(fileName);
    const QByteArray format = device == nullptr ? QByteArray() : QImageReader(device.get()).format();
    if (format.isEmpty() || format == "svgz") {
        return false;
    }
    if (format != "svg" && hasBinaryHead(*device)) {
        return true;
    }
    const PictureFile file(fileName);
    return !file.read(file.size()).isNull();
}
