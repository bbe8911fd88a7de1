// SPDX-License-Identifier: MIT
#include "fulltext/indexedpage.h"

#include "fulltext/indexfile.h"
#include "fulltext/searchquery.h"
#include "pages/pagefile.h"
#include "pages/plainpage.h"

#include <algorithm>
#include <mutex>

namespace {

constexpr qint64 LongestPage = 16'000'000; // bytes; of longer ones the beginning is indexed
constexpr qint64 LargePage = 2'000'000;    // bytes
constexpr size_t GuessedWords = 400;

/// Whether a tenth of the first words are such as only English has so often.
bool looksEnglish(const Words& words)
{
    static constexpr std::array<std::string_view, 10> usual{"the", "of",   "to",   "and",  "is",
                                                            "for", "that", "this", "with", "are"};
    const size_t looked = std::min(words.all().size(), GuessedWords);
    const auto found =
        std::count_if(words.all().begin(), words.all().begin() + qsizetype(looked), [&](const Word& word) {
            return std::find(usual.begin(), usual.end(), words.folded(word)) != usual.end();
        });
    return looked > 0 && size_t(found) * 10 >= looked;
}

std::string simplified(const std::string& text)
{
    return QString::fromStdString(text).simplified().toStdString();
}

} // namespace

int64_t hashOfNames(const SearchSource& source, const SourcePage& page)
{
    int64_t hash = 0;
    const auto add = [&](const SearchSource::Entry& entry) {
        for (const auto text : {source.page(entry), source.title(entry)}) {
            const auto bytes = QByteArrayView(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
            hash = IndexFile::hashOf({bytes.data(), size_t(bytes.size())}, uint64_t(hash) * 31 + 1);
        }
    };
    for (const int topic : page.topics) {
        add(source.topics()[size_t(topic)]);
    }
    for (const int keyword : page.keywords) {
        add(source.keywords()[size_t(keyword)]);
    }
    return hash;
}

IndexedPage PageReader::read(const SourcePage& page)
{
    IndexedPage result;
    result.path = page.file.toStdString();
    result.size = page.size;
    result.time = page.time;
    result.names = hashOfNames(m_source, page);
    readText(page, result);
    readNames(page, result);
    return result;
}

void PageReader::readText(const SourcePage& page, IndexedPage& result)
{
    // Parsed pages take a multiple of their size, so large ones come one at a time.
    static std::mutex large;
    const auto isLarge = page.size > LargePage ? std::unique_lock(large) : std::unique_lock<std::mutex>();
    const auto source = readPage(page.file, LongestPage);
    if (!source.ok()) {
        result.error = describe(source.error());
        result.isUnread = source.error() == PageError::Unreadable;
        return;
    }
    PlainPage plain;
    if (source.value().isHtml && !m_stop.stop_requested()) {
        PageContext context{page.file, {}};
        context.styleSheets = &m_styleSheets;
        plain = readPlainPage(source.value().text, context);
    } else if (!m_stop.stop_requested()) {
        plain.text = source.value().text.toStdString();
    }
    result.title = simplified(plain.title);
    addColumn(plain.headings, result.columns[IndexFile::Headings]);
    addColumn(plain.text, result.columns[IndexFile::Body]);
    result.words = m_words.positions();
    result.isEnglish = plain.language.empty() ? looksEnglish(m_words) : plain.language.starts_with("en");
    if (result.words > 0) {
        result.hash = IndexFile::hashOf(result.columns[IndexFile::Body]);
    }
}

/// Titles of the whole page are titles; those of places in it count as keywords. Its own title counts when
/// the contents do not give it one.
void PageReader::readNames(const SourcePage& page, IndexedPage& result)
{
    auto& title = result.columns[IndexFile::Title];
    auto& keywords = result.columns[IndexFile::Keywords];
    const auto add = [&](const SearchSource::Entry& entry, bool isTopic) {
        const auto name = m_source.page(entry);
        const auto text = m_source.title(entry);
        const qsizetype anchor = anchorBegin(name, page.file);
        const bool isTitle = isTopic && anchor == name.size();
        addColumn(text.toUtf8().toStdString(), isTitle ? title : keywords);
        result.titleWords += isTitle ? m_words.positions() : 0;
        if (const std::string folded = foldedName(text); !folded.empty()) {
            result.exactNames.push_back(
                {IndexFile::hashOf(folded), name.sliced(anchor).toUtf8().toStdString(), isTitle});
        }
    };
    for (const int topic : page.topics) {
        add(m_source.topics()[size_t(topic)], true);
    }
    const bool hasOwnTitle = title.empty();
    addColumn(result.title, hasOwnTitle ? title : result.columns[IndexFile::Headings]);
    result.titleWords += hasOwnTitle ? m_words.positions() : 0;
    for (const int keyword : page.keywords) {
        add(m_source.keywords()[size_t(keyword)], false);
    }
}

void PageReader::addColumn(std::string_view text, std::string& column)
{
    m_words.read(text, m_stop);
    IndexFile::appendPrepared(column, m_words);
}
