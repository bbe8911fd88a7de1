// SPDX-License-Identifier: MIT
#include "pages/maincontent.h"

#include "markup/htmltree.h"
#include "pages/elementnotes.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

bool isLandmark(const HtmlNode& element)
{
    return isElement(element, "main") || attribute(element, "role") == "main";
}

bool isKnownContainer(const HtmlNode& element)
{
    static constexpr std::array<std::string_view, 5> ids{"doc-content", "main-content", "mw-content-text",
                                                         "bodyContent", "content-wrapper"};
    const auto id = attribute(element, "id");
    return notesOf(element).role == Role::MainContent || std::find(ids.begin(), ids.end(), id) != ids.end();
}

/// The first visible element with content that `test` accepts.
template <typename Test>
const HtmlNode* findFirst(const HtmlNode& body, Test test)
{
    const auto* node = &body;
    while (node != nullptr) {
        const bool isSeen = isElement(*node) && !notesOf(*node).isHidden;
        if (isSeen && test(*node) && notesOf(*node).hasContent()) {
            return node;
        }
        node = nextNode(node, &body, isSeen);
    }
    return nullptr;
}

/// Null when there are several: a list of articles has its content around them, too.
const HtmlNode* onlyArticle(const HtmlNode& body)
{
    const auto isArticle = [](const HtmlNode& element) { return isElement(element, "article"); };
    const auto* found = findFirst(body, isArticle);
    if (found == nullptr) {
        return nullptr;
    }
    for (const auto* node = nextNode(found, &body, false); node != nullptr; node = nextNode(node, &body)) {
        if (isArticle(*node)) {
            return nullptr;
        }
    }
    return found;
}

/// The title of a page often stands in front of what else there is to read.
const HtmlNode* withTitle(const HtmlNode* found)
{
    const auto isTitle = [](const HtmlNode& node) {
        return isElement(node, "h1") && !notesOf(node).isHidden && notesOf(node).hasContent();
    };
    for (const auto* node = found; node != nullptr; node = nextNode(node, found)) {
        if (isTitle(*node)) {
            return found;
        }
    }
    const auto* before = found->previous;
    while (before != nullptr && !isTitle(*before)) {
        before = before->previous;
    }
    return before == nullptr ? found : found->parent;
}

bool isGeneratedDocument(const HtmlNode& body)
{
    for (const auto* child = body.firstChild; child != nullptr; child = child->next) {
        if (isElement(*child, "div") && notesOf(*child).role == Role::Document) {
            return true;
        }
    }
    return false;
}

/// Whether nothing is lost without the element: a paragraph is never mere navigation.
bool isDispensable(const ElementNotes& notes)
{
    return notes.isHidden || notes.isFurniture || notes.element == Element::Ignored || !notes.hasContent() ||
           (notes.isStructure() && !notes.hasPicture && notes.isMostlyLinks());
}

/// The child that holds all that is to be read, when the others hold mere navigation.
const HtmlNode* onlyMatter(const HtmlNode& parent)
{
    const HtmlNode* found = nullptr;
    for (const auto* child = parent.firstChild; child != nullptr; child = child->next) {
        if (isText(*child) && !isBlank(child->content)) {
            return nullptr;
        }
        if (!isElement(*child) || isDispensable(notesOf(*child))) {
            continue;
        }
        if (found != nullptr) {
            return nullptr;
        }
        found = child;
    }
    return found;
}

/// Elements that are there for a table's structure only.
bool isTransparent(const HtmlNode& element)
{
    static constexpr std::array<std::string_view, 3> names{"tbody", "thead", "font"};
    return std::find(names.begin(), names.end(), element.name) != names.end();
}

/// The innermost division or cell that holds all that is to be read. A page of one table is no such case.
const HtmlNode* densest(const HtmlNode& body)
{
    const auto* found = &body;
    for (const auto* inner = onlyMatter(body);
         inner != nullptr && (notesOf(*inner).isContainer() || isTransparent(*inner));
         inner = onlyMatter(*inner)) {
        const Element kind = notesOf(*inner).element;
        found = kind == Element::Block || kind == Element::Cell ? inner : found;
    }
    return found;
}

} // namespace

MainContent findMainContent(const HtmlNode& body)
{
    if (const auto* found = findFirst(body, isLandmark)) {
        return {withTitle(found), ContentFoundBy::Landmark};
    }
    if (const auto* found = findFirst(body, isKnownContainer)) {
        return {withTitle(found), ContentFoundBy::Generator};
    }
    if (const auto* found = onlyArticle(body)) {
        return {found, ContentFoundBy::Landmark};
    }
    if (isGeneratedDocument(body)) {
        return {&body, ContentFoundBy::Generator};
    }
    const auto* found = densest(body);
    return {found, found == &body ? ContentFoundBy::WholePage : ContentFoundBy::Density};
}
