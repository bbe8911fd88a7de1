// SPDX-License-Identifier: MIT
#include "fulltext/snippet.h"

#include "fulltext/utf8ranges.h"

#include <algorithm>
#include <bit>

namespace {

constexpr size_t Length = 180;    // bytes, about
constexpr size_t Before = 50;     // bytes of them before the first match
constexpr size_t PartSize = 8192; // bytes that are looked at in one go
constexpr size_t MostMatches = 4; // that make a piece better

constexpr bool isLineBlank(char c)
{
    return static_cast<unsigned char>(c) <= ' ';
}

struct Place {
    size_t begin = 0;
    int clauses = 0; ///< that are found there
    size_t matches = 0;
};

bool isBetter(const Place& a, const Place& b)
{
    return a.clauses != b.clauses ? a.clauses > b.clauses : a.matches > b.matches;
}

/// The match with which the best piece begins: that of the most different clauses, the first one of several.
Place bestPlace(const std::vector<QueryMatcher::Match>& matches)
{
    Place best;
    for (size_t i = 0; i < matches.size(); ++i) {
        uint64_t clauses = 0;
        Place place{matches[i].begin};
        for (size_t j = i; j < matches.size() && matches[j].end < matches[i].begin + Length - Before; ++j) {
            clauses |= uint64_t(1) << unsigned(matches[j].clause);
            place.matches = std::min(place.matches + 1, MostMatches);
        }
        place.clauses = std::popcount(clauses);
        best = isBetter(place, best) ? place : best;
    }
    return best;
}

/// Looks at a text part by part, until one has all that is looked for.
Place findPlace(std::string_view text, QueryMatcher& matcher)
{
    Words words;
    Place best;
    for (size_t begin = 0; begin < text.size() && best.clauses < matcher.clauses();) {
        const size_t end = text.find_first_of(" \n", std::min(text.size(), begin + PartSize));
        const auto part = text.substr(begin, end - begin);
        words.read(part);
        auto matches = matcher.matches(words);
        std::sort(matches.begin(), matches.end(),
                  [](const auto& a, const auto& b) { return a.begin < b.begin; });
        auto place = bestPlace(matches);
        place.begin += begin;
        best = isBetter(place, best) ? place : best;
        begin += part.size() + 1;
    }
    return best;
}

size_t wordBegin(std::string_view text, size_t at)
{
    const size_t least = at - std::min<size_t>(at, 30);
    size_t begin = at;
    while (begin > least && !isLineBlank(text[begin - 1])) {
        --begin;
    }
    // Not within a character.
    while (begin > 0 && begin < text.size() && (static_cast<unsigned char>(text[begin]) & 0xC0U) == 0x80) {
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
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) {
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

} // namespace

Snippet makeSnippet(std::string_view text, QueryMatcher& matcher)
{
    text = text.substr(0, SnippetSource);
    const size_t first = findPlace(text, matcher).begin;
    const size_t begin = wordBegin(text, first - std::min(first, Before));
    const size_t end = wordEnd(text, begin + Length);
    const std::string line = (begin > 0 ? "… " : "") + simplified(text.substr(begin, end - begin)) +
                             (end < text.size() ? " …" : "");
    Words words;
    words.read(line);
    return {QString::fromStdString(line), utf16Ranges(line, matcher.matches(words))};
}
