// SPDX-License-Identifier: MIT
#include "markup/htmlscanner.h"

#include "markup/entities.h"
#include "markup/htmlstore.h"

#include <algorithm>
#include <cstring>

namespace {

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

const char* find(const char* begin, const char* end, char wanted)
{
    const auto* found = static_cast<const char*>(std::memchr(begin, wanted, size_t(end - begin)));
    return found == nullptr ? end : found;
}

bool beginsWith(std::string_view text, std::string_view lower)
{
    return text.size() >= lower.size() && equalsLower(text.substr(0, lower.size()), lower);
}

} // namespace

const HtmlAttribute* HtmlToken::attribute(std::string_view wanted) const
{
    const auto* found = attributes;
    while (found != nullptr && found->name != wanted) {
        found = found->next;
    }
    return found;
}

HtmlToken HtmlScanner::next()
{
    while (m_at != m_end) {
        if (m_content != Content::Markup) {
            if (auto token = contentText(); !token.text.empty()) {
                return token;
            }
        } else if (!isMarkup()) {
            return text();
        }
        HtmlToken token;
        if (m_at != m_end && readMarkup(token)) {
            return token;
        }
    }
    return {};
}

/// Whether anything but text begins here.
bool HtmlScanner::isMarkup() const
{
    if (*m_at != '<' || m_end - m_at < 2) {
        return false;
    }
    const char c = m_at[1];
    return isLetter(c) || c == '!' || c == '?' || (c == '/' && m_end - m_at > 2);
}

HtmlToken HtmlScanner::text()
{
    const char* const begin = m_at;
    do {
        m_at = const_cast<char*>(find(m_at + 1, m_end, '<'));
    } while (m_at != m_end && !isMarkup());
    return textToken(begin, m_at, true);
}

/// The text of an element that has no others in it.
HtmlToken HtmlScanner::contentText()
{
    const char* const begin = m_at;
    m_at = const_cast<char*>(endOfContent());
    const bool hasReferences = m_content == Content::Text;
    if (m_content != Content::Plain) {
        m_content = Content::Markup;
    }
    return textToken(begin, m_at, hasReferences);
}

const char* HtmlScanner::endOfContent() const
{
    if (m_content == Content::Plain) {
        return m_end;
    }
    if (m_content == Content::Script) {
        return endOfScript();
    }
    const char* at = find(m_at, m_end, '<');
    while (at != m_end && !isEndTag(at, m_element)) {
        at = find(at + 1, m_end, '<');
    }
    return at;
}

bool HtmlScanner::isEndTag(const char* at, std::string_view name) const
{
    const std::string_view tag(at, size_t(m_end - at));
    const size_t size = name.size() + 2;
    return tag.size() > size && tag[1] == '/' && equalsLower(tag.substr(2, name.size()), name) &&
           (isBlank(tag[size]) || tag[size] == '/' || tag[size] == '>');
}

/// Whether a script begins here.
bool HtmlScanner::isScriptTag(const char* at) const
{
    constexpr std::string_view begin = "<script";
    const std::string_view tag(at, size_t(m_end - at));
    return tag.size() > begin.size() && beginsWith(tag, begin) &&
           (isBlank(tag[begin.size()]) || tag[begin.size()] == '/' || tag[begin.size()] == '>');
}

/// A comment in a script may hold scripts, with their ends.
const char* HtmlScanner::endOfScript() const
{
    bool isInComment = false;
    bool isInInner = false;
    for (const char* at = m_at; at != m_end; ++at) {
        const std::string_view rest(at, size_t(m_end - at));
        if (!isInComment && rest[0] != '<') {
            at = find(at, m_end, '<') - 1;
        } else if (isInComment && rest.starts_with("-->")) {
            isInComment = isInInner = false;
        } else if (rest[0] == '<' && isEndTag(at, "script")) {
            if (!isInInner) {
                return at;
            }
            isInInner = false;
        } else if (!isInComment && rest.starts_with("<!--")) {
            isInComment = true;
            at += 1; // its dashes may be those of its end
        } else if (isInComment && isScriptTag(at)) {
            isInInner = true;
        }
    }
    return m_end;
}

HtmlToken HtmlScanner::textToken(const char* begin, const char* end, bool hasReferences)
{
    HtmlToken token;
    token.kind = HtmlToken::Kind::Text;
    token.text = {begin, size_t(end - begin)};
    if (hasReferences && find(begin, end, '&') != end) {
        m_decoded.clear();
        appendDecoded(token.text, false, m_decoded);
        token.text = m_store.keep(m_decoded);
    }
    return token;
}

/// Reads what isMarkup(); false when there is no token in it.
bool HtmlScanner::readMarkup(HtmlToken& token)
{
    const char c = m_at[1];
    if (c == '!') {
        return readDeclaration(token);
    }
    if (c == '?' || (c == '/' && !isLetter(m_at[2]))) {
        skipPast(">");
        return false;
    }
    return readTag(token);
}

