// SPDX-License-Identifier: MIT
#include "formats/indexreader.h"

#include "formats/linereader.h"
#include "formats/paths.h"
#include "formats/textdecoding.h"

Result<std::vector<IndexLine>, FileError> readIndex(const QString& fileName)
{
    const auto bytes = readRegularFile(fileName);
    if (!bytes.ok()) {
        return bytes.error();
    }
    const QString text = decodeText(bytes.value());
    const QString dir = extractRightDir(fileName);
    std::vector<IndexLine> result;
    int lastKeyword = -1;
    LineReader lines(text);
    while (lines.next()) {
        const QStringView trimmed = lines.trimmed();
        if (trimmed.isEmpty()) {
            continue;
        }
        const QChar first = lines.line().front();
        const bool isSubKeyword = first == u' ' || first == u'\t';
        const qsizetype equals = trimmed.indexOf(u'=');
        const QStringView page = equals < 0 ? QStringView() : trimmed.sliced(equals + 1).trimmed();
        const QStringView keyword = equals < 0 ? trimmed : trimmed.first(equals).trimmed();
        if (!isSubKeyword) {
            lastKeyword = int(result.size());
        }
        result.push_back({keyword.toString(), page.isEmpty() ? dir : dir + page,
                          isSubKeyword ? lastKeyword : -1, lines.number(), !page.isEmpty()});
    }
    return result;
}
