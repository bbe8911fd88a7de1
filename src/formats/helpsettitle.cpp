// SPDX-License-Identifier: MIT
#include "formats/helpsettitle.h"

#include "formats/linereader.h"
#include "formats/textfile.h"

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
    const auto text = readText(fileName);
    if (!text.ok()) {
        return fileName;
    }
    LineReader lines(text.value());
    while (lines.next()) {
        if (const auto title = directiveValue(lines.trimmed(), TitleDirective)) {
            return title->isEmpty() ? fileName : title->toString();
        }
    }
    return fileName;
}
