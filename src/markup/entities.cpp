// SPDX-License-Identifier: MIT
#include "markup/entities.h"

#include <QString>

#include <algorithm>
#include <array>
#include <charconv>
#include <unordered_map>

namespace {

constexpr std::string_view Table =
#include "markup/entitynames.inc"
    ;

constexpr size_t LongestLegacyName = 6; // bytes
constexpr unsigned Replacement = 0xFFFD;

struct Entity {
    std::string text;
    bool isLegacy; ///< needs no semicolon
};

void appendCharacter(unsigned number, std::string& out)
{
    const char32_t character = number;
    out += QString::fromUcs4(&character, 1).toStdString();
}

std::unordered_map<std::string_view, Entity> makeEntities()
{
    constexpr int hex = 16;
    std::unordered_map<std::string_view, Entity> entities;
    for (size_t begin = 0; begin < Table.size();) {
        const size_t nameEnd = Table.find_first_of(" ,", begin);
        const size_t end = Table.find(';', nameEnd);
        Entity entity{{}, Table[nameEnd] == ','};
        for (const char* at = Table.data() + nameEnd + 1; at < Table.data() + end; ++at) {
            unsigned number = 0;
            at = std::from_chars(at, Table.data() + end, number, hex).ptr;
            appendCharacter(number, entity.text);
        }
        entities.emplace(Table.substr(begin, nameEnd - begin), std::move(entity));
        begin = end + 1;
    }
    return entities;
}

const Entity* findEntity(std::string_view name)
{
    static const auto entities = makeEntities();
    const auto found = entities.find(name);
    return found == entities.end() ? nullptr : &found->second;
}

bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

/// Numbers of what are control characters have always been taken for those of a Windows code page.
unsigned meantCharacter(unsigned number)
{
    static constexpr std::array<char16_t, 32> windows{
        0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021, 0x2C6,  0x2030, 0x160,
        0x2039, 0x152,  0x8D,   0x17D,  0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};
    constexpr unsigned first = 0x80;
    if (number >= first && number < first + windows.size()) {
        return windows[number - first];
    }
    const bool isNone = number == 0 || number > QChar::LastValidCodePoint || QChar::isSurrogate(number);
    return isNone ? Replacement : number;
}

/// `text` begins behind "&#".
size_t readNumber(std::string_view text, std::string& out)
{
    constexpr int decimal = 10;
    constexpr int hex = 16;
    const bool isHex = !text.empty() && (text[0] == 'x' || text[0] == 'X');
    const char* const begin = text.data() + (isHex ? 1 : 0);
    const char* const end = text.data() + text.size();
    unsigned number = 0;
    const auto read = std::from_chars(begin, end, number, isHex ? hex : decimal);
    if (read.ptr == begin) {
        return 0;
    }
    appendCharacter(read.ec == std::errc() ? meantCharacter(number) : Replacement, out);
    const bool hasEnd = read.ptr != end && *read.ptr == ';';
    return size_t(read.ptr - text.data()) + (hasEnd ? 1 : 0);
}

/// `text` begins behind "&".
size_t readName(std::string_view text, bool isInAttribute, std::string& out)
{
    const auto* const nameEnd = std::find_if_not(text.begin(), text.end(), isNameCharacter);
    const auto name = text.substr(0, size_t(nameEnd - text.begin()));
    if (const auto* entity = nameEnd != text.end() && *nameEnd == ';' ? findEntity(name) : nullptr) {
        out += entity->text;
        return name.size() + 1;
    }
    for (size_t size = std::min(name.size(), LongestLegacyName); size > 1; --size) {
        const auto* entity = findEntity(name.substr(0, size));
        if (entity == nullptr || !entity->isLegacy) {
            continue;
        }
        const bool isParameter = size < text.size() && (text[size] == '=' || isNameCharacter(text[size]));
        if (isInAttribute && isParameter) {
            return 0;
        }
        out += entity->text;
        return size;
    }
    return 0;
}

} // namespace

size_t readReference(std::string_view text, bool isInAttribute, std::string& out)
{
    const bool isNumber = text.size() > 2 && text[1] == '#';
    const size_t begin = isNumber ? 2 : 1;
    const size_t size =
        isNumber ? readNumber(text.substr(begin), out) : readName(text.substr(begin), isInAttribute, out);
    return size == 0 ? 0 : begin + size;
}

void appendDecoded(std::string_view text, bool isInAttribute, std::string& out)
{
    while (!text.empty()) {
        const size_t plain = std::min(text.find('&'), text.size());
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) {
            return;
        }
        const size_t size = readReference(text, isInAttribute, out);
        if (size == 0) {
            out += '&';
        }
        text.remove_prefix(std::max<size_t>(size, 1));
    }
}
