// SPDX-License-Identifier: MIT
#include "library/contentslook.h"

#include "formats/regularfile.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace {

constexpr qint64 LookedAt = 1024; // bytes

bool beginsWithAny(const QByteArray& bytes, std::span<const QByteArrayView> beginnings)
{
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [&](QByteArrayView beginning) { return bytes.startsWith(beginning); });
}

bool isPacked(const QByteArray& bytes)
{
    static constexpr std::array<QByteArrayView, 6> magic{"\x1f\x8b",
                                                         "PK\x03\x04",
                                                         "\xfd"
                                                         "7zXZ",
                                                         "BZh",
                                                         "\x28\xb5\x2f\xfd",
                                                         "7z\xbc\xaf"};
    return beginsWithAny(bytes, magic);
}

bool isWebPage(const QByteArray& bytes)
{
    static constexpr std::array<QByteArrayView, 2> tags{"<!doctype html", "<html"};
    return beginsWithAny(bytes.trimmed().toLower(), tags);
}

bool isUtf16(const QByteArray& bytes)
{
    static constexpr std::array<QByteArrayView, 2> marks{"\xff\xfe", "\xfe\xff"};
    return beginsWithAny(bytes, marks);
}

} // namespace

QString whyNoContentsFile(const QString& fileName)
{
    if (!fileName.endsWith(QStringLiteral(".cnt"), Qt::CaseInsensitive)) {
        return {};
    }
    const auto read = readRegularFile(fileName, LookedAt);
    if (!read.ok()) {
        return {};
    }
    const QByteArray& bytes = read.value();
    if (bytes.size() < LookedAt && bytes.trimmed().isEmpty()) {
        return QCoreApplication::translate("ContentsLook", "it is empty");
    }
    if (isPacked(bytes)) {
        return QCoreApplication::translate("ContentsLook", "it is packed, not a contents file");
    }
    if (isWebPage(bytes)) {
        return QCoreApplication::translate("ContentsLook", "it is a web page, not a contents file");
    }
    return bytes.contains('\0') && !isUtf16(bytes)
               ? QCoreApplication::translate("ContentsLook", "it is no text, so it is no contents file")
               : QString();
}
