// SPDX-License-Identifier: MIT
#include "fulltext/sourcepages.h"

#include "pages/pagefile.h"
#include "sources/htmlplace.h"
#include "sources/pagefiles.h"

#include <QDir>

#include <algorithm>

qsizetype anchorBegin(QStringView name, QStringView file)
{
    if (name.startsWith(file)) {
        const bool hasAnchor = name.size() > file.size() && name.at(file.size()) == u'#';
        if (hasAnchor || name.size() == file.size()) {
            return file.size();
        }
    }
    const auto location = locatePage(name.toString());
    return location.anchor.isEmpty() ? name.size() : name.size() - location.anchor.size() - 1;
}

SourcePages::SourcePages(const SearchSource& source, const std::stop_token& stop)
{
    m_positions.reserve(qsizetype(source.topics().size()));
    const auto addAll = [&](const std::vector<SearchSource::Entry>& entries, auto member) {
        for (size_t i = 0; i < entries.size() && !stop.stop_requested(); ++i) {
            const int page = entries[i].pageLength == 0 ? -1 : pageOf(source.page(entries[i]));
            if (page >= 0) {
                (m_pages[size_t(page)].*member).push_back(int(i));
            }
        }
    };
    addAll(source.topics(), &SourcePage::topics);
    addAll(source.keywords(), &SourcePage::keywords);
    findFolders(source);
}

void SourcePages::findFolders(const SearchSource& source)
{
    QString outside;
    for (const auto& folder : source.folders()) {
        if (folder != u"/") {
            m_folders.append(folder);
        }
    }
    for (const auto& page : m_pages) {
        const auto isIn = [&](const QString& folder) { return page.file.startsWith(folder); };
        if (std::none_of(m_folders.begin(), m_folders.end(), isIn)) {
            outside = outside.isNull() ? page.file : outside;
            const auto end =
                std::mismatch(outside.begin(), outside.end(), page.file.begin(), page.file.end());
            outside.truncate(end.first - outside.begin());
        }
    }
    outside.truncate(outside.lastIndexOf(u'/') + 1);
    if (!outside.isEmpty() && !isCommonFolder(outside.size() > 1 ? outside.chopped(1) : outside)) {
        m_folders.append(outside);
    }
}

const SourcePage* SourcePages::find(const QString& file) const
{
    const int position = m_positions.value(file, -1);
    return position < 0 ? nullptr : &m_pages[size_t(position)];
}

/// Without its anchor the name is nearly always that of a file.
int SourcePages::pageOf(QStringView name)
{
    const qsizetype hash = name.indexOf(u'#', name.lastIndexOf(u'/') + 1);
    const QString guess = name.first(hash < 0 ? name.size() : hash).toString();
    const auto known = m_positions.constFind(guess);
    // That there is no such file is known, too, unless a part of its name was taken for an anchor.
    if (known != m_positions.cend() && (*known >= 0 || hash < 0)) {
        return *known;
    }
    int page = known == m_positions.cend() ? addFile(guess) : -1;
    if (page < 0) {
        m_positions.insert(guess, -1);
        const QString located = locatePage(name.toString()).file;
        const auto other = m_positions.constFind(located);
        page = other != m_positions.cend() ? *other : addFile(located);
        m_positions.insert(located, page);
        if (hash < 0) {
            m_positions.insert(guess, page);
        }
    }
    return page;
}

int SourcePages::addFile(const QString& file)
{
    const bool hasSteps = file.contains(QLatin1StringView("/.")) || file.contains(QLatin1StringView("//"));
    const QString clean = hasSteps ? QDir::cleanPath(file) : file;
    if (hasSteps && m_positions.contains(clean)) {
        return m_positions.value(clean);
    }
    const auto state = pageFileState(clean);
    if (!state) {
        return -1;
    }
    m_positions.insert(clean, int(m_pages.size()));
    m_pages.push_back({clean, state->size, state->time, {}, {}});
    return int(m_pages.size()) - 1;
}
