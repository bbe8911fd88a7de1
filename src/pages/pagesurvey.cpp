// SPDX-License-Identifier: MIT
#include "pages/pagesurvey.h"

#include "markup/htmltree.h"
#include "markup/tags.h"
#include "styles/pagestyles.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr size_t ShortText = 40; // bytes: what generated a page, when

/// A table of contents within the page's text is the author's own.
bool isLocalContents(const HtmlNode& nav)
{
    return anyWord(attribute(nav, "class"),
                   [](std::string_view word) { return word == "contents" || word == "toc"; });
}

/// Whether the element's own style says that it is not shown.
bool isSwitchedOff(const HtmlNode& element)
{
    const auto written = attribute(element, "style");
    if (written.empty()) {
        return false;
    }
    std::string style;
    std::copy_if(written.begin(), written.end(), std::back_inserter(style),
                 [](char c) { return !isBlank(c); });
    return style.find("display:none") != std::string::npos ||
           style.find("visibility:hidden") != std::string::npos;
}

bool isOpenedByScript(const HtmlNode& element)
{
    static constexpr std::array<std::string_view, 8> marks{"dyn",       "collaps", "toggle", "tab",
                                                           "accordion", "expand",  "panel",  "fold"};
    const auto classes = attribute(element, "class");
    return std::any_of(marks.begin(), marks.end(),
                       [&](std::string_view mark) { return classes.find(mark) != std::string_view::npos; });
}

bool isHidden(const HtmlNode& element, const ElementNotes& notes)
{
    const bool isHiddenByStyle = notes.style == nullptr ? isSwitchedOff(element) : notes.style->isHidden();
    return (notes.role == Role::Hidden || hasAttribute(element, "hidden") ||
            attribute(element, "aria-hidden") == "true" || isHiddenByStyle) &&
           !isOpenedByScript(element);
}

bool isFurniture(const HtmlNode& element, const ElementNotes& notes)
{
    static constexpr std::array<std::string_view, 3> siteRoles{"navigation", "search", "banner"};
    const auto name = element.name;
    if (name == "nav") {
        return !isLocalContents(element);
    }
    const auto role = attribute(element, "role");
    const bool isFooter = notes.role == Role::Footer || name == "footer" || role == "contentinfo";
    const bool isShort = !notes.hasHeading && notes.text <= ShortText;
    const bool isFixed = notes.style != nullptr && notes.style->isFixed;
    const bool isProbable = isFixed || notes.role == Role::ProbableFurniture || isOneOf(role, siteRoles);
    return notes.role == Role::Furniture || (isFooter && (isShort || notes.isMostlyLinks())) ||
           (isProbable && notes.isMostlyLinks());
}

bool isMadeForBrowser(const HtmlNode& element)
{
    const auto name = element.name;
    return name == "script" || name == "style" ||
           (name == "link" && anyWord(attribute(element, "rel"),
                                      [](std::string_view word) { return equalsLower(word, "stylesheet"); }));
}

size_t letters(std::string_view text)
{
    return size_t(std::count_if(text.begin(), text.end(), [](char c) { return !isBlank(c); }));
}

} // namespace

const ElementNotes& notesOf(const HtmlNode& element)
{
    return *element.notes;
}

PageSurvey::PageSurvey(HtmlNode& root, PageStyles& styles)
{
    std::vector<const HtmlNode*> elements;
    for (auto* node = &root; node != nullptr; node = nextNode(node, &root)) {
        if (isElement(*node)) {
            look(*node, styles);
            elements.push_back(node);
        } else if (isText(*node)) {
            auto& parent = *node->parent->notes;
            (parent.isInLink ? parent.linkText : parent.text) += letters(node->content);
        }
    }
    // Backwards, so that an element comes after all that it holds.
    std::for_each(elements.crbegin(), elements.crend(),
                  [this](const HtmlNode* element) { conclude(*element); });
}

void PageSurvey::look(HtmlNode& element, PageStyles& styles)
{
    auto& notes = m_notes.emplace_back();
    notes.element = elementOf(element);
    notes.role = roleOf(element);
    const bool isInner = m_notes.size() > 1;
    if (styles.hasSheets()) {
        notes.style = &styles.compute(element, isInner ? notesOf(*element.parent).style : nullptr);
    }
    notes.isHidden = isHidden(element, notes);
    notes.hasHeading = notes.element == Element::Heading;
    notes.hasPicture = notes.element == Element::Picture;
    notes.isInLink = notes.element == Element::Link || (isInner && notesOf(*element.parent).isInLink);
    element.notes = &notes;
}

void PageSurvey::conclude(const HtmlNode& element)
{
    auto& notes = *element.notes;
    notes.isFurniture = isFurniture(element, notes);
    m_isWebPage = m_isWebPage || notes.isFurniture || isMadeForBrowser(element);
    const bool isRoot = &notes == &m_notes.front();
    if (isRoot || notes.isHidden || notes.isFurniture || notes.element == Element::Ignored) {
        return;
    }
    auto& parent = *element.parent->notes;
    parent.text += notes.text;
    parent.linkText += notes.linkText;
    parent.hasHeading = parent.hasHeading || notes.hasHeading;
    parent.hasPicture = parent.hasPicture || notes.hasPicture;
}
