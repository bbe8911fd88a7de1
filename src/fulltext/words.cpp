// SPDX-License-Identifier: MIT
#include "fulltext/words.h"

#include "fulltext/foldedcharacters.h"
#include "fulltext/signs.h"

#include <algorithm>

namespace {

constexpr size_t LongestWord = 64;       // bytes; what is longer is cut
constexpr size_t LookDistance = 1 << 16; // bytes between two looks for a stop

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
constexpr bool isLower(char c)
{
    return c >= 'a' && c <= 'z';
}
constexpr bool isUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}
constexpr bool isWordByte(char c)
{
    return isLower(c) || isUpper(c) || isDigit(c) || c == '_';
}
constexpr bool isAscii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}
constexpr bool isOperatorSign(char c)
{
    return std::string_view("=+-*/<>!&|^~%[]").find(c) != std::string_view::npos;
}

} // namespace

void Words::read(std::string_view text, const std::stop_token& stop)
{
    m_text = text.substr(0, size_t(INT32_MAX));
    m_folded.clear();
    m_words.clear();
    m_position = 0;
    size_t nextLook = LookDistance;
    for (size_t at = 0; at < m_text.size();) {
        if (at >= nextLook) {
            nextLook = at + LookDistance;
            if (stop.stop_requested()) {
                return;
            }
        }
        const char c = m_text[at];
        if (isWordByte(c)) {
            at = readPlain(at);
        } else if (isAscii(c)) {
            const size_t dashes = c == '-' ? optionDashes(at) : 0;
            at = dashes > 0 ? readName(at, at + dashes) : Signs::isSign(c) ? readSigns(at) : at + 1;
        } else if (const auto next = characterAt(at); kindOf(next.code) == CharacterKind::Dense) {
            at = readPairs(at);
        } else {
            at = kindOf(next.code) == CharacterKind::Letter ? readName(at, at) : next.end;
        }
    }
}

/// Bytes that are no UTF-8 are separators.
Words::Character Words::characterAt(size_t at) const
{
    const auto first = static_cast<unsigned char>(m_text[at]);
    const int length = first < 0x80   ? 1
                       : first < 0xC2 ? 0
                       : first < 0xE0 ? 2
                       : first < 0xF0 ? 3
                       : first < 0xF5 ? 4
                                      : 0;
    if (length == 0 || at + size_t(length) > m_text.size()) {
        return {U' ', uint32_t(at + 1)};
    }
    char32_t code = length == 1 ? first : first & (0x7FU >> unsigned(length));
    for (int i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(m_text[at + size_t(i)]);
        if ((byte & 0xC0U) != 0x80) {
            return {U' ', uint32_t(at + 1)};
        }
        code = code << 6U | (byte & 0x3FU);
    }
    return {code, uint32_t(at + size_t(length))};
}

/// Most words are plain: letters and digits of ASCII, nothing around that belongs to a name.
size_t Words::readPlain(size_t begin)
{
    size_t end = begin + 1;
    while (end < m_text.size() && (isLower(m_text[end]) || isDigit(m_text[end]))) {
        ++end;
    }
    const auto rest = m_text.substr(end, 2);
    const char next = rest.empty() ? ' ' : rest[0];
    const char second = rest.size() < 2 ? ' ' : rest[1];
    const bool isFollowed = isWordByte(next) || !isAscii(next) || Signs::canFollowName(next) ||
                            (next == '.' && isWordByte(second)) || (next == ':' && second == ':') ||
                            (next == '+' && second == '+') || m_text[begin] == '_' ||
                            m_text.substr(begin, end - begin) == "operator";
    if (isFollowed) {
        return readName(begin, begin);
    }
    add(begin, end, false, true);
    return end;
}

/// How many dashes begin an option here; 0 when none begins.
size_t Words::optionDashes(size_t begin) const
{
    const size_t dashes = m_text.substr(begin).starts_with("--") ? 2 : 1;
    const size_t name = begin + dashes;
    if (name >= m_text.size() || (!isLower(m_text[name]) && !isUpper(m_text[name]))) {
        return 0;
    }
    const bool isApart = begin == 0 || std::string_view(" \t\r\n\f([{|,'\"`=").find(m_text[begin - 1]) !=
                                           std::string_view::npos;
    return isApart ? dashes : 0;
}

