// SPDX-License-Identifier: MIT
#include "sources/nativesource.h"

#include "formats/contentsreader.h"
#include "formats/linereader.h"
#include "formats/paths.h"
#include "formats/textfile.h"

#include <QCoreApplication>

ContentsOutline NativeSource::readContents(const std::stop_token& stop)
{
    auto outline = ContentsReader().read(m_fileName, stop);
    m_references = outline.indexFiles;
    m_files = outline.files;
    return outline;
}

void NativeSource::readKeywords(KeywordSink& sink, const std::stop_token& stop)
{
    size_t lines = 0;
    for (const auto& reference : m_references) {
        const auto* text = textOf(reference, sink);
        if (text == nullptr) {
            continue;
        }
        const KeywordFile file{absoluteFilePath(reference.fileName), extractRightDir(reference.fileName),
                               reference.title, m_files[size_t(reference.file)], reference.line};
        lines += text->lines;
        if (lines > MaximumKeywordLines || !addKeywords(file, *text, sink, stop)) {
            sink.leaveOutRest(file);
            break;
        }
    }
    m_texts.clear();
}

/// Null when it cannot be read.
const NativeSource::Text* NativeSource::textOf(const IndexReference& reference, KeywordSink& sink)
{
    const QString path = absoluteFilePath(reference.fileName);
    if (const auto known = m_texts.constFind(path); known != m_texts.cend()) {
        return &*known;
    }
    const auto text = readText(reference.fileName);
    if (!text.ok()) {
        sink.note({m_files[size_t(reference.file)], reference.line, Problem::Severity::Warning,
                   QCoreApplication::translate("HelpSet", "The index file \"%1\" cannot be read: %2")
                       .arg(reference.fileName, describe(text.error()))});
        return nullptr;
    }
    const QStringView kept = sink.keep(text.value());
    return &*m_texts.insert(path, {kept, lineBound(kept)});
}

/// False when there are too many.
bool NativeSource::addKeywords(const KeywordFile& file, const Text& text, KeywordSink& sink,
                               const std::stop_token& stop)
{
    sink.begin(file, text.lines);
    IndexReader reader(text.text);
    while (!stop.stop_requested() && reader.next()) {
        if (!sink.add(reader.line())) {
            return false;
        }
        if (reader.line().isCut) {
            sink.note({file.fileName, reader.line().line, Problem::Severity::Warning,
                       QCoreApplication::translate("HelpSet", "The line is too long")});
        }
    }
    return true;
}
