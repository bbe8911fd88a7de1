// SPDX-License-Identifier: MIT
#include "formats/contentsreader.h"

#include "formats/helpsettitle.h"
#include "formats/linereader.h"
#include "formats/paths.h"
#include "formats/textfile.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

/// The state of reading one file. Depths count from the file's own unindented entries.
struct ContentsReader::Source {
    QString path; ///< as opened
    QString dir;  ///< base directory, ends with "/"
    int file = 0;
    int line = 0;
    int including = -1; ///< row of the including line; -1 for the top file
    int title = -1;
    bool hasIndex = false;
    bool started = false; ///< the first entry line has been read
    int lastRow = -1;
    int depth = 0; ///< of the last row
};

namespace {

constexpr qsizetype UnitsPerWork = 64; // of a line, which take as long as a line itself

int indentation(QStringView line)
{
    const auto* end = std::find_if(line.begin(), line.end(), [](QChar c) { return c != u' ' && c != u'\t'; });
    return int(std::distance(line.begin(), end));
}

bool isDirective(QStringView trimmed)
{
    return trimmed.startsWith(u':') &&
           (trimmed.startsWith(TitleDirective) || trimmed.startsWith(IndexDirective));
}

bool hasOnlyOneTopEntry(const QString& text)
{
    int count = 0;
    LineReader lines(text);
    while (count < 2 && lines.next()) {
        const QStringView trimmed = lines.trimmed();
        if (!trimmed.isEmpty() && !isDirective(trimmed) && indentation(lines.line()) == 0) {
            ++count;
        }
    }
    return count == 1;
}

} // namespace

bool onlyOneTopContent(const QString& fileName)
{
    const auto text = readText(fileName);
    return text.ok() && hasOnlyOneTopEntry(text.value());
}

ContentsOutline ContentsReader::read(const QString& fileName, std::stop_token stop)
{
    m_outline = {};
    m_openFiles.clear();
    m_identities.clear();
    m_texts.clear();
    m_noted.clear();
    m_stop = std::move(stop);
    m_includes = 0;
    m_work = 0;
    m_full = false;

    Source source;
    source.path = absoluteFilePath(fileName);
    source.dir = extractRightDir(source.path);
    source.file = addFile(source);
    m_openFiles.append(identity(source.path));
    const auto text = readText(source.path);
    if (text.ok()) {
        m_outline.readable = true;
        m_outline.texts.push_back(text.value());
        m_outline.entries.reserve(std::min(lineBound(text.value()), size_t(MaximumEntries)));
        readFile(source, text.value());
        if (source.title >= 0) {
            m_outline.ownTitle = m_outline.titles[size_t(source.title)];
        }
    } else {
        note(source, Problem::Severity::Error,
             tr("The contents file cannot be read: %1").arg(describe(text.error())));
    }
    return std::exchange(m_outline, {});
}

int ContentsReader::addFile(const Source& source)
{
    m_outline.files.push_back(source.path);
    m_outline.directories.push_back(source.dir);
    return int(m_outline.files.size()) - 1;
}

void ContentsReader::readFile(Source& source, const QString& text)
{
    LineReader lines(text);
    while (!m_full && !m_stop.stop_requested() && lines.next()) {
        const QStringView trimmed = lines.trimmed();
        source.line = lines.number();
        m_work += 1 + lines.line().size() / UnitsPerWork;
        if (m_work > MaximumWork) {
            return stop(source, tr("Far too many lines are included; the rest is not read"));
        }
        if (lines.isCut()) {
            note(source, Problem::Severity::Warning, tr("The line is too long"));
        }
        if (isDirective(trimmed)) {
            readDirective(source, trimmed);
        } else if (!trimmed.isEmpty() && !readEntry(source, lines.line(), trimmed, text)) {
            return;
        }
    }
}

void ContentsReader::readDirective(Source& source, QStringView trimmed)
{
    if (const auto title = directiveValue(trimmed, TitleDirective)) {
        readTitle(source, *title);
    } else if (const auto index = directiveValue(trimmed, IndexDirective)) {
        readIndexReference(source, *index);
    }
}

void ContentsReader::readTitle(Source& source, QStringView value)
{
    if (source.title >= 0) {
        return;
    }
    // An empty title is a title, a null one would mean that none is known.
    const QString title = value.isEmpty() ? QStringLiteral("") : value.toString();
    source.title = int(m_outline.titles.size());
    m_outline.titles.push_back(title);
    if (m_outline.title.isNull()) {
        m_outline.title = title;
    }
}

void ContentsReader::readIndexReference(Source& source, QStringView value)
{
    if (source.hasIndex) {
        return;
    }
    source.hasIndex = true;
    const QString name = value.toString();
    m_outline.indexFiles.push_back({isAbsoluteName(name) ? name : source.dir + name,
                                    source.title < 0 ? QString() : m_outline.titles[size_t(source.title)],
                                    source.file, source.line});
}

