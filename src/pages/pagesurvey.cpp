// SPDX-License-Identifier: MIT
#include "pages/pagesurvey.h"

#include "markup/htmltree.h"
#include "markup/tags.h"
#include "pages/browseraids.h"
#include "pages/furniture.h"
#include "styles/pagestyles.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace {

bool isMadeForBrowser(const HtmlNode& element)
{
    return isElement(element, Tag::Script) || isElement(element, Tag::Style) ||
           (isElement(element, Tag::Link) && anyWord(attribute(element, "rel"), [](std::string_view word) {
                return equalsLower(word, "stylesheet");
            }));
}

/// Elements whose headers and asides are theirs, not the page's.
bool isSection(const HtmlNode& element)
{
    switch (element.tag) {
    case Tag::Main:
    case Tag::Article:
    case Tag::Section:
    case Tag::Blockquote:
    case Tag::Figure:
    case Tag::Td:
    case Tag::Li:
    case Tag::Dd:
        return true;
    default:
        return attribute(element, "role") == "main";
    }
}

/// What is pressed or chosen counts like links: it does something, and says little.
bool isControl(const HtmlNode& element, Element kind)
{
    return kind == Element::Link || isElement(element, Tag::Button);
}

bool isSearchField(const HtmlNode& input)
{
    return equalsLower(attribute(input, "type"), "search") || attribute(input, "name") == "q" ||
           attribute(input, "placeholder").find("earch") != std::string_view::npos;
}

size_t letters(std::string_view text)
{
    return size_t(std::count_if(text.begin(), text.end(), [](char c) { return !isBlank(c); }));
}

} // namespace

PageSurvey::PageSurvey(HtmlNode& root, PageStyles& styles)
{
    std::vector<const HtmlNode*> elements;
    for (auto* node = &root; node != nullptr; node = nextNode(node, &root)) {
        if (isElement(*node)) {
            look(*node, styles);
            elements.push_back(node);
        } else {
            lookAtText(*node);
        }
    }
    // Backwards, so that an element comes after all that it holds.
    std::for_each(elements.crbegin(), elements.crend(),
                  [this](const HtmlNode* element) { conclude(*element); });
    useSubstitutes();
}

void PageSurvey::look(HtmlNode& element, PageStyles& styles)
{
    auto& notes = m_notes.emplace_back();
    const auto* outer = m_notes.size() > 1 ? element.parent->notes : nullptr;
    notes.element = elementOf(element);
    if (notes.element == Element::Summary &&
        !(outer != nullptr && isElement(*element.parent, Tag::Details))) {
        notes.element = Element::Block;
    }
    notes.role = roleOf(element);
    if (styles.hasSheets()) {
        notes.style = &styles.compute(element, outer == nullptr ? nullptr : outer->style);
    }
    const bool isChosen = outer != nullptr && outer->alternative == &element;
    notes.isHidden = isHiddenElement(element, notes) && !isChosen;
    notes.alternative = shownAlternative(element);
    notes.hasHeading = notes.element == Element::Heading;
    notes.hasPicture = notes.element == Element::Picture;
    notes.isInLink = notes.element == Element::Link || (outer != nullptr && outer->isInLink);
    notes.isInControl = isControl(element, notes.element) || (outer != nullptr && outer->isInControl);
    notes.links = notes.element == Element::Link ? 1 : 0;
    notes.siteLinks = notes.element == Element::Link && leadsThroughSite(element) ? 1 : 0;
    notes.asksForWords = notes.element == Element::Field && isSearchField(element);
    notes.isInHeading = notes.hasHeading || (outer != nullptr && outer->isInHeading);
    notes.hasHeadingBefore = m_hasHeading;
    notes.hasFreePicture = notes.hasPicture && !notes.isInControl;
    notes.isInSection = isSection(element) || (outer != nullptr && outer->isInSection);
    notes.textBefore = m_around.textBefore;
    m_isInBody = m_isInBody || isElement(element, Tag::Body);
    element.notes = &notes;
}

void PageSurvey::lookAtText(const HtmlNode& text)
{
    auto& parent = *text.parent->notes;
    if (isElement(*text.parent, Tag::Option)) {
        return; // what could be chosen says nothing of what there is
    }
    const size_t size = letters(text.content);
    (parent.isInControl ? parent.linkText : parent.text) += size;
    const bool isRead =
        m_isInBody && !parent.isInControl && !parent.isHidden && parent.element != Element::Ignored;
    m_around.textBefore += isRead ? size : 0;
    m_hasHeading = m_hasHeading || (isRead && size > 0 && parent.isInHeading);
}

void PageSurvey::conclude(const HtmlNode& element)
{
    auto& notes = *element.notes;
    m_around.textBefore = notes.textBefore;
    const bool isRoot = &notes == &m_notes.front();
    notes.isFurniture = !isRoot && isFurniture(element, notes, m_around);
    m_isWebPage = m_isWebPage || notes.isFurniture || isMadeForBrowser(element);
    if (isRoot || notes.isHidden || notes.element == Element::Ignored) {
        return;
    }
    if (isElement(element, Tag::Noscript)) {
        notes.isFurniture = true;
        m_substitutes.push_back(&element);
        return;
    }
    if (notes.isFurniture) {
        element.parent->notes->furnitureText += notes.text + notes.linkText + notes.furnitureText;
        return;
    }
    if (notes.element == Element::Heading && notes.hasContent()) {
        notes.hasTitle = isElement(element, Tag::H1) && notes.text > 0;
        m_around.hasHeadingBehind = true;
        m_around.hasTitleBehind = m_around.hasTitleBehind || notes.hasTitle;
    }
    handUp(element);
}

void PageSurvey::handUp(const HtmlNode& element)
{
    const auto& notes = *element.notes;
    auto& parent = *element.parent->notes;
    parent.text += notes.text;
    parent.linkText += notes.linkText;
    parent.links += notes.links;
    parent.siteLinks += notes.siteLinks;
    parent.asksForWords = parent.asksForWords || notes.asksForWords;
    parent.furnitureText += notes.furnitureText;
    parent.hasHeading = parent.hasHeading || notes.hasHeading;
    parent.hasTitle = parent.hasTitle || notes.hasTitle;
    parent.hasPicture = parent.hasPicture || notes.hasPicture;
    parent.hasFreePicture = parent.hasFreePicture || notes.hasFreePicture;
}

/// What a page says to browsers without scripts counts where it says nothing better.
void PageSurvey::useSubstitutes()
{
    constexpr size_t most = 100;
    size_t text = 0;
    for (const auto* substitute : m_substitutes) {
        text += substitute->notes->text + substitute->notes->linkText;
    }
    const auto& page = m_notes.front();
    if (m_substitutes.size() > most || text <= page.text + page.linkText) {
        return;
    }
    for (const auto* substitute : m_substitutes) {
        auto& notes = *substitute->notes;
        notes.isFurniture = false;
        for (auto* outer = substitute->parent; outer != nullptr; outer = outer->parent) {
            outer->notes->text += notes.text;
            outer->notes->linkText += notes.linkText;
            outer->notes->hasHeading = outer->notes->hasHeading || notes.hasHeading;
            outer->notes->hasPicture = outer->notes->hasPicture || notes.hasPicture;
        }
    }
}
