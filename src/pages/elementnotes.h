// SPDX-License-Identifier: MIT
#pragma once

#include "markup/htmlnode.h"
#include "pages/elementroles.h"

#include <cstddef>

struct ComputedStyle;

/// What is known of an element after a look at all of its page.
struct ElementNotes {
    Element element = Element::Transparent;
    Role role = Role::None;
    /// A web browser would not show it. Parts that a script opens and closes are not hidden: without scripts
    /// nobody could open them.
    bool isHidden = false;
    /// It belongs to the web site that the page was made for and not to what the page says: navigation,
    /// search boxes, marks for permanent links, numbers of code lines.
    bool isFurniture = false;
    bool isInLink = false;
    bool isInControl = false;              ///< a link, or what else is pressed or chosen
    bool isInSection = false;              ///< of the page, such as an article
    const ComputedStyle* style = nullptr;  ///< null when the page has no style sheets
    const HtmlNode* alternative = nullptr; ///< of its hidden parts the one that is shown
    bool isInHeading = false;
    bool hasHeadingBefore = false; ///< in the page, and more than a link
    size_t textBefore = 0;         ///< bytes outside of links before it in the page, without blanks
    // What there is to read in it, without hidden parts and furniture.
    bool hasHeading = false;
    bool hasTitle = false; ///< a heading of the first rank that is more than a link
    bool hasPicture = false;
    bool hasFreePicture = false; ///< one that is not in a link
    size_t text = 0;             ///< bytes outside of links, without blanks
    size_t linkText = 0;         ///< bytes inside of links and other controls, without blanks
    size_t links = 0;
    size_t siteLinks = 0;      ///< to the page before or behind, or one above
    bool asksForWords = false; ///< to search for
    size_t furnitureText = 0;  ///< bytes in furniture

    [[nodiscard]] bool isContainer() const
    {
        return element == Element::Block || element == Element::Table || element == Element::Row ||
               element == Element::Cell;
    }
    /// Whether it gives its content a shape, and is no paragraph.
    [[nodiscard]] bool isStructure() const { return isContainer() || element == Element::List; }
    [[nodiscard]] bool hasContent() const { return text + linkText > 0 || hasPicture; }
    [[nodiscard]] bool isMostlyLinks() const { return !hasHeading && text <= linkText; }
};

/// What is known of the parts of a page around an element that has been looked at.
struct Surroundings {
    size_t textBefore = 0;         ///< bytes outside of links
    bool hasHeadingBehind = false; ///< of any rank, visible and with content
    bool hasTitleBehind = false;   ///< such of the first rank
};

/// Notes of an element that was surveyed.
[[nodiscard]] inline const ElementNotes& notesOf(const HtmlNode& element)
{
    return *element.notes;
}
