// SPDX-License-Identifier: MIT
#include "pages/furniture.h"

#include "markup/htmltree.h"
#include "markup/tags.h"
#include "pages/browseraids.h"
#include "pages/elementnotes.h"
#include "styles/computedstyle.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace {

constexpr size_t ShortText = 40; // bytes: what generated a page, when
constexpr size_t SiteText = 60;  // bytes: the name of a site, and what it is for
constexpr size_t ManyLinks = 3;  // beside a picture
constexpr size_t FewWords = 30;  // bytes: what stands beside the fields of a form

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

bool hasClassWith(const HtmlNode& element, std::string_view part)
{
    return attribute(element, "class").find(part) != std::string_view::npos;
}

/// Whether a field before the element shows it when it is ticked.
bool isOpenedByField(const HtmlNode& element)
{
    constexpr int farthest = 200; // nodes
    int passed = 0;
    const auto* before = element.previous;
    while (before != nullptr && !isElement(*before, Tag::Input)) {
        before = ++passed < farthest ? before->previous : nullptr;
    }
    const auto type = before == nullptr ? std::string_view() : attribute(*before, "type");
    return equalsLower(type, "checkbox") || equalsLower(type, "radio");
}

bool isOpenedByScript(const HtmlNode& element)
{
    static constexpr std::array<std::string_view, 8> marks{"dyn",       "collaps", "toggle", "tab",
                                                           "accordion", "expand",  "panel",  "fold"};
    return std::any_of(marks.begin(), marks.end(),
                       [&](std::string_view mark) { return hasClassWith(element, mark); }) ||
           attribute(element, "role") == "tabpanel" || attribute(element, "hidden") == "until-found";
}

/// What stands above the page's first words: the site's name, its parts, a form for searching, an outline of
/// the page. A heading follows, and one of the first rank if there is any in the element itself.
bool isAboveTitle(const ElementNotes& notes, const Surroundings& around)
{
    const bool hasFigure = notes.hasFreePicture && notes.links < ManyLinks;
    const bool isLogo =
        notes.element == Element::Paragraph && notes.hasPicture && notes.text + notes.linkText == 0;
    const bool isStructure = notes.isStructure() || isLogo;
    const bool isFirst =
        !notes.hasHeadingBefore && around.textBefore <= SiteText && !hasFigure && isStructure;
    const bool hasTitle =
        notes.hasHeading ? around.hasTitleBehind && !notes.hasTitle : around.hasHeadingBehind;
    const size_t links = notes.linkText + notes.furnitureText;
    const bool isNavigation =
        (links > 0 || isLogo) && (notes.text <= links || (notes.text <= SiteText && notes.links > 1));
    return isFirst && hasTitle && isNavigation;
}

/// The viewer searches by itself.
bool isSearchForm(const HtmlNode& element, const ElementNotes& notes)
{
    const bool isForm = isElement(element, Tag::Form) || isElement(element, Tag::Search) ||
                        attribute(element, "role") == "search";
    static constexpr std::array<std::string_view, 4> names{"action", "class", "id", "role"};
    const bool isNamed = std::any_of(names.begin(), names.end(), [&element](std::string_view name) {
        return attribute(element, name).find("earch") != std::string_view::npos;
    });
    return isForm && (isNamed || notes.asksForWords || isElement(element, Tag::Search)) &&
           !notes.hasHeading && !notes.hasPicture && notes.text + notes.linkText <= FewWords;
}

bool isLandmarkOfSite(const HtmlNode& element, const ElementNotes& notes)
{
    static constexpr std::array<std::string_view, 4> roles{"navigation", "search", "banner", "complementary"};
    const bool isOfPage =
        !notes.isInSection && (isElement(element, Tag::Header) || isElement(element, Tag::Aside));
    return isOfPage || isOneOf(attribute(element, "role"), roles);
}

} // namespace

bool isFurniture(const HtmlNode& element, const ElementNotes& notes, const Surroundings& around)
{
    if (isElement(element, Tag::Nav)) {
        return !isLocalContents(element);
    }
    const bool isFooter = notes.role == Role::Footer || isElement(element, Tag::Footer) ||
                          attribute(element, "role") == "contentinfo";
    const bool isShort = !notes.hasHeading && !notes.hasPicture && notes.text <= ShortText;
    const bool isFixed = notes.style != nullptr && notes.style->isFixed;
    const bool isSite = isLandmarkOfSite(element, notes);
    const bool isProbable = isFixed || isSite || notes.role == Role::ProbableFurniture;
    return notes.role == Role::Furniture ||
           ((isFooter || (isSite && !notes.hasHeadingBefore)) && isShort && !notes.hasTitle) ||
           ((isFooter || isProbable) && notes.isMostlyLinks()) || isSearchForm(element, notes) ||
           isAboveTitle(notes, around) || isBrowserAid(element, notes, around);
}

bool isHiddenElement(const HtmlNode& element, const ElementNotes& notes)
{
    const bool isHiddenByStyle = notes.style == nullptr ? isSwitchedOff(element) : notes.style->isHidden();
    const bool isClosed = isElement(element, Tag::Dialog) && !hasAttribute(element, "open");
    const bool isHidden = notes.role == Role::Hidden || hasAttribute(element, "hidden") || isHiddenByStyle ||
                          isClosed || attribute(element, "aria-hidden") == "true";
    return isHidden && !isOpenedByScript(element) && !isOpenedByField(element);
}

const HtmlNode* shownAlternative(const HtmlNode& element)
{
    const auto rank = [](const HtmlNode& child) {
        static constexpr std::array<std::string_view, 5> systems{"linux", "unix", "x11", "gtk", "gnome"};
        const auto names = attribute(child, "class");
        const bool isHere = anyWord(names, [](std::string_view word) {
            return std::any_of(systems.begin(), systems.end(),
                               [word](std::string_view system) { return equalsLower(word, system); });
        });
        const bool isDefault = names.find("default") != std::string_view::npos ||
                               attribute(child, "id").find("default") != std::string_view::npos;
        return isHere ? 2 : isDefault ? 1 : 0;
    };
    const HtmlNode* found = nullptr;
    int count = 0;
    for (const auto* child = element.firstChild; child != nullptr; child = child->next) {
        if (isText(*child) ? !isBlank(child->content) : !hasAttribute(*child, "hidden")) {
            return nullptr;
        }
        if (isElement(*child)) {
            found = found == nullptr || rank(*child) > rank(*found) ? child : found;
            ++count;
        }
    }
    return count > 1 ? found : nullptr;
}
