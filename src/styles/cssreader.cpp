// SPDX-License-Identifier: MIT
#include "styles/cssreader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace {

constexpr size_t LargestSheet = 4'000'000; // bytes
constexpr size_t MostRules = 50'000;
constexpr int DeepestBlock = 8;
constexpr double LargestNumber = 10'000'000;

bool isSpace(char c)
{
    return c == ' ' || c == '\n' || c == '\t' || c == '\r' || c == '\f';
}

/// The position behind a string, an escape or any other character.
size_t nextToken(std::string_view text, size_t at)
{
    const char first = text[at];
    if (first == '\\') {
        return std::min(at + 2, text.size());
    }
    if (first != '"' && first != '\'') {
        return at + 1;
    }
    for (++at; at < text.size() && text[at] != first && text[at] != '\n'; ++at) {
        at += text[at] == '\\' ? 1 : 0;
    }
    return std::min(at + 1, text.size());
}

/// The first of these signs that is outside of strings and brackets, from a position on; the text's size if
/// there is none.
size_t findSign(std::string_view text, size_t from, std::string_view signs)
{
    int depth = 0;
    while (from < text.size()) {
        const char c = text[from];
        if (depth == 0 && signs.find(c) != std::string_view::npos) {
            return from;
        }
        depth += c == '(' || c == '[' || c == '{' ? 1 : 0;
        depth -= (c == ')' || c == ']' || c == '}') && depth > 0 ? 1 : 0;
        from = nextToken(text, from);
    }
    return text.size();
}

std::string withoutComments(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (size_t at = 0; at < text.size();) {
        if (text.substr(at, 2) == "/*") {
            const size_t end = text.find("*/", at + 2);
            at = end == std::string_view::npos ? text.size() : end + 2;
            result += ' ';
        } else if (text.substr(at, 4) == "<!--" || text.substr(at, 3) == "-->") {
            at += text[at] == '<' ? 4 : 3;
        } else {
            const size_t next = nextToken(text, at);
            result += text.substr(at, next - at);
            at = next;
        }
    }
    return result;
}

std::string both(std::string_view a, std::string_view b)
{
    return std::string(a) + (a.empty() || b.empty() ? "" : " and ") + std::string(b);
}

class CssReader {
public:
    CssText read(std::string_view sheet)
    {
        readRules(withoutComments(sheet.substr(0, LargestSheet)), {}, 0);
        return std::move(m_text);
    }

private:
    void readRules(std::string_view text, const std::string& media, int depth)
    {
        for (size_t at = 0; at < text.size() && m_text.rules.size() < MostRules;) {
            const size_t end = findSign(text, at, "{;");
            const auto prelude = trimmedCss(text.substr(at, end - at));
            if (end == text.size() || text[end] == ';') {
                readStatement(prelude);
                at = end + 1;
                continue;
            }
            const size_t close = findSign(text, end + 1, "}");
            readBlock(prelude, text.substr(end + 1, close - end - 1), media, depth);
            at = close + 1;
        }
    }

    void readStatement(std::string_view statement)
    {
        constexpr std::string_view import = "@import";
        if (lowerCss(statement.substr(0, import.size())) != import) {
            return;
        }
        auto rest = trimmedCss(statement.substr(import.size()));
        const bool isUrl = lowerCss(rest.substr(0, 4)) == "url(";
        const size_t end = isUrl ? findSign(rest, 4, ")") : rest.empty() ? 0 : nextToken(rest, 0);
        auto file = trimmedCss(rest.substr(0, end));
        file = trimmedCss(isUrl ? file.substr(4) : file);
        if (file.size() >= 2 && (file.front() == '"' || file.front() == '\'')) {
            file = file.substr(1, file.size() - 2);
        }
        rest = rest.substr(std::min(rest.size(), end + (isUrl ? 1 : 0)));
        m_text.imports.push_back({std::string(file), lowerCss(trimmedCss(rest))});
    }

    void readBlock(std::string_view prelude, std::string_view block, const std::string& media, int depth)
    {
        if (prelude.empty() || prelude.front() != '@') {
            m_text.rules.push_back({std::string(prelude), media, readDeclarations(block)});
            return;
        }
        if (depth == DeepestBlock) {
            return;
        }
        const size_t nameEnd = findSign(prelude, 0, " (\t\n");
        const std::string name = lowerCss(prelude.substr(0, nameEnd));
        const std::string condition = lowerCss(trimmedCss(prelude.substr(nameEnd)));
        if (name == "@media") {
            readRules(block, both(media, condition), depth + 1);
        } else if (name == "@layer" || (name == "@supports" && condition.substr(0, 3) != "not")) {
            readRules(block, media, depth + 1);
        }
    }

    CssText m_text;
};

} // namespace

std::string_view trimmedCss(std::string_view text)
{
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::string lowerCss(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return lower;
}

std::vector<std::string_view> splitCss(std::string_view text, char sign)
{
    std::vector<std::string_view> parts;
    for (size_t at = 0; at <= text.size();) {
        const size_t end = findSign(text, at, std::string_view(&sign, 1));
        parts.push_back(trimmedCss(text.substr(at, end - at)));
        at = end + 1;
    }
    return parts;
}

std::vector<CssDeclaration> readDeclarations(std::string_view text)
{
    constexpr std::string_view important = "important";
    std::vector<CssDeclaration> declarations;
    for (const auto part : splitCss(text, ';')) {
        const size_t colon = part.find(':');
        if (colon == std::string_view::npos || part.find('{') != std::string_view::npos) {
            continue;
        }
        CssDeclaration declaration;
        const auto name = trimmedCss(part.substr(0, colon));
        declaration.name = name.substr(0, 2) == "--" ? std::string(name) : lowerCss(name);
        auto value = trimmedCss(part.substr(colon + 1));
        if (const size_t mark = value.rfind('!');
            mark != std::string_view::npos && lowerCss(trimmedCss(value.substr(mark + 1))) == important) {
            declaration.isImportant = true;
            value = trimmedCss(value.substr(0, mark));
        }
        declaration.value = value;
        declarations.push_back(std::move(declaration));
    }
    return declarations;
}

CssText readCss(std::string_view sheet)
{
    return CssReader().read(sheet);
}

std::optional<double> readCssNumber(std::string_view text, std::string_view& unit)
{
    text.remove_prefix(!text.empty() && text.front() == '+' ? 1 : 0);
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || !(std::abs(number) <= LargestNumber)) {
        return std::nullopt; // also what is called a number and is none
    }
    unit = trimmedCss(text.substr(size_t(end - text.data())));
    return number;
}
