// SPDX-License-Identifier: MIT
#include "fulltext/searchhits.h"

#include "fulltext/sourcepages.h"

#include <QHash>

#include <algorithm>
#include <utility>

namespace {

constexpr size_t MostCopies = 20;

/// Titles of the books that an entry of the contents stands in.
QStringList pathOf(const SearchSource& source, int topic)
{
    QStringList path;
    const auto& topics = source.topics();
    int level = topics[size_t(topic)].level;
    for (auto i = size_t(topic); level > 0 && i-- > 0;) {
        if (topics[i].level < level) {
            level = topics[i].level;
            path.prepend(source.title(topics[i]).toString());
        }
    }
    return path;
}

/// The entry of the contents that stands for the page: one that has no anchor, else the first one.
int topicOf(const SearchSource& source, const SourcePage& page)
{
    const auto whole = std::find_if(page.topics.begin(), page.topics.end(), [&](int topic) {
        const auto name = source.page(source.topics()[size_t(topic)]);
        return anchorBegin(name, page.file) == name.size();
    });
    return whole != page.topics.end() ? *whole : page.topics.empty() ? -1 : page.topics.front();
}

QString lineOf(const QString& text)
{
    QString line = text.simplified();
    for (auto& c : line) {
        c = c.category() == QChar::Other_Control ? QChar(u' ') : c;
    }
    return line;
}

QString fileNameOf(const SearchHit& hit)
{
    return hit.file.sliced(hit.file.lastIndexOf(u'/') + 1);
}

SearchHit describe(const SearchableSet& set, const Candidate& candidate, const std::string& anchor,
                   const SearchIndex::Page& page)
{
    const auto& source = *set.source;
    SearchHit result;
    result.page = page.file;
    result.contentsFile = source.contentsFile();
    result.helpSet = lineOf(source.title());
    result.score = candidate.score;
    result.language = QString::fromStdString(page.language);
    result.title = lineOf(page.title);
    const auto* entries = set.pages->find(page.file);
    const int topic = entries == nullptr ? -1 : topicOf(source, *entries);
    if (topic >= 0) {
        const auto& entry = source.topics()[size_t(topic)];
        const auto name = source.page(entry);
        const qsizetype begin = anchorBegin(name, page.file);
        const bool isWhole = begin == name.size();
        result.page = name.first(begin).toString();
        result.path = pathOf(source, topic);
        if (isWhole || result.title.isEmpty()) {
            result.title = lineOf(source.title(entry).toString());
        }
    }
    result.file = result.page;
    if (result.title.isEmpty()) {
        result.title = fileNameOf(result);
    }
    result.page += QString::fromStdString(anchor);
    return result;
}

} // namespace

void SearchHits::add(const SearchableSet& set, SearchIndex& index, const Candidate& candidate,
                     const std::string& anchor)
{
    const auto page = index.page(candidate.page);
    if (page.file.isEmpty() || (page.hash != 0 && m_texts.contains(page.hash))) {
        return;
    }
    m_texts.insert(page.hash);
    m_hits.push_back(describe(set, candidate, anchor, page));
    m_ownTitles += lineOf(page.title);
    for (const auto copy : index.copiesOf(candidate.page)) {
        if (size_t(m_hits.back().copies.size()) < MostCopies) {
            m_hits.back().copies += index.page(copy).file;
        }
    }
}

/// Pages that are called alike also say what their files call them, else what book they are in, else their
/// file.
std::vector<SearchHit> SearchHits::take()
{
    QHash<QString, std::vector<size_t>> withTitle;
    for (size_t i = 0; i < m_hits.size(); ++i) {
        withTitle[m_hits[i].title].push_back(i);
    }
    for (const auto& alike : std::as_const(withTitle)) {
        if (alike.size() < 2) {
            continue;
        }
        const auto differ = [&](auto&& text) {
            QSet<QString> texts;
            for (const size_t i : alike) {
                texts.insert(text(i));
            }
            return texts.size() == qsizetype(alike.size()) && !texts.contains(QString());
        };
        const auto own = [this](size_t i) {
            return m_ownTitles[qsizetype(i)] == m_hits[i].title ? QString() : m_ownTitles[qsizetype(i)];
        };
        const auto book = [this](size_t i) {
            return m_hits[i].path.isEmpty() ? QString() : m_hits[i].path.last();
        };
        const auto file = [this](size_t i) { return fileNameOf(m_hits[i]); };
        const bool byOwn = differ(own);
        const bool byBook = !byOwn && differ(book);
        for (const size_t i : alike) {
            if (byOwn || byBook || differ(file)) {
                m_hits[i].title += u" \u2014 " + (byOwn ? own(i) : byBook ? book(i) : file(i));
            }
        }
    }
    return std::move(m_hits);
}