bool HtmlScanner::readDeclaration(HtmlToken& token)
{
    constexpr std::string_view section = "<![CDATA[";
    const std::string_view text = rest();
    if (text.starts_with("<!--")) {
        skipComment();
        return false;
    }
    if (m_knowsSections && text.starts_with(section)) {
        const size_t end = std::min(text.find("]]>", section.size()), text.size());
        token = textToken(m_at + section.size(), m_at + end, false);
        m_at += end;
        skipPast("]]>");
        return !token.text.empty();
    }
    const char* const begin = m_at;
    skipPast(">");
    token.kind = HtmlToken::Kind::Doctype;
    token.text = {begin, size_t(m_at - begin)};
    return beginsWith(token.text, "<!doctype");
}

void HtmlScanner::skipPast(std::string_view end)
{
    const std::string_view text = rest();
    m_at += std::min(text.size(), std::min(text.find(end), text.size()) + end.size());
}

void HtmlScanner::skipComment()
{
    m_at += std::string_view("<!--").size();
    if (rest().starts_with(">") || rest().starts_with("->")) {
        skipPast(">");
        return;
    }
    const char* at = find(m_at, m_end, '>');
    const auto isEnd = [this](const char* end) {
        return (end - m_at >= 2 && end[-1] == '-' && end[-2] == '-') ||
               (end - m_at >= 3 && end[-1] == '!' && end[-2] == '-' && end[-3] == '-');
    };
    while (at != m_end && !isEnd(at)) {
        at = find(at + 1, m_end, '>');
    }
    m_at = at == m_end ? m_end : const_cast<char*>(at + 1);
}

/// A tag that does not end before the page does is left out.
bool HtmlScanner::readTag(HtmlToken& token)
{
    token.kind = m_at[1] == '/' ? HtmlToken::Kind::End : HtmlToken::Kind::Start;
    m_at += token.kind == HtmlToken::Kind::End ? 2 : 1;
    token.name = readName("");
    token.tag = tagOf(token.name);
    if (!readAttributes(token)) {
        m_at = m_end;
        return false;
    }
    return true;
}

bool HtmlScanner::readAttributes(HtmlToken& token)
{
    HtmlAttribute* last = nullptr;
    m_attributes = 0;
    while (true) {
        skipBlanks();
        if (m_at == m_end) {
            return false;
        }
        if (*m_at == '>') {
            ++m_at;
            return true;
        }
        if (*m_at == '/') {
            ++m_at;
            token.isSelfClosing = m_at != m_end && *m_at == '>';
        } else if (!readAttribute(token, last)) {
            return false;
        }
    }
}

/// The first of several attributes of a name counts, and the first ones of absurdly many.
bool HtmlScanner::readAttribute(HtmlToken& token, HtmlAttribute*& last)
{
    const std::string_view name = readName("=");
    skipBlanks();
    std::string_view value;
    if (m_at != m_end && *m_at == '=') {
        ++m_at;
        skipBlanks();
        if (m_at == m_end) {
            return false;
        }
        value = readValue();
    }
    if (m_at == m_end) {
        return false;
    }
    const bool isKept = token.kind == HtmlToken::Kind::Start && m_attributes < MostAttributes;
    if (isKept && token.attribute(name) == nullptr) {
        ++m_attributes;
        auto& added = m_store.addAttribute();
        added.name = name;
        added.value = value;
        (last == nullptr ? token.attributes : last->next) = &added;
        last = &added;
    }
    return true;
}

std::string_view HtmlScanner::readValue()
{
    const char quote = *m_at;
    const bool isQuoted = quote == '"' || quote == '\'';
    m_at += isQuoted ? 1 : 0;
    const char* const begin = m_at;
    if (isQuoted) {
        m_at = const_cast<char*>(find(m_at, m_end, quote));
    } else {
        while (m_at != m_end && !isBlank(*m_at) && *m_at != '>') {
            ++m_at;
        }
    }
    const std::string_view value(begin, size_t(m_at - begin));
    m_at += isQuoted && m_at != m_end ? 1 : 0;
    if (value.find('&') == std::string_view::npos) {
        return value;
    }
    m_decoded.clear();
    appendDecoded(value, true, m_decoded);
    return m_store.keep(m_decoded);
}

/// Reads a name, whatever its first character, until a blank, "/", ">" or one of `ends`.
std::string_view HtmlScanner::readName(std::string_view ends)
{
    char* const begin = m_at;
    for (; m_at != m_end; ++m_at) {
        const char c = *m_at;
        if (isBlank(c) || c == '/' || c == '>' || (m_at != begin && ends.find(c) != std::string_view::npos)) {
            break;
        }
        *m_at = c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
    }
    return {begin, size_t(m_at - begin)};
}

void HtmlScanner::skipBlanks()
{
    while (m_at != m_end && isBlank(*m_at)) {
        ++m_at;
    }
}