/// False when the reading of the file has to stop.
bool ContentsReader::readEntry(Source& source, QStringView line, QStringView trimmed, const QString& text)
{
    const bool first = !source.started;
    source.started = true;
    int depth = indentation(line);
    if (first && depth == 1 && source.including < 0) {
        note(source, Problem::Severity::Warning,
             tr("The first entry is indented; it is read as if it were not"));
        depth = 0;
    }
    if (first ? depth > 0 : depth > source.depth + 1) {
        note(source, Problem::Severity::Error,
             tr("The entry is indented more than one level deeper than the one before; "
                "the rest of the file is not read"));
        m_outline.malformedFiles.append(source.path);
        return false;
    }

    const OutlineEntry entry = makeEntry(source, trimmed);
    if (first && isMergeable(source, entry, text)) {
        auto& row = m_outline.entries[size_t(source.including)];
        row.page = entry.page;
        row.helpSet = entry.helpSet;
        row.file = entry.file;
        row.line = entry.line;
        row.target = entry.target;
        source.lastRow = source.including;
    } else {
        if (m_outline.entries.size() >= size_t(MaximumEntries)) {
            stop(source, tr("More than %1 entries; the rest is not read").arg(MaximumEntries));
            return false;
        }
        const int row = append(entry);
        if (first && source.including < 0) {
            m_outline.firstTop = row;
        } else if (first) {
            insertFirstChild(row, source.including);
        } else if (depth > source.depth) {
            insertFirstChild(row, source.lastRow);
        } else {
            insertAfter(row, ancestor(source.lastRow, source.depth - depth));
        }
        source.lastRow = row;
    }
    source.depth = depth;

    if (m_outline.entries[size_t(source.lastRow)].target == EntryTarget::Contents) {
        include(source, source.lastRow);
    } else if (m_outline.firstPage < 0) {
        m_outline.firstPage = source.lastRow;
    }
    return true;
}

OutlineEntry ContentsReader::makeEntry(const Source& source, QStringView trimmed)
{
    const qsizetype equals = trimmed.indexOf(u'=');
    OutlineEntry entry;
    entry.title = equals < 0 ? trimmed : trimmed.first(equals).trimmed();
    entry.page = equals < 0 ? QStringView() : trimmed.sliced(equals + 1).trimmed();
    entry.helpSet = source.title;
    entry.file = source.file;
    entry.line = source.line;
    if (entry.page.endsWith(u".cnt")) {
        entry.target = EntryTarget::Contents;
    } else {
        entry.target = entry.page.isEmpty() ? EntryTarget::Nothing : EntryTarget::Page;
    }
    return entry;
}

void ContentsReader::include(const Source& source, int row)
{
    const QString name = m_outline.entries[size_t(row)].page.toString();
    Source included;
    included.including = row;
    included.path = isAbsoluteName(name) ? name : source.dir + name;
    included.dir = isAbsoluteName(name) ? source.dir : extractRightDir(included.path);
    const auto refuse = [&](const QString& reason) {
        note(source, Problem::Severity::Warning,
             tr("The contents file \"%1\" is not included: %2").arg(name, reason));
    };
    if (++m_includes > MaximumIncludes) {
        return stop(
            source,
            tr("More than %1 contents files are included; the rest is not read").arg(MaximumIncludes));
    }
    const QString file = identity(included.path);
    if (const QString reason = refusal(file); !reason.isEmpty()) {
        return refuse(reason);
    }
    const auto text = includedText(included.path, file);
    if (!text.ok()) {
        return refuse(describe(text.error()));
    }
    included.file = addFile(included);
    m_outline.texts.push_back(text.value());
    m_openFiles.append(file);
    readFile(included, text.value());
    m_openFiles.removeLast();
}

/// What tells files apart. The same for a path all the time, even when the file comes and goes meanwhile.
QString ContentsReader::identity(const QString& path)
{
    QString& known = m_identities[path];
    if (known.isNull()) {
        const QString canonical = QFileInfo(fileSystemName(path)).canonicalFilePath();
        known = canonical.isEmpty() ? path : canonical;
    }
    return known;
}

/// Why the file must not be included here; empty when it may be.
QString ContentsReader::refusal(const QString& file) const
{
    if (m_openFiles.contains(file)) {
        return tr("it includes itself");
    }
    return m_openFiles.size() > MaximumNesting
               ? tr("more than %1 files include each other").arg(MaximumNesting)
               : QString();
}

/// Files that are included again and again are read once.
Result<QString, FileError> ContentsReader::includedText(const QString& path, const QString& file)
{
    if (const auto known = m_texts.constFind(file); known != m_texts.cend()) {
        return *known;
    }
    auto text = readText(path);
    if (text.ok()) {
        m_texts.insert(file, text.value());
    }
    return text;
}

/// Ends all reading.
void ContentsReader::stop(const Source& source, const QString& reason)
{
    note(source, Problem::Severity::Error, reason);
    m_outline.limitReached = reason;
    m_full = true;
}

bool ContentsReader::isMergeable(const Source& source, const OutlineEntry& entry, const QString& text) const
{
    return source.including >= 0 && m_outline.entries[size_t(source.including)].title == entry.title &&
           hasOnlyOneTopEntry(text);
}

int ContentsReader::append(const OutlineEntry& entry)
{
    m_outline.entries.push_back(entry);
    return int(m_outline.entries.size()) - 1;
}

void ContentsReader::insertFirstChild(int row, int parent)
{
    auto& child = m_outline.entries[size_t(row)];
    child.parent = parent;
    child.nextSibling = std::exchange(m_outline.entries[size_t(parent)].firstChild, row);
}

void ContentsReader::insertAfter(int row, int predecessor)
{
    auto& before = m_outline.entries[size_t(predecessor)];
    auto& entry = m_outline.entries[size_t(row)];
    entry.parent = before.parent;
    entry.nextSibling = std::exchange(before.nextSibling, row);
}

int ContentsReader::ancestor(int row, int steps) const
{
    for (; steps > 0; --steps) {
        row = m_outline.entries[size_t(row)].parent;
    }
    return row;
}

void ContentsReader::note(const Source& source, Problem::Severity severity, const QString& message)
{
    const QString key = source.path + u'\n' + QString::number(source.line) + u'\n' + message;
    if (!m_noted.contains(key)) {
        m_noted.insert(key);
        m_outline.problems.push_back({source.path, source.line, severity, message});
    }
}
