// SPDX-License-Identifier: MIT
#include "fulltext/snippet.h"

#include "fulltext/snippetplace.h"
#include "fulltext/utf8ranges.h"

#include <algorithm>
#include <climits>

namespace {

constexpr size_t Before = 50;              // bytes before a match where no sentence begins near it
constexpr qsizetype MostSectionTitle = 80; // UTF-16 code units

bool isLineBlank(char c)
{
    return static_cast<unsigned char>(c) <= ' ';
}

bool isContinued(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80;
}

size_t wordBegin(std::string_view text, size_t at)
{
    const size_t least = at - std::min<size_t>(at, 30);
    size_t begin = at;
    while (begin > least && !isLineBlank(text[begin - 1])) {
        --begin;
    }
    // Not within a character.
    while (begin > 0 && begin < text.size() && isContinued(text[begin])) {
        --begin;
    }
    return begin;
}

size_t wordEnd(std::string_view text, size_t at)
{
    size_t end = std::min(at, text.size());
    const size_t most = std::min(text.size(), end + 30);
    while (end < most && !isLineBlank(text[end])) {
        ++end;
    }
    while (end < text.size() && isContinued(text[end])) {
        ++end;
    }
    return end;
}

/// In one line, without control characters.
std::string simplified(std::string_view text)
{
    std::string line;
    for (const char c : text) {
        if (!isLineBlank(c) && c != '\x7F') {
            line += c;
        } else if (!line.empty() && line.back() != ' ') {
            line += ' ';
        }
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

QString titleOf(const PlainSection& section)
{
    QString title = QString::fromUtf8(section.title.data(), qsizetype(section.title.size())).simplified();
    // The signs of permanent links, which a page without style sheets still has.
    while (title.endsWith(u'\u00B6') || title.endsWith(u'\u00A7')) {
        title.chop(1);
    }
    title = title.trimmed();
    return title.size() > MostSectionTitle ? title.first(MostSectionTitle - 1) + u'\u2026' : title;
}

/// The part of the text that an anchor leads to; all of it when there is no such part.
TextPart partAt(const PlainPage& page, std::string_view anchor, size_t size)
{
    const auto section =
        std::find_if(page.sections.begin(), page.sections.end(),
                     [&](const PlainSection& one) { return !anchor.empty() && one.anchor == anchor; });
    if (section == page.sections.end() || section->begin >= size) {
        return {0, size};
    }
    const auto next = std::find_if(section + 1, page.sections.end(),
                                   [&](const PlainSection& one) { return one.level <= section->level; });
    return {section->begin, next == page.sections.end() ? size : std::min(size, next->begin)};
}

/// The headings above a place. What stands at the very beginning of a page is the page's own.
void addSections(const PlainPage& page, size_t place, Snippet& snippet)
{
    int level = INT_MAX;
    for (auto section = page.sections.rbegin(); section != page.sections.rend(); ++section) {
        const bool isOwn = section + 1 == page.sections.rend() && section->level <= 2;
        if (section->begin > place || section->level >= level || isOwn) {
            continue;
        }
        level = section->level;
        if (snippet.anchor.isEmpty()) {
            snippet.anchor = QString::fromStdString(section->anchor);
        }
        if (const QString title = titleOf(*section); !title.isEmpty()) {
            snippet.section.prepend(title);
        }
    }
}

} // namespace

Snippet makeSnippet(const PlainPage& page, QueryMatcher& matcher, std::string_view anchor)
{
    const auto text = std::string_view(page.text).substr(0, SnippetSource);
    const size_t place = findSnippetPlace(page, partAt(page, anchor, text.size()), matcher);
    const size_t sentence = sentenceBegin(text, place);
    const bool isCut = sentence == std::string_view::npos;
    const size_t begin = isCut ? wordBegin(text, place - std::min(place, Before)) : sentence;
    const size_t end = wordEnd(text, begin + SnippetLength);
    const std::string line =
        (isCut ? "… " : "") + simplified(text.substr(begin, end - begin)) + (end < text.size() ? " …" : "");
    Words words;
    words.read(line);
    Snippet snippet{QString::fromStdString(line), utf16Ranges(line, matcher.matches(words)), {}, {}};
    addSections(page, place, snippet);
    return snippet;
}
