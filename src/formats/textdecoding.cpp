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
    if (!bytes.isValidUtf8()) {
        return QString::fromLatin1(bytes);
    }
    const QString text = QString::fromUtf8(bytes);
    return text.startsWith(QChar::ByteOrderMark) ? text.sliced(1) : text;
}
