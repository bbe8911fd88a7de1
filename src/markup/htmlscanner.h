// SPDX-License-Identifier: MIT
#pragma once

#include "markup/htmlnode.h"

#include <string>
#include <string_view>

class HtmlStore;

struct HtmlToken {
    enum class Kind { Text, Start, End, Doctype, PageEnd };

    Kind kind = Kind::PageEnd;
    Tag tag = Tag::Unknown; ///< of a start or an end
    std::string_view name;  ///< of a start or an end, in lower case
    std::string_view text;  ///< of a text, or all of a document type
    const HtmlAttribute* attributes = nullptr;
    bool isSelfClosing = false;

    /// Null when there is none of this name.
    [[nodiscard]] const HtmlAttribute* attribute(std::string_view wanted) const;
    [[nodiscard]] bool isText() const { return kind == Kind::Text; }
    [[nodiscard]] bool isStart(Tag wanted) const { return kind == Kind::Start && tag == wanted; }
    [[nodiscard]] bool isEnd(Tag wanted) const { return kind == Kind::End && tag == wanted; }
};

/// Cuts the text of a page into tags and texts, by the rules of HTML 5. Comments are left out. Names are put
/// into lower case where they stand; texts are parts of the page, or of the store where they had references
/// to characters.
class HtmlScanner {
public:
    /// What an element holds.
    enum class Content {
        Markup,
        Text,   ///< with references to characters, until its end
        Raw,    ///< until its end
        Script, ///< the same, but for scripts that write scripts
        Plain   ///< to the end of the page
    };

    /// The page is UTF-8 without carriage returns; it and the store must outlive all tokens.
    HtmlScanner(char* begin, size_t size, HtmlStore& store) : m_at(begin), m_end(begin + size), m_store(store)
    {
    }

    [[nodiscard]] HtmlToken next();
    /// What comes next is in an element of this name.
    void setContent(Content content, std::string_view element)
    {
        m_content = content;
        m_element = element;
    }
    /// Whether "<![CDATA[" begins a text.
    void setKnowsSections(bool isKnown) { m_knowsSections = isKnown; }

private:
    static constexpr int MostAttributes = 200; ///< of an element

    [[nodiscard]] std::string_view rest() const { return {m_at, size_t(m_end - m_at)}; }
    [[nodiscard]] bool isMarkup() const;
    [[nodiscard]] HtmlToken text();
    [[nodiscard]] HtmlToken contentText();
    [[nodiscard]] const char* endOfContent() const;
    [[nodiscard]] bool isEndTag(const char* at, std::string_view name) const;
    [[nodiscard]] bool isScriptTag(const char* at) const;
    [[nodiscard]] const char* endOfScript() const;
    [[nodiscard]] HtmlToken textToken(const char* begin, const char* end, bool hasReferences);
    bool readMarkup(HtmlToken& token);
    bool readDeclaration(HtmlToken& token);
    void skipPast(std::string_view end);
    void skipComment();
    bool readTag(HtmlToken& token);
    bool readAttributes(HtmlToken& token);
    bool readAttribute(HtmlToken& token, HtmlAttribute*& last);
    [[nodiscard]] std::string_view readValue();
    [[nodiscard]] std::string_view readName(std::string_view ends);
    void skipBlanks();

    char* m_at;
    char* m_end;
    HtmlStore& m_store;
    std::string m_decoded;
    std::string_view m_element;
    Content m_content = Content::Markup;
    bool m_knowsSections = false;
    int m_attributes = 0; ///< of the tag that is read
};
