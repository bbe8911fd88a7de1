// SPDX-License-Identifier: MIT
#include "fulltext/linkedpages.h"

#include "pages/links.h"
#include "pages/plainpage.h"
#include "sources/pagefiles.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>

namespace {

constexpr size_t MostTargets = 2000; // of a page

QStringView before(QStringView text, QChar sign)
{
    const qsizetype end = text.indexOf(sign);
    return end < 0 ? text : text.first(end);
}

/// The file that a link means by the way it is written; null for none.
QString writtenFile(QStringView link, const QString& base)
{
    link = link.trimmed();
    link = before(before(link, u'#'), u'?');
    const qsizetype colon = link.indexOf(u':');
    const bool hasScheme =
        colon > 1 && !link.first(colon).contains(u'/') && !link.first(colon).contains(u'.');
    if (link.isEmpty() || link.startsWith(u"//")) {
        return {};
    }
    if (hasScheme) {
        return link.startsWith(u"qthelp:") ? resolveFile(base, link.toString()) : QString();
    }
    QString path = link.contains(u'%') ? QUrl::fromPercentEncoding(link.toUtf8()) : link.toString();
    path = path.startsWith(u'/') ? path : base.first(base.lastIndexOf(u'/') + 1) + path;
    const QString file = QDir::cleanPath(path);
    return path.endsWith(u'/') ? file + QStringLiteral("/index.html") : file;
}

} // namespace

bool mayBeLinked(QStringView path, const SourcePages& named)
{
    const auto& folders = named.folders();
    return isHtmlName(path) && std::any_of(folders.begin(), folders.end(),
                                           [&](const QString& folder) { return path.startsWith(folder); });
}

std::string linkTargets(const PlainPage& page, const SourcePages& named)
{
    QSet<QString> files;
    QStringList targets;
    for (const auto& link : page.targets) {
        const QString file = writtenFile(QString::fromStdString(link), page.base);
        const bool isWanted = !file.isNull() && !files.contains(file) &&
                              size_t(targets.size()) < MostTargets && !file.contains(u'\n') &&
                              mayBeLinked(file, named) && named.find(file) == nullptr;
        files.insert(file);
        if (isWanted) {
            targets.append(file);
        }
    }
    return targets.join(u'\n').toStdString();
}

LinkedPages::LinkedPages(const SourcePages& named) : m_named(named)
{
    for (const auto& folder : named.folders()) {
        if (const QString real = QFileInfo(folder).canonicalFilePath(); !real.isEmpty()) {
            m_realFolders.emplace_back(folder, real + u'/');
        }
    }
}

void LinkedPages::follow(const std::string& path, std::string_view targets)
{
    const auto known = m_steps.find(path);
    const int steps = (known == m_steps.end() ? 0 : known->second) + 1;
    const QString all = QString::fromUtf8(targets.data(), qsizetype(targets.size()));
    for (const auto target : QStringView(all).tokenize(u'\n', Qt::SkipEmptyParts)) {
        QString file = target.toString();
        if (!m_visited.contains(file) && mayBeLinked(file, m_named) && m_named.find(file) == nullptr) {
            m_visited.insert(file);
            m_waiting.push_back({std::move(file), steps});
        }
    }
}

std::vector<const SourcePage*> LinkedPages::next(std::vector<int64_t>& outdated)
{
    constexpr size_t batchSize = 500;
    std::vector<const SourcePage*> batch;
    while (!m_waiting.empty() && batch.size() < batchSize) {
        const Target target = std::move(m_waiting.front());
        m_waiting.pop_front();
        if (!isBeyondBounds(target)) {
            visit(target, batch, outdated);
        }
    }
    return batch;
}

bool LinkedPages::isBeyondBounds(const Target& target)
{
    m_isLate = m_isLate || Clock::now() > m_end;
    const bool isBeyond = m_isLate || m_count >= MostPages || target.steps > MostSteps;
    m_isLimited = m_isLimited || isBeyond;
    return isBeyond;
}

/// Links of the file system may lead out of the folders, or around in them.
bool LinkedPages::isNew(const QString& file)
{
    if (!packageOf(file).isNull()) {
        return true;
    }
    const QString real = QFileInfo(file).canonicalFilePath();
    for (const auto& [folder, realFolder] : m_realFolders) {
        if (real.startsWith(realFolder)) {
            const QString name = folder + real.sliced(realFolder.size());
            const bool isKnown = name != file && (m_visited.contains(name) || m_named.find(name) != nullptr);
            m_visited.insert(name);
            return !isKnown;
        }
    }
    return false;
}

void LinkedPages::visit(const Target& target, std::vector<const SourcePage*>& batch,
                        std::vector<int64_t>& outdated)
{
    const auto state = pageFileState(target.file);
    if (!state || !isNew(target.file)) {
        return;
    }
    const std::string path = target.file.toStdString();
    m_steps.emplace(path, target.steps);
    ++m_count;
    const auto known = m_known.find(path);
    if (known != m_known.end()) {
        const Known page = std::move(known->second);
        m_known.erase(known);
        if (page.size == state->size && page.time == state->time) {
            follow(path, page.targets);
            return;
        }
        outdated.push_back(page.id);
    }
    batch.push_back(&m_pages.emplace_back(SourcePage{target.file, state->size, state->time, {}, {}}));
}

std::vector<int64_t> LinkedPages::unreached() const
{
    std::vector<int64_t> ids;
    for (const auto& [path, page] : m_known) {
        // What time did not allow to reach is still there.
        if (!m_isLate) {
            ids.push_back(page.id);
        }
    }
    return ids;
}
