// SPDX-License-Identifier: MIT
#include "fulltext/snippetplace.h"

#include <algorithm>
#include <bit>
#include <string_view>

namespace {

constexpr size_t MostBefore = 120; // bytes from the beginning of a sentence to what was found
constexpr size_t Reach = 130;      // bytes in which matches belong together
constexpr size_t PartSize = 8192;  // bytes that are looked at in one go
constexpr size_t MostMatches = 4;  // that make a piece better

struct Place {
    size_t begin = 0;
    int clauses = 0;     ///< that are found there
    bool isText = false; ///< not in a list of links, or a heading
    size_t matches = 0;
};

bool isBetter(const Place& a, const Place& b)
{
    const int aRank = a.clauses * 2 + (a.isText ? 1 : 0);
    const int bRank = b.clauses * 2 + (b.isText ? 1 : 0);
    return aRank != bRank ? aRank > bRank : a.matches > b.matches;
}

/// Whether most of what stands at a place are links.
bool isInLinks(const PlainPage& page, size_t begin, size_t end)
{
    auto link = std::lower_bound(page.links.begin(), page.links.end(), begin,
                                 [](const PlainLink& one, size_t at) { return one.end <= at; });
    size_t inLinks = 0;
    for (; link != page.links.end() && link->begin < end; ++link) {
        inLinks += std::min(end, link->end) - std::max(begin, link->begin);
    }
    return inLinks * 2 > end - begin;
}

/// A sentence is longer than the lines of lists and headings, and ends like one.
bool isText(const PlainPage& page, size_t place)
{
    constexpr size_t shortLine = 40;
    const std::string_view text = page.text;
    const size_t before = text.rfind('\n', place);
    const size_t begin = before == std::string_view::npos || before >= place ? 0 : before + 1;
    const size_t end = std::min(text.find('\n', place), text.size());
    return end - begin > shortLine && !isInLinks(page, begin, std::min(end, begin + 4 * SnippetLength));
}

/// The match with which the best piece begins: that of the most different clauses, the first one of several.
Place bestPlace(const PlainPage& page, size_t offset, const std::vector<QueryMatcher::Match>& matches)
{
    Place best;
    for (size_t i = 0; i < matches.size(); ++i) {
        uint64_t clauses = 0;
        Place place{offset + matches[i].begin};
        for (size_t j = i; j < matches.size() && matches[j].end < matches[i].begin + Reach; ++j) {
            clauses |= uint64_t(1) << unsigned(matches[j].clause);
            place.matches = std::min(place.matches + 1, MostMatches);
        }
        place.clauses = std::popcount(clauses);
        // Most are no better, however they stand.
        place.isText = true;
        if (isBetter(place, best)) {
            place.isText = isText(page, place.begin);
            best = isBetter(place, best) ? place : best;
        }
    }
    return best;
}

bool endsSentence(std::string_view text, size_t at)
{
    const bool isMark = std::string_view(".!?").find(text[at]) != std::string_view::npos;
    const bool isWideMark =
        at >= 2 && (text.substr(at - 2, 3) == "\xE3\x80\x82" || text.substr(at - 2, 3) == "\xEF\xBC\x81");
    return isWideMark || (isMark && at + 1 < text.size() && text[at + 1] == ' ');
}

} // namespace

size_t findSnippetPlace(const PlainPage& page, TextPart within, QueryMatcher& matcher)
{
    const std::string_view text = page.text;
    Words words;
    Place best{within.begin};
    for (size_t begin = within.begin; begin < within.end;) {
        const size_t end =
            std::min(text.find_first_of(" \n", std::min(within.end, begin + PartSize)), within.end);
        const auto part = text.substr(begin, end - begin);
        words.read(part);
        auto matches = matcher.matches(words);
        std::sort(matches.begin(), matches.end(),
                  [](const auto& a, const auto& b) { return a.begin < b.begin; });
        const auto place = bestPlace(page, begin, matches);
        best = isBetter(place, best) ? place : best;
        if (best.clauses >= matcher.clauses() && best.isText) {
            break;
        }
        begin = end + 1;
    }
    return best.begin;
}

size_t sentenceBegin(std::string_view text, size_t place)
{
    const size_t least = place - std::min(place, MostBefore);
    for (size_t at = place; at > least; --at) {
        if (text[at - 1] == '\n' || endsSentence(text, at - 1)) {
            return at;
        }
    }
    return least == 0 ? 0 : std::string_view::npos;
}
