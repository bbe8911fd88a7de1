// SPDX-License-Identifier: MIT
#pragma once

#include "markup/tag.h"

#include <cstddef>
#include <string_view>

struct ElementNotes;

struct HtmlAttribute {
    std::string_view name; ///< in lower case
    std::string_view value;
    const HtmlAttribute* next = nullptr;
};

/// An element or a piece of text of a page. All texts are UTF-8 and live as long as the tree.
struct HtmlNode {
    std::string_view name;    ///< in lower case; empty for text
    std::string_view content; ///< of text
    const HtmlAttribute* attributes = nullptr;
    HtmlNode* parent = nullptr;
    HtmlNode* previous = nullptr;
    HtmlNode* next = nullptr;
    HtmlNode* firstChild = nullptr;
    HtmlNode* lastChild = nullptr;
    ElementNotes* notes = nullptr; ///< for PageSurvey
    Tag tag = Tag::Text;
    bool isFormula = false; ///< of a formula, and so of the kinds for foreign elements
};

[[nodiscard]] inline bool isElement(const HtmlNode& node)
{
    return !node.name.empty();
}

[[nodiscard]] inline bool isElement(const HtmlNode& node, std::string_view name)
{
    return node.name == name;
}

[[nodiscard]] inline bool isElement(const HtmlNode& node, Tag tag)
{
    return node.tag == tag;
}

[[nodiscard]] inline bool isText(const HtmlNode& node)
{
    return node.name.empty();
}

[[nodiscard]] bool hasAttribute(const HtmlNode& node, std::string_view name);
/// Empty when the attribute is absent, too.
[[nodiscard]] std::string_view attribute(const HtmlNode& node, std::string_view name);

/// The node after `node` in the order of the page; null at the end of `top`. `isDeep` tells whether to look
/// into `node` itself.
template <typename Node>
[[nodiscard]] Node* nextNode(Node* node, const HtmlNode* top, bool isDeep = true)
{
    if (isDeep && node->firstChild != nullptr) {
        return node->firstChild;
    }
    while (node != top && node->next == nullptr) {
        node = node->parent;
    }
    return node == top ? nullptr : node->next;
}

[[nodiscard]] constexpr bool isBlank(char c)
{
    return c == ' ' || c == '\n' || c == '\t' || c == '\r' || c == '\f';
}

/// The position of the next character that is a blank, or is none; the text's size when there is no more.
[[nodiscard]] constexpr size_t nextBlank(std::string_view text, size_t from)
{
    while (from < text.size() && !isBlank(text[from])) {
        ++from;
    }
    return from;
}
[[nodiscard]] constexpr size_t nextNonBlank(std::string_view text, size_t from)
{
    while (from < text.size() && isBlank(text[from])) {
        ++from;
    }
    return from;
}

[[nodiscard]] constexpr bool isBlank(std::string_view text)
{
    return nextNonBlank(text, 0) == text.size();
}

/// Visits an element and what is in it, in the order of the page: `enter` says whether to go into a node,
/// `leave` gets each node that was gone into when all in it has been visited.
template <typename Enter, typename Leave>
void walk(const HtmlNode& top, Enter enter, Leave leave)
{
    const HtmlNode* node = &top;
    while (node != nullptr) {
        const bool isEntered = enter(*node);
        if (isEntered && node->firstChild != nullptr) {
            node = node->firstChild;
            continue;
        }
        if (isEntered) {
            leave(*node);
        }
        while (node != &top && node->next == nullptr) {
            node = node->parent;
            leave(*node);
        }
        node = node == &top ? nullptr : node->next;
    }
}

/// Calls `use` with each word of a list separated by blanks until it returns true; returns whether it did.
template <typename Use>
bool anyWord(std::string_view words, Use use)
{
    for (size_t begin = nextNonBlank(words, 0); begin < words.size();) {
        const size_t end = nextBlank(words, begin);
        if (use(words.substr(begin, end - begin))) {
            return true;
        }
        begin = nextNonBlank(words, end);
    }
    return false;
}

/// Equal but for the case of ASCII letters; `lower` is in lower case.
[[nodiscard]] bool equalsLower(std::string_view text, std::string_view lower);
