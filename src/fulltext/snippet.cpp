// SPDX-License-Identifier: MIT
#include "fulltext/snippet.h"

#include "fulltext/utf8ranges.h"

#include <algorithm>
#include <bit>

namespace {

constexpr size_t Length = 180;         // bytes, about
constexpr size_t Before = 50;          // bytes of them before the first match
constexpr size_t MostText = 2'000'000; // bytes that are looked at

constexpr bool isLineBlank(char c)
{
    return static_cast<unsigned char>(c) <= ' ';
}

/// The match with which the best piece begins: that of the most different clauses, the first one of several.
size_t bestBegin(const std::vector<QueryMatcher::Match>& matches)
{
    size_t best = 0;
    size_t bestScore = 0;
    for (size_t i = 0; i < matches.size(); ++i) {
        uint64_t clauses = 0;
        size_t count = 0;
        for (size_t j = i; j < matches.size() && matches[j].end < matches[i].begin + Length - Before; ++j) {
            clauses |= uint64_t(1) << unsigned(matches[j].clause);
            ++count;
        }
        const size_t score = size_t(std::popcount(clauses)) * 8 + std::min<size_t>(count, 4);
        if (score > bestScore) {
            bestScore = score;
            best = i;
        }
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
    text = text.substr(0, MostText);
    Words words;
    words.read(text);
    auto matches = matcher.matches(words);
    std::sort(matches.begin(), matches.end(), [](const auto& a, const auto& b) { return a.begin < b.begin; });
    const size_t first = matches.empty() ? 0 : matches[bestBegin(matches)].begin;
    const size_t begin = wordBegin(text, first - std::min(first, Before));
    const size_t end = wordEnd(text, begin + Length);
    const std::string line = (begin > 0 ? "… " : "") + simplified(text.substr(begin, end - begin)) +
                             (end < text.size() ? " …" : "");
    words.read(line);
    return {QString::fromStdString(line), utf16Ranges(line, matcher.matches(words))};
}
