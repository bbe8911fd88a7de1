// SPDX-License-Identifier: MIT
#include "sources/qchsource.h"

#include "formats/paths.h"
#include "sources/keywordtexts.h"
#include "sources/outlinebuilder.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>

namespace {

/// The contents of a Qt help file: a sequence of depth, page and title, numbers and texts in big-endian
/// order.
class QchContents {
public:
    explicit QchContents(const QByteArray& bytes) : m_bytes(bytes) {}

    /// False at the end, or where the contents are damaged.
    bool next() { return !m_rest.isEmpty() && readNumber(m_depth) && readText(m_page) && readText(m_title); }
    [[nodiscard]] int depth() const { return int(std::min(m_depth, quint32(OutlineBuilder::MaximumLevel))); }
    [[nodiscard]] const QString& page() const { return m_page; }
    [[nodiscard]] const QString& title() const { return m_title; }
    [[nodiscard]] bool isDamaged() const { return m_isDamaged; }

private:
    bool readNumber(quint32& number)
    {
        m_isDamaged = m_rest.size() < qsizetype(sizeof number);
        if (!m_isDamaged) {
            number = qFromBigEndian<quint32>(m_rest.data());
            m_rest = m_rest.sliced(sizeof number);
        }
        return !m_isDamaged;
    }

    bool readText(QString& text)
    {
        constexpr quint32 null = 0xFFFFFFFF;
        quint32 size = 0; // bytes
        if (!readNumber(size)) {
            return false;
        }
        size = size == null ? 0 : size;
        m_isDamaged = size % 2 != 0 || qint64(size) > m_rest.size();
        if (!m_isDamaged) {
            text.resize(qsizetype(size / 2));
            qFromBigEndian<quint16>(m_rest.data(), text.size(), text.data());
            m_rest = m_rest.sliced(size);
        }
        return !m_isDamaged;
    }

    QByteArray m_bytes;
    QByteArrayView m_rest = m_bytes;
    quint32 m_depth = 0;
    QString m_page;
    QString m_title;
    bool m_isDamaged = false;
};

/// Several versions of a set can be open at once.
QString titleOf(QchFile& file, const QString& name)
{
    const QString version = file.version();
    const bool isNew = !version.isEmpty() && !name.contains(version);
    return isNew ? name + u' ' + version : name;
}

} // namespace

QchSource::QchSource(const QString& fileName) : m_fileName(absoluteFilePath(fileName))
{
}

QString QchSource::title(const QString& fileName)
{
    QchFile file(fileName);
    QchContents contents(file.contents());
    return contents.next() ? titleOf(file, contents.title().simplified()) : QString();
}

ContentsOutline QchSource::readContents(const std::stop_token& stop)
{
    QchFile file(m_fileName);
    const bool isReadable = file.problem().isNull();
    m_directory = m_fileName + u'/' + (isReadable ? file.folder() + u'/' : QString());
    OutlineBuilder builder(m_fileName, m_directory);
    QchContents contents(isReadable ? file.contents() : QByteArray());
    m_title = QFileInfo(m_fileName).completeBaseName();
    bool isFirst = true;
    while (!stop.stop_requested() && contents.next()) {
        const QString title = contents.title().simplified();
        if (isFirst) {
            m_title = titleOf(file, title);
            builder.setTitle(m_title);
        }
        if (!builder.add(contents.depth(), isFirst ? m_title : title, contents.page())) {
            break;
        }
        isFirst = false;
    }
    if (isFirst) {
        builder.setTitle(m_title);
    }
    if (!file.problem().isNull()) {
        builder.note(Problem::Severity::Error,
                     tr("The file cannot be read as a whole: %1").arg(file.problem()));
    } else if (contents.isDamaged()) {
        builder.note(Problem::Severity::Error, tr("The contents are damaged; the rest is not read"));
    } else if (isFirst) {
        builder.note(Problem::Severity::Warning, tr("The file has no contents"));
    }
    auto outline = builder.take();
    outline.readable = isReadable;
    return outline;
}

void QchSource::readKeywords(KeywordSink& sink, const std::stop_token& stop)
{
    QchFile file(m_fileName);
    if (!file.problem().isNull()) {
        return;
    }
    const KeywordFile keywords{m_fileName, m_directory, m_title, m_fileName, 0};
    sink.begin(keywords, 0);
    KeywordTexts texts(sink);
    file.keywords([&](const QchFile::Keyword& keyword) {
        if (stop.stop_requested()) {
            return false;
        }
        const QString name = keyword.name.simplified();
        const bool hasRoom = name.isEmpty() || texts.add(name, keyword.page);
        if (!hasRoom) {
            sink.leaveOutRest(keywords);
        }
        return hasRoom;
    });
    if (!file.problem().isNull()) {
        sink.note({m_fileName, 0, Problem::Severity::Error,
                   tr("The keywords cannot be read as a whole: %1").arg(file.problem())});
    }
}
