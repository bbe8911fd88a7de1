// SPDX-License-Identifier: MIT
#include "sources/registereddocument.h"

#include "formats/linereader.h"
#include "formats/regularfile.h"
#include "formats/textdecoding.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

const RegisteredDocument::Format* RegisteredDocument::format(const QString& name) const
{
    const auto found =
        std::find_if(formats.begin(), formats.end(), [&](const auto& format) { return format.name == name; });
    return found == formats.end() ? nullptr : &*found;
}

std::optional<RegisteredDocument> readRegisteredDocument(const QString& fileName)
{
    constexpr qint64 largestFile = 100'000; // bytes
    constexpr size_t mostFormats = 50;
    const auto read = readRegularFile(fileName, largestFile);
    if (!read.ok() || !read.value().startsWith("Document:")) {
        return std::nullopt;
    }
    RegisteredDocument document;
    const QString text = decodeText(read.value());
    QString* field = nullptr; // that lines with a blank before them go on with
    LineReader lines(text);
    while (lines.next()) {
        const QStringView line = lines.line();
        const qsizetype colon = line.indexOf(u':');
        if (line.startsWith(u' ') || line.startsWith(u'\t')) {
            if (field != nullptr) {
                *field += u' ' + line.trimmed();
            }
            continue;
        }
        field = nullptr;
        const QString name = colon < 0 ? QString() : line.first(colon).toString().toLower();
        if (name == u"format" && document.formats.size() < mostFormats) {
            document.formats.emplace_back().name = line.sliced(colon + 1).trimmed().toString().toLower();
        } else if (name == u"title") {
            field = &document.title;
        } else if (name == u"section") {
            field = &document.section;
        } else if (name == u"abstract") {
            field = &document.abstract;
        } else if (name == u"index" && !document.formats.empty()) {
            field = &document.formats.back().index;
        } else if (name == u"files" && !document.formats.empty()) {
            field = &document.formats.back().files;
        }
        if (field != nullptr) {
            *field = line.sliced(colon + 1).trimmed().toString();
        }
    }
    return document;
}

QStringList matchingFiles(const QString& patterns)
{
    constexpr qsizetype most = 1000;
    QStringList files;
    for (const auto& pattern : patterns.split(u' ', Qt::SkipEmptyParts)) {
        const qsizetype slash = pattern.lastIndexOf(u'/');
        const QString folder = pattern.first(slash + 1);
        if (!pattern.startsWith(u'/') || folder.contains(u'*') || files.size() >= most) {
            continue;
        }
        for (const auto& name :
             QDir(folder).entryList({pattern.sliced(slash + 1)}, QDir::Files, QDir::Name)) {
            files.append(folder + name);
        }
    }
    files.resize(std::min(files.size(), most));
    return files;
}
