// SPDX-License-Identifier: MIT
#include "formats/textdecoding.h"

#include <QStringDecoder>

QString decodeText(const QByteArray& bytes)
{
    if (const auto marked = QStringConverter::encodingForData(bytes)) {
        QStringDecoder decoder(*marked);
        return decoder(bytes);
    }
    return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : QString::fromLatin1(bytes);
}
