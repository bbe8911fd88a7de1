// SPDX-License-Identifier: MIT
#include "formats/textdecoding.h"

#include <QStringDecoder>

QString decodeText(const QByteArray& bytes)
{
    const auto marked = QStringConverter::encodingForData(bytes);
    if (marked && *marked != QStringConverter::Utf8) {
        QStringDecoder decoder(*marked);
        return decoder(bytes);
    }
    return marked || bytes.isValidUtf8() ? QString::fromUtf8(bytes) : QString::fromLatin1(bytes);
}
