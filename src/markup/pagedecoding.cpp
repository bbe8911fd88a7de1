// SPDX-License-Identifier: MIT
#include "markup/pagedecoding.h"

#include "formats/textdecoding.h"

#include <QRegularExpression>
#include <QStringDecoder>

namespace {

constexpr qsizetype DeclarationSearch = 65536; // bytes

/// The charset that an XML declaration or a meta element names; empty when there is none.
QByteArray declaredCharset(const QByteArray& bytes)
{
    static const QRegularExpression xml(QStringLiteral(R"(^\s*<\?xml[^>]*\bencoding\s*=\s*["']([\w.:-]+))"));
    static const QRegularExpression meta(QStringLiteral(R"(<meta\b[^>]*\bcharset\s*=\s*["']?\s*([\w.:-]+))"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QString head = QString::fromLatin1(bytes.first(qMin(bytes.size(), DeclarationSearch)));
    auto match = meta.match(head);
    if (!match.hasMatch()) {
        match = xml.match(head);
    }
    return match.captured(1).toLatin1();
}

bool isUtf8(const QByteArray& charset)
{
    return charset.compare("utf-8", Qt::CaseInsensitive) == 0 ||
           charset.compare("utf8", Qt::CaseInsensitive) == 0;
}

} // namespace

QString decodePage(const QByteArray& bytes)
{
    if (QStringConverter::encodingForData(bytes)) {
        return decodeText(bytes);
    }
    const QByteArray charset = declaredCharset(bytes);
    // Bytes that can be searched for a declaration are not UTF-16, whatever the declaration says.
    if (charset.isEmpty() || isUtf8(charset) || charset.toLower().startsWith("utf-16")) {
        return decodeText(bytes);
    }
    QStringDecoder decoder(charset.constData());
    return decoder.isValid() ? QString(decoder(bytes)) : decodeText(bytes);
}