/// Signs that stand apart are a word, those before a name belong to it. Where they stand between names, as in
/// "a->b", they say nothing that somebody would look for.
size_t Words::readSigns(size_t begin)
{
    size_t end = begin + 1;
    while (end < m_text.size() && Signs::isSign(m_text[end]) &&
           (m_text[end] != '-' || optionDashes(end) == 0)) {
        ++end;
    }
    const auto run = m_text.substr(begin, end - begin);
    const auto rest = m_text.substr(end, 2);
    const bool isApartBefore = begin == 0 || Signs::isApart(m_text[begin - 1]);
    const bool isOpening = rest.size() > 1 && (rest[0] == '{' || rest[0] == '[');
    const char name = rest.empty() ? ' ' : isOpening ? rest[1] : rest[0];
    if (isApartBefore && isWordByte(name) && Signs::canPrecedeName(run, name)) {
        return readSigned(begin, end + (isOpening ? 1 : 0));
    }
    const bool isApart = isApartBefore || rest.empty() || Signs::isApart(rest[0]);
    const auto word = Signs::withoutPunctuation(run);
    if (isApart && Signs::isWord(word)) {
        addLiteral(begin, begin + word.size());
    }
    return end;
}

/// A name, and the same with the signs before it and their like behind it (":memory:").
size_t Words::readSigned(size_t begin, size_t nameBegin)
{
    const size_t end = readPlain(nameBegin);
    const char sign = m_text[begin];
    const bool isClosed = (sign == ':' || sign == '%') && nameBegin == begin + 1 && end < m_text.size() &&
                          m_text[end] == sign && (end + 1 == m_text.size() || !isWordByte(m_text[end + 1]));
    addLiteral(begin, end + (isClosed ? 1 : 0));
    return end + (isClosed ? 1 : 0);
}

/// Signs behind a name that mean something with it: "println!", "HEAD^", "HEAD~3".
void Words::addTrailingSigns(size_t begin, size_t end)
{
    const size_t signs = Signs::trailing(m_text.substr(end, Signs::LongestTrailing));
    if (signs > 0) {
        addLiteral(begin, end + signs);
    }
}

/// Stands where the word before it stands.
void Words::addLiteral(size_t begin, size_t end)
{
    const size_t count = m_words.size();
    add(begin, end, true, false);
    if (m_words.size() > count) {
        m_words.back().isLiteral = true;
    }
}

/// Behind the letters that follow, with the signs within a name.
size_t Words::endOfName(size_t begin) const
{
    size_t end = begin;
    while (end < m_text.size()) {
        if (isWordByte(m_text[end])) {
            ++end;
        } else if (!isAscii(m_text[end])) {
            const auto next = characterAt(end);
            if (kindOf(next.code) != CharacterKind::Letter) {
                break;
            }
            end = next.end;
        } else {
            const bool isColons = m_text.substr(end).starts_with("::");
            const size_t behind = end + (isColons ? 2 : 1);
            if ((!isColons && m_text[end] != '.') || behind >= m_text.size() || !isWordByte(m_text[behind])) {
                break;
            }
            end = behind;
        }
    }
    return end;
}

/// Behind the signs that belong to a name: "C++", "F#", "operator=".
size_t Words::endOfSigns(size_t begin, size_t end) const
{
    const auto rest = m_text.substr(end);
    if (m_text.substr(begin, end - begin).ends_with("operator")) {
        size_t signs = 0;
        while (signs < std::min<size_t>(rest.size(), 3) && isOperatorSign(rest[signs])) {
            ++signs;
        }
        return end + (rest.starts_with("()") ? 2 : signs);
    }
    const size_t signs = rest.starts_with("++") ? 2 : rest.starts_with("#") ? 1 : 0;
    const bool isEnd = signs == rest.size() || !isAscii(rest[signs]) || !isWordByte(rest[signs]);
    return end + (isEnd && end - begin <= 3 ? signs : 0);
}

