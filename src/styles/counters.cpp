// SPDX-License-Identifier: MIT
#include "styles/counters.h"

#include "markup/htmltree.h"
#include "styles/computedstyle.h"
#include "styles/cssreader.h"
#include "styles/styleproperties.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr size_t LongestText = 400; // bytes
constexpr int HighestRoman = 3999;

void appendCharacter(std::string& text, unsigned long code)
{
    const bool isOfOwnFont = (code >= 0xE000 && code <= 0xF8FF) || code >= 0xF0000;
    if (code == 0 || isOfOwnFont || (code >= 0xD800 && code < 0xE000)) {
        return;
    }
    const auto tail = [&](unsigned shift) { text += char(0x80U | (code >> shift & 0x3FU)); };
    if (code < 0x80) {
        text += char(code);
    } else if (code < 0x800) {
        text += char(0xC0U | code >> 6U);
        tail(0);
    } else if (code < 0x10000) {
        text += char(0xE0U | code >> 12U);
        tail(6);
        tail(0);
    } else {
        text += char(0xF0U | code >> 18U);
        tail(12);
        tail(6);
        tail(0);
    }
}

/// Without the quotes, and escapes such as "\201C" read.
std::string unquoted(std::string_view text)
{
    constexpr size_t mostDigits = 6;
    text = text.size() < 2 ? std::string_view() : text.substr(1, text.size() - 2);
    std::string result;
    for (size_t at = 0; at < text.size() && result.size() < LongestText;) {
        // Signs of a font's own: UTF-8 of U+E000 to U+F8FF.
        const auto byte = static_cast<unsigned char>(text[at]);
        const auto second = at + 1 < text.size() ? static_cast<unsigned char>(text[at + 1]) : 0U;
        if (byte == 0xEE || (byte == 0xEF && second < 0xA4)) {
            at += 3;
            continue;
        }
        if (text[at] != '\\' || at + 1 == text.size()) {
            result += text[at++];
            continue;
        }
        unsigned long code = 0;
        const char* begin = text.data() + at + 1;
        const char* limit = begin + std::min(mostDigits, text.size() - at - 1);
        const char* end = std::from_chars(begin, limit, code, 16).ptr;
        if (end == begin) {
            result += text[at + 1];
            at += 2;
            continue;
        }
        appendCharacter(result, code);
        at = size_t(end - text.data());
        at += at < text.size() && isBlank(text[at]) ? 1 : 0;
    }
    return result;
}

std::string letters(int value, char first)
{
    constexpr int count = 26;
    std::string text;
    for (; value > 0; value = (value - 1) / count) {
        text.insert(text.begin(), char(first + (value - 1) % count));
    }
    return text;
}

std::string roman(int value, bool isUpper)
{
    static constexpr std::pair<int, std::string_view> parts[]{
        {1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"}, {90, "xc"}, {50, "l"},
        {40, "xl"},  {10, "x"},   {9, "ix"},  {5, "v"},    {4, "iv"},  {1, "i"}};
    std::string text;
    for (const auto& [number, name] : parts) {
        for (; value >= number; value -= number) {
            text += name;
        }
    }
    std::transform(text.begin(), text.end(), text.begin(),
                   [isUpper](char c) { return isUpper ? char(c - 'a' + 'A') : c; });
    return text;
}

std::string numberText(int value, std::string_view style)
{
    const bool isUpper = style.substr(0, 5) == "upper";
    if (value > 0 &&
        (style.find("-alpha") != std::string_view::npos || style.find("-latin") != std::string_view::npos)) {
        return letters(value, isUpper ? 'A' : 'a');
    }
    if (value > 0 && value <= HighestRoman && style.find("-roman") != std::string_view::npos) {
        return roman(value, isUpper);
    }
    return style == "none" ? std::string() : std::to_string(value);
}

} // namespace

void Counters::enter(const ComputedStyle& style)
{
    if (!style.counterReset.empty()) {
        change(style.counterReset, 0, true);
    }
    if (!style.counterIncrement.empty()) {
        change(style.counterIncrement, 1, false);
    }
    ++m_depth;
}

/// What an element's content made ends with it.
void Counters::leave()
{
    if (m_made.size() > size_t(m_depth)) {
        for (const auto& name : m_made[size_t(m_depth)]) {
            m_counters[name].pop_back();
        }
        m_made.resize(size_t(m_depth));
    }
    --m_depth;
}

void Counters::change(std::string_view names, int usual, bool isReset)
{
    const auto words = wordsOf(names);
    for (size_t i = 0; i < words.size(); ++i) {
        int number = usual;
        const auto next = i + 1 < words.size() ? words[i + 1] : std::string_view();
        const bool hasNumber =
            std::from_chars(next.data(), next.data() + next.size(), number).ec == std::errc() &&
            !next.empty();
        std::string name(words[i]);
        auto& values = m_counters[name];
        const bool isOwn = !values.empty() && values.back().depth == m_depth;
        if ((isReset && !isOwn) || values.empty()) {
            values.push_back({0, m_depth});
            m_made.resize(std::max(m_made.size(), size_t(m_depth) + 1));
            m_made[size_t(m_depth)].push_back(std::move(name));
        }
        const long sum = isReset ? long(number) : long(values.back().value) + number;
        values.back().value = int(std::clamp(sum, -1'000'000'000L, 1'000'000'000L));
        i += hasNumber ? 1 : 0;
    }
}

/// "name, style", or "name, separator, style" when it is nested.
std::string Counters::value(std::string_view arguments, bool isNested) const
{
    const auto parts = splitCss(arguments, ',');
    const auto found = m_counters.find(std::string(parts.front()));
    const size_t styleAt = isNested ? 2 : 1;
    const auto style = parts.size() > styleAt ? parts[styleAt] : std::string_view();
    if (found == m_counters.end() || found->second.empty()) {
        return numberText(0, style);
    }
    if (!isNested) {
        return numberText(found->second.back().value, style);
    }
    std::string text;
    for (const auto& counter : found->second) {
        text += (text.empty() || parts.size() < 2 ? std::string() : unquoted(parts[1])) +
                numberText(counter.value, style);
        if (text.size() > LongestText) {
            break;
        }
    }
    return text;
}

std::string Counters::functionText(std::string_view name, std::string_view arguments,
                                   const HtmlNode& element) const
{
    if (name == "attr") {
        return std::string(attribute(element, lowerCss(trimmedCss(arguments))).substr(0, LongestText));
    }
    return name == "counter" || name == "counters" ? value(arguments, name == "counters") : std::string();
}

std::string Counters::text(std::string_view content, const HtmlNode& element) const
{
    std::string text;
    for (const auto word : wordsOf(splitCss(content, '/').front())) {
        const size_t bracket = word.find('(');
        if (word.front() == '"' || word.front() == '\'') {
            text += unquoted(word);
        } else if (word == "open-quote" || word == "close-quote") {
            text += word == "open-quote" ? "“" : "”";
        } else if (bracket != std::string_view::npos && word.back() == ')') {
            text += functionText(lowerCss(word.substr(0, bracket)),
                                 word.substr(bracket + 1, word.size() - bracket - 2), element);
        }
        if (text.size() > LongestText) {
            break;
        }
    }
    return text;
}
