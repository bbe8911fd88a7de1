// SPDX-License-Identifier: MIT
#include "fulltext/signs.h"

#include <algorithm>
#include <array>

namespace {

constexpr size_t LongestRun = 8;
constexpr size_t LongestBeforeName = 3;
constexpr std::string_view SignCharacters = "!#$%&*+-./:<=>?@\\^|~";

constexpr auto SignTable = [] {
    std::array<bool, 128> table{};
    for (const char c : SignCharacters) {
        table[static_cast<unsigned char>(c)] = true;
    }
    return table;
}();

bool isLetterOrDigit(char c)
{
    return (c >= '0' && c <= '9') || ((c | 0x20) >= 'a' && (c | 0x20) <= 'z') || c == '_';
}

bool consistsOf(std::string_view run, std::string_view characters)
{
    return run.find_first_not_of(characters) == std::string_view::npos;
}

} // namespace

bool Signs::isSign(char c)
{
    const auto code = static_cast<unsigned char>(c);
    return code < SignTable.size() && SignTable[code];
}

bool Signs::isApart(char c)
{
    return static_cast<unsigned char>(c) <= ' ' ||
           std::string_view("'\"`(),;[]{}").find(c) != std::string_view::npos;
}

bool Signs::isWord(std::string_view run)
{
    if (run.size() < 2 || run.size() > LongestRun) {
        return false;
    }
    const bool isLine = run.size() > 2 && consistsOf(run, run.substr(0, 1)) && !consistsOf(run, "<>&|:?");
    return !isLine && !consistsOf(run, ".");
}

std::string_view Signs::withoutPunctuation(std::string_view run)
{
    const bool endsSentence =
        run.size() > 2 && std::string_view(".:?").find(run.back()) != std::string_view::npos;
    return endsSentence ? run.substr(0, run.size() - 1) : run;
}

bool Signs::canPrecedeName(std::string_view run, char name)
{
    if (run == "**") {
        return true;
    }
    const bool isShort = run.size() <= LongestBeforeName && !run.starts_with("..");
    return isShort && consistsOf(run, (name >= '0' && name <= '9') ? "$\\%#@" : "!#$%&.:?@\\~");
}

bool Signs::canFollowName(char c)
{
    return c == '#' || c == '!' || c == '^' || c == '~';
}

size_t Signs::trailing(std::string_view rest)
{
    if (rest.empty() || !canFollowName(rest[0]) || rest[0] == '#') {
        return 0;
    }
    size_t end = 1;
    while (rest[0] == '~' && end < rest.size() && rest[end] >= '0' && rest[end] <= '9') {
        ++end;
    }
    const bool goesOn = end < rest.size() && (isLetterOrDigit(rest[end]) || rest[end] == '=' ||
                                              static_cast<unsigned char>(rest[end]) >= 0x80);
    return goesOn ? 0 : end;
}
