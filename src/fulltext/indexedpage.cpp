// SPDX-License-Identifier: MIT
#include "fulltext/indexedpage.h"

#include "fulltext/entryname.h"
#include "fulltext/linkedpages.h"
#include "fulltext/pagelanguage.h"
#include "pages/pagefile.h"
#include "pages/plainpage.h"

#include <algorithm>
#include <mutex>

namespace {

constexpr qint64 LongestPage = 16'000'000; // bytes; of longer ones the beginning is indexed
constexpr qint64 LargePage = 2'000'000;    // bytes
constexpr size_t PieceSize = 1'000'000;    // bytes of a text that are cut into words at once

/// What a page's file is called: "include" of "preprocessor/include.html", "clone" of "clone/index.html".
QStringView fileTitle(QStringView file)
{
    const qsizetype slash = file.lastIndexOf(u'/');
    const auto name = file.sliced(slash + 1);
    const auto title = name.first(std::max<qsizetype>(0, name.indexOf(u'.')));
    const bool isDirectory = title == u"index" && slash > 0;
    return isDirectory ? file.first(slash).sliced(file.lastIndexOf(u'/', slash - 1) + 1) : title;
}

std::string simplified(const std::string& text)
{
    return QString::fromStdString(text).simplified().toStdString();
}

/// Between two words, if there is such a place.
size_t endOfPiece(std::string_view text)
{
    if (text.size() <= PieceSize) {
        return text.size();
    }
    const size_t blank = text.find_last_of(" \n", PieceSize);
    return blank == std::string_view::npos ? PieceSize : blank + 1;
}

} // namespace

int64_t hashOfNames(const SearchSource& source, const SourcePage& page, uint64_t seed)
{
    const bool isNamed = !page.topics.empty() || !page.keywords.empty();
    int64_t hash = isNamed ? int64_t(seed) : 0;
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
    result.names = hashOfNames(m_source, page, m_beginnings.hash());
    readText(page, result);
    readNames(page, result);
    return result;
}

void PageReader::readText(const SourcePage& page, IndexedPage& result)
{
    // Parsed pages take a multiple of their size, so large ones come one at a time.
    static std::mutex large;
    const auto isLarge = page.size > LargePage ? std::unique_lock(large) : std::unique_lock<std::mutex>();
    auto source = readPage(page.file, LongestPage);
    if (!source.ok()) {
        result.error = describe(source.error());
        result.isUnread = source.error() == PageError::Unreadable;
        return;
    }
    PlainPage plain;
    if (source.value().isHtml && !m_stop.stop_requested()) {
        PageContext context{page.file, {}};
        context.styleSheets = &m_styleSheets;
        plain = readPlainPage(source.take().text, context, PlainParts::TextAndTargets);
        result.targets = linkTargets(plain, m_named);
    } else if (!m_stop.stop_requested()) {
        plain.text = source.value().text.toStdString();
    }
    result.title = simplified(plain.title);
    result.headingWords = addColumn(plain.headings, result.columns[IndexFile::Headings]);
    auto& body = result.columns[IndexFile::Body];
    body.reserve(plain.text.size());
    readWords(plain.text, [&] {
        result.language = body.empty() ? pageLanguage(plain.language, result.path, m_words) : result.language;
        IndexFile::appendPrepared(body, m_words);
        result.words += m_words.positions();
    });
    result.linkShare = plain.text.empty() ? 0 : int(plain.linkText * 100 / plain.text.size());
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
        const auto rest = isTitle ? m_beginnings.rest(text) : QStringView();
        // "glossary" of "gitglossary" is no part of the word otherwise.
        if (!rest.isEmpty() && rest.front().isLower() && (rest.begin() - 1)->isLetter()) {
            addColumn(rest.toUtf8().toStdString(), title);
        }
        const auto words = addColumn(text.toUtf8().toStdString(), isTitle ? title : keywords);
        (isTitle ? result.titleWords : result.keywordWords) += words;
        addNames(text, name.sliced(anchor).toUtf8().toStdString(), isTopic, isTitle, result);
    };
    for (const int topic : page.topics) {
        add(m_source.topics()[size_t(topic)], true);
    }
    const bool hasOwnTitle = title.empty();
    if (hasOwnTitle) {
        addNames(QString::fromStdString(result.title), {}, true, true, result);
    }
    if (const auto name = squeezed(fileTitle(page.file)); !name.empty()) {
        result.exactNames.push_back({IndexFile::keyOf(name), {}, IndexFile::FileName});
    }
    const auto words = addColumn(result.title, hasOwnTitle ? title : result.columns[IndexFile::Headings]);
    result.titleWords += hasOwnTitle ? words : 0;
    for (const int keyword : page.keywords) {
        add(m_source.keywords()[size_t(keyword)], false);
    }
}

/// A place is found by its own name, and with what it belongs to where neither the page is called so nor the
/// anchor says it.
void PageReader::addNames(QStringView text, const std::string& anchor, bool isTopic, bool isTitle,
                          IndexedPage& result) const
{
    const EntryName name = readEntryName(text);
    const auto add = [&](const std::string& key, IndexFile::NameKind kind) {
        const bool isKnown = std::any_of(
            result.exactNames.rbegin(),
            result.exactNames.rbegin() + qsizetype(std::min<size_t>(result.exactNames.size(), 4)),
            [&](const auto& known) { return known.key == IndexFile::keyOf(key) && known.anchor == anchor; });
        if (!key.empty() && !isKnown) {
            result.exactNames.push_back({IndexFile::keyOf(key), anchor, kind});
        }
    };
    if (isTitle) {
        result.titleNames.insert(result.titleNames.end(), {name.whole, name.head, name.last});
        add(name.whole, IndexFile::TitleName);
        add(name.head, IndexFile::TitleName);
        add(squeezed(m_beginnings.rest(text)), IndexFile::TitlePart);
        // A constructor is called like what it makes.
        const bool isOwnMember = !name.owners.empty() && name.owners.front() == name.last;
        add(name.last, isOwnMember ? IndexFile::KeywordName : IndexFile::TitlePart);
    } else {
        add(name.last, name.parts > 1 ? IndexFile::KeywordPart : IndexFile::KeywordName);
    }
    add(name.literal, isTitle ? IndexFile::TitleName : IndexFile::KeywordLiteral);
    const auto isSaid = [&](const std::string& owner) {
        const auto& own = result.titleNames;
        return std::find(own.begin(), own.end(), owner) != own.end() || saysOwner(anchor, owner + name.last);
    };
    if (isTitle || std::none_of(name.owners.begin(), name.owners.end(), isSaid)) {
        for (const auto& owner : name.owners) {
            add(owner + name.last, isTitle ? IndexFile::TitlePart : IndexFile::KeywordMember);
        }
    }
    for (const auto& initials : isTopic ? name.initials : std::vector<std::string>()) {
        add(initials, IndexFile::Initials);
    }
}

/// The words of a text take many times its room, so a long one is read in pieces.
template <typename Use>
void PageReader::readWords(std::string_view text, Use use)
{
    do {
        const size_t end = endOfPiece(text);
        m_words.read(text.substr(0, end), m_stop);
        use();
        text.remove_prefix(end);
    } while (!text.empty() && !m_stop.stop_requested());
}

/// Returns how many positions there are in it.
uint32_t PageReader::addColumn(std::string_view text, std::string& column)
{
    uint32_t positions = 0;
    readWords(text, [&] {
        IndexFile::appendPrepared(column, m_words);
        positions += m_words.positions();
    });
    return positions;
}
