// SPDX-License-Identifier: MIT
#include "sources/registeredsource.h"

#include "formats/paths.h"
#include "sources/outlinebuilder.h"
#include "sources/registereddocument.h"

#include <QCoreApplication>
#include <QFileInfo>

QString RegisteredSource::title(const QString& fileName)
{
    const auto document = readRegisteredDocument(fileName);
    return document ? document->title : QString();
}

ContentsOutline RegisteredSource::readContents(const std::stop_token& /*stop*/)
{
    const QString file = absoluteFilePath(m_fileName);
    OutlineBuilder builder(file, QStringLiteral("/"));
    const auto document = readRegisteredDocument(file);
    const QString title = document ? document->title : QString();
    builder.setTitle(title.isEmpty() ? QFileInfo(file).fileName() : title);
    QStringList texts;
    QStringList formats;
    for (const auto& format : document ? document->formats : std::vector<RegisteredDocument::Format>()) {
        formats.append(format.name);
        if (format.name == u"text" && texts.isEmpty()) {
            texts = matchingFiles(format.files);
            texts.removeIf([](const QString& name) { return name.endsWith(u".gz"); });
        }
    }
    if (texts.isEmpty()) {
        builder.note(Problem::Severity::Error,
                     QCoreApplication::translate(
                         "RegisteredSource", "The document is not there in a format that can be shown (%1)")
                         .arg(formats.join(QStringLiteral(", "))));
    }
    for (const auto& text : texts) {
        builder.add(texts.size() > 1 && !builder.isEmpty() ? 1 : 0,
                    builder.isEmpty() ? title : QFileInfo(text).fileName(), text.sliced(1));
    }
    return builder.take();
}

void RegisteredSource::readKeywords(KeywordSink& /*sink*/, const std::stop_token& /*stop*/)
{
}