/// A name with what stands before it, as the dashes of an option.
size_t Words::readName(size_t begin, size_t nameBegin)
{
    size_t nameEnd = endOfName(nameBegin);
    while (begin != nameBegin && nameEnd + 1 < m_text.size() && m_text[nameEnd] == '-' &&
           isWordByte(m_text[nameEnd + 1])) {
        nameEnd = endOfName(nameEnd + 1);
    }
    const size_t end = begin == nameBegin ? endOfSigns(nameBegin, nameEnd) : nameEnd;
    add(begin, end, false, true);
    addSegments(nameBegin, nameEnd, begin == nameBegin && end == nameEnd);
    if (end == nameEnd) {
        addTrailingSigns(begin, end);
    }
    return end;
}

/// The names between dots, colons or dashes, with their parts. The first one stands where the whole stands.
void Words::addSegments(size_t begin, size_t end, bool isAdded)
{
    bool isFirst = true;
    for (size_t at = begin; at < end;) {
        // Not in all of the text: few names are followed by such a sign.
        const size_t segmentEnd = at + std::min(m_text.substr(at, end - at).find_first_of(".:-"), end - at);
        if (segmentEnd > at) {
            if (!isAdded || segmentEnd - at < end - begin) {
                add(at, segmentEnd, true, !isFirst);
            }
            addParts(at, segmentEnd);
            isFirst = false;
        }
        at = segmentEnd + 1;
    }
}

/// The words that a name is made of: "set_encoding", "QTextBrowser".
void Words::addParts(size_t begin, size_t end)
{
    const auto isBorder = [&](size_t at) {
        const char before = m_text[at - 1];
        return isUpper(m_text[at]) && (isLower(before) || isDigit(before) ||
                                       (isUpper(before) && at + 1 < end && isLower(m_text[at + 1])));
    };
    bool isFirst = true;
    for (size_t part = begin; part < end;) {
        size_t at = part + 1;
        while (at < end && m_text[at] != '_' && m_text[at - 1] != '_' && !isBorder(at)) {
            ++at;
        }
        const bool isWord = at - part > 1 && m_text[part] != '_';
        if (isWord && at - part < end - begin) {
            add(part, at, true, !isFirst);
            isFirst = false;
        }
        part = at;
    }
}

/// Behind a character of a writing without blanks and the marks that belong to it; `begin` when none is
/// there.
size_t Words::endOfDense(size_t begin) const
{
    if (begin >= m_text.size()) {
        return begin;
    }
    const auto character = characterAt(begin);
    if (kindOf(character.code) != CharacterKind::Dense) {
        return begin;
    }
    const auto next = character.end < m_text.size() ? characterAt(character.end) : Character{U' ', 0};
    return isVoicedMark(next.code) ? next.end : character.end;
}

/// Each character with its neighbour, the last one by itself.
size_t Words::readPairs(size_t begin)
{
    size_t at = begin;
    for (size_t end = endOfDense(at); end > at; end = endOfDense(at)) {
        const size_t pairEnd = endOfDense(end);
        const size_t count = m_words.size();
        add(at, pairEnd, false, true);
        if (m_words.size() > count) {
            m_words.back().isBeginning = pairEnd == end;
        }
        at = end;
    }
    return at;
}

void Words::add(size_t begin, size_t end, bool isPart, bool isNext)
{
    Word word{uint32_t(begin), uint32_t(end), 0, uint32_t(m_folded.size()), 0, isPart, false, false};
    fold(begin, end);
    if (m_folded.size() == word.foldedBegin) {
        return;
    }
    word.foldedSize = uint16_t(m_folded.size() - word.foldedBegin);
    m_position += isNext || m_position == 0 ? 1 : 0;
    word.position = m_position - 1;
    m_words.push_back(word);
}

void Words::fold(size_t begin, size_t end)
{
    const size_t foldedBegin = m_folded.size();
    for (size_t at = begin; at < end && m_folded.size() - foldedBegin < LongestWord;) {
        const char c = m_text[at];
        if (isAscii(c)) {
            m_folded += isUpper(c) ? char(c - 'A' + 'a') : c;
            ++at;
        } else {
            const auto character = characterAt(at);
            if (m_folded.size() == foldedBegin || !foldMark(m_folded, character.code)) {
                appendFolded(m_folded, character.code);
            }
            at = character.end;
        }
    }
}
