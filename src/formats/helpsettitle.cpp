// SPDX-License-Identifier: MIT
#include "formats/helpsettitle.h"

#include "formats/linereader.h"
#include "formats/regularfile.h"
#include "formats/textdecoding.h"

std::optional<QStringView> directiveValue(QStringView trimmedLine, QStringView directive)
{
    const qsizetype equals = trimmedLine.startsWith(directive) ? trimmedLine.indexOf(u'=') : -1;
    if (equals < 0) {
        return std::nullopt;
    }
    return trimmedLine.sliced(equals + 1).trimmed();
}

QString getTitle(const QString& fileName)
{
    const auto bytes = readRegularFile(fileName);
    if (!bytes.ok()) {
        return fileName;
    }
    const QString text = decodeText(bytes.value());
    LineReader lines(text);
    while (lines.next()) {
        if (const auto title = directiveValue(lines.trimmed(), TitleDirective)) {
            return title->isEmpty() ? fileName : title->toString();
        }
    }
    return fileName;
}
