// SPDX-License-Identifier: MIT
#include "formats/textfile.h"

#include "formats/textdecoding.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <optional>

namespace {

/// The text of a file in UTF-8, without its bytes ever being in memory as a whole; nothing when the file is
/// not in UTF-8 or cannot be read to its end.
std::optional<QString> readUtf8(RegularFile& file)
{
    QStringDecoder decoder(QStringConverter::Utf8);
    std::array<char, 1 << 16> block; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by reading
    QString text;
    qsizetype size = 0; // of what has been decoded
    const auto decode = [&](QByteArrayView bytes) {
        const qsizetype needed = size + decoder.requiredSpace(bytes.size());
        if (needed > text.size()) {
            text.resize(std::max(needed, text.size() + text.size() / 2));
        }
        size = decoder.appendToBuffer(text.data() + size, bytes) - text.constData();
    };
    text.resize(file.size() + decoder.requiredSpace(1));
    qint64 count = 0;
    while (!decoder.hasError() && (count = file.read(block)) > 0) {
        decode(QByteArrayView(block.data(), count));
    }
    const qsizetype end = size;
    decode("\n"); // tells whether the last character is whole
    if (file.error() || decoder.hasError()) {
        return std::nullopt;
    }
    text.truncate(end);
    return text;
}

} // namespace

Result<QString, FileError> readText(const QString& fileName)
{
    RegularFile file(fileName);
    if (auto text = readUtf8(file)) {
        return *text;
    }
    const auto bytes = readRegularFile(fileName);
    if (!bytes.ok()) {
        return bytes.error();
    }
    return decodeText(bytes.value());
}
