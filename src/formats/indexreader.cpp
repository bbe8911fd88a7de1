// SPDX-License-Identifier: MIT
#include "formats/indexreader.h"

#include "formats/linereader.h"
#include "formats/paths.h"
#include "formats/textfile.h"

Result<IndexOutline, FileError> readIndex(const QString& fileName, const std::stop_token& stop)
{
    const auto text = readText(fileName);
    if (!text.ok()) {
        return text.error();
    }
    IndexOutline result{text.value(), extractRightDir(fileName), {}};
    int lastKeyword = -1;
    LineReader lines(result.text);
    while (!stop.stop_requested() && lines.next()) {
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
            lastKeyword = int(result.lines.size());
        }
        result.lines.push_back({keyword, page, isSubKeyword ? lastKeyword : -1, lines.number()});
    }
    return result;
}
