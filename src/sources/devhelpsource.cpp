// SPDX-License-Identifier: MIT
#include "sources/devhelpsource.h"

#include "formats/paths.h"
#include "formats/regularfile.h"
#include "sources/inflate.h"
#include "sources/keywordtexts.h"
#include "sources/outlinebuilder.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

/// Generators write what is not there as a link.
bool leadsToPage(QStringView link)
{
    return !link.contains(u"://") && !link.startsWith(u"mailto:");
}

} // namespace

DevhelpSource::DevhelpSource(const QString& fileName) : m_fileName(absoluteFilePath(fileName))
{
}

QString DevhelpSource::title(const QString& fileName)
{
    DevhelpSource source(fileName);
    return source.openBook() ? source.m_title : QString();
}

QString DevhelpSource::folder(const QString& fileName)
{
    DevhelpSource source(fileName);
    return source.openBook() ? source.m_directory.chopped(1) : QString();
}

/// Reads the book's own element.
bool DevhelpSource::openBook()
{
    const auto read = readRegularFile(m_fileName, LargestBook + 1);
    if (!read.ok()) {
        m_problem = tr("The book cannot be read: %1").arg(describe(read.error()));
        return false;
    }
    QByteArray bytes = read.value();
    if (bytes.startsWith("\x1f\x8b")) {
        const auto whole = inflated(bytes, Compression::Gzip, LargestBook);
        if (!whole) {
            m_problem = tr("The book is damaged or too large");
            return false;
        }
        bytes = *whole;
    }
    if (bytes.size() > LargestBook) {
        m_problem = tr("The book is damaged or too large");
        return false;
    }
    m_reader.addData(bytes);
    int depth = 0;
    if (!nextElement(depth) || m_reader.name() != u"book") {
        m_problem = m_problem.isNull() && !m_reader.hasError() ? tr("This is no Devhelp book") : problem();
        return false;
    }
    const auto attributes = m_reader.attributes();
    m_title = attributes.value(QLatin1StringView("title")).toString().simplified();
    m_link = attributes.value(QLatin1StringView("link")).toString();
    const QString base = attributes.value(QLatin1StringView("base")).toString();
    m_directory = QFileInfo(base).isAbsolute() && QFileInfo(base).isDir() ? getRightDir(base)
                                                                          : extractRightDir(m_fileName);
    return true;
}

/// Steps to the start of the next element; false at the end. A book has no use for entities of its own, which
/// could make it grow without end.
bool DevhelpSource::nextElement(int& depth)
{
    while (!m_reader.atEnd()) {
        const auto token = m_reader.readNext();
        if (token == QXmlStreamReader::DTD && !m_reader.entityDeclarations().isEmpty()) {
            m_problem = tr("The book declares entities; it is not read");
            return false;
        }
        if (token == QXmlStreamReader::EndElement) {
            --depth;
        } else if (token == QXmlStreamReader::StartElement) {
            if (++depth > DeepestElement) {
                m_problem = tr("Elements are nested too deeply; the rest is not read");
                return false;
            }
            return true;
        }
    }
    return false;
}

QString DevhelpSource::problem() const
{
    if (!m_problem.isNull() || !m_reader.hasError()) {
        return m_problem;
    }
    return tr("The book is damaged; what follows is not read: %1").arg(m_reader.errorString());
}

ContentsOutline DevhelpSource::readContents(const std::stop_token& stop)
{
    const bool isBook = openBook();
    OutlineBuilder builder(m_fileName, isBook ? m_directory : extractRightDir(m_fileName));
    if (isBook) {
        builder.setTitle(m_title.isEmpty() ? QFileInfo(m_fileName).completeBaseName() : m_title);
        builder.add(0, m_title, m_link, int(m_reader.lineNumber()));
    }
    int depth = 1;
    while (isBook && !stop.stop_requested() && nextElement(depth) && m_reader.name() != u"functions") {
        const auto attributes = m_reader.attributes();
        const QStringView link = attributes.value(QLatin1StringView("link"));
        // Below the book and its chapters.
        if (m_reader.name() == u"sub" && leadsToPage(link) &&
            !builder.add(depth - 2, attributes.value(QLatin1StringView("name")).trimmed(), link,
                         int(m_reader.lineNumber()))) {
            break;
        }
    }
    if (const QString reason = problem(); !reason.isNull()) {
        builder.note(Problem::Severity::Error, reason, int(m_reader.lineNumber()));
    }
    auto outline = builder.take();
    outline.readable = isBook;
    return outline;
}

void DevhelpSource::readKeywords(KeywordSink& sink, const std::stop_token& stop)
{
    const bool hasKeywords =
        m_reader.isStartElement() && m_reader.name() == u"functions" && m_problem.isNull();
    if (!hasKeywords) {
        return;
    }
    const KeywordFile file{m_fileName, m_directory, m_title, m_fileName, 0};
    sink.begin(file, 0);
    KeywordTexts texts(sink);
    int depth = 2;
    while (!stop.stop_requested() && nextElement(depth)) {
        if (m_reader.name() != u"keyword" && m_reader.name() != u"function") {
            continue;
        }
        const auto attributes = m_reader.attributes();
        const QStringView link = attributes.value(QLatin1StringView("link"));
        const QString name = attributes.value(QLatin1StringView("name")).toString().simplified();
        if (!name.isEmpty() && leadsToPage(link) && !texts.add(name, link, int(m_reader.lineNumber()))) {
            sink.leaveOutRest(file);
            break;
        }
    }
    if (const QString reason = problem(); !reason.isNull()) {
        sink.note({m_fileName, int(m_reader.lineNumber()), Problem::Severity::Error, reason});
    }
    m_reader.clear();
}
