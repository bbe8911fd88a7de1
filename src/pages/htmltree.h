// SPDX-License-Identifier: MIT
#pragma once

#include <libxml/tree.h>

#include <QString>

#include <memory>
#include <string_view>

/// The elements of a page, as a forgiving HTML parser sees them. Texts are UTF-8; they live as long as the
/// tree.
class HtmlTree {
public:
    explicit HtmlTree(const QString& html);

    /// The html element; null when the page has no elements.
    [[nodiscard]] xmlNode* root() const;
    /// The first element of this name; null when there is none.
    [[nodiscard]] xmlNode* first(std::string_view name) const;

private:
    struct Free {
        void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
    };
    std::unique_ptr<xmlDoc, Free> m_document;
};

[[nodiscard]] inline bool isElement(const xmlNode& node)
{
    return node.type == XML_ELEMENT_NODE;
}

[[nodiscard]] bool isElement(const xmlNode& node, std::string_view name);

/// Whether the node is text; `<style>` and `<script>` keep theirs in nodes of another kind.
[[nodiscard]] inline bool isText(const xmlNode& node)
{
    return node.type == XML_TEXT_NODE;
}

/// In lower case; empty for text.
[[nodiscard]] std::string_view nameOf(const xmlNode& node);
[[nodiscard]] std::string_view contentOf(const xmlNode& node);
[[nodiscard]] bool hasAttribute(const xmlNode& node, const char* name);
/// Empty when the attribute is absent, too.
[[nodiscard]] std::string_view attribute(const xmlNode& node, const char* name);

/// The node after `node` in the order of the page; null at the end of `top`. `isDeep` tells whether to look
/// into `node` itself.
[[nodiscard]] const xmlNode* nextNode(const xmlNode* node, const xmlNode* top, bool isDeep = true);
[[nodiscard]] xmlNode* nextNode(xmlNode* node, const xmlNode* top, bool isDeep = true);

/// Calls `use` with each word of a list separated by blanks until it returns true; returns whether it did.
template <typename Use>
bool anyWord(std::string_view words, Use use)
{
    constexpr std::string_view blanks = " \t\n\r\f";
    size_t begin = words.find_first_not_of(blanks);
    while (begin != std::string_view::npos) {
        const size_t end = words.find_first_of(blanks, begin);
        if (use(words.substr(begin, end == std::string_view::npos ? end : end - begin))) {
            return true;
        }
        begin = words.find_first_not_of(blanks, end);
    }
    return false;
}

[[nodiscard]] bool isBlank(std::string_view text);

/// Equal but for the case of ASCII letters; `lower` is in lower case.
[[nodiscard]] bool equalsLower(std::string_view text, std::string_view lower);
