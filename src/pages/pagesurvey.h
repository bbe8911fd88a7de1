// SPDX-License-Identifier: MIT
#pragma once

#include "pages/elementroles.h"

#include <cstddef>
#include <deque>

class PageStyles;
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
    const ComputedStyle* style = nullptr; ///< null when the page has no style sheets
    // What there is to read in it, without hidden parts and furniture.
    bool hasHeading = false;
    bool hasPicture = false;
    size_t text = 0;     ///< bytes outside of links, without blanks
    size_t linkText = 0; ///< bytes inside of links, without blanks

    [[nodiscard]] bool hasContent() const { return text + linkText > 0 || hasPicture; }
    [[nodiscard]] bool isMostlyLinks() const { return !hasHeading && text <= linkText; }
};

/// Looks at all elements of a page once, in time proportional to their number.
class PageSurvey {
public:
    /// Notes are attached to the elements below `root`, which must not outlive the survey.
    /// The looks that `styles` has for them are noted, too, and must outlive the survey.
    PageSurvey(HtmlNode& root, PageStyles& styles);

    /// Whether the page was made for a web browser: it has style sheets, scripts, navigation or furniture.
    [[nodiscard]] bool isWebPage() const { return m_isWebPage; }

private:
    void look(HtmlNode& element, PageStyles& styles);
    void conclude(const HtmlNode& element);

    std::deque<ElementNotes> m_notes;
    bool m_isWebPage = false;
};

/// Notes of an element that was surveyed.
[[nodiscard]] const ElementNotes& notesOf(const HtmlNode& element);
