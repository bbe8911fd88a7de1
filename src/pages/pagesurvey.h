// SPDX-License-Identifier: MIT
#pragma once

#include "pages/elementnotes.h"

#include <deque>
#include <vector>

class PageStyles;

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
    void lookAtText(const HtmlNode& text);
    void conclude(const HtmlNode& element);
    void handUp(const HtmlNode& element);
    void useSubstitutes();

    std::deque<ElementNotes> m_notes;
    std::vector<const HtmlNode*> m_substitutes; ///< for what a script would make
    Surroundings m_around;
    bool m_isInBody = false;
    bool m_hasHeading = false; ///< has met one
    bool m_isWebPage = false;
};
