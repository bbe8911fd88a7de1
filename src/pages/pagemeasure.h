// SPDX-License-Identifier: MIT
#pragma once

#include "styles/computedstyle.h"

#include <array>
#include <cstddef>
#include <optional>

struct HtmlNode;

/// What the looks of a page are measured by: what most of its text looks like, and how deep its headings go.
struct PageMeasure {
    /// For a surveyed page with style sheets, whose content is to be shown.
    PageMeasure(const HtmlNode& body, const HtmlNode& content);

    float bodySize = 16;        ///< of the font of most text, in the pixels of the sheets
    bool isFixedPitch = false;  ///< most text is
    Rgb ground = 0xFFFFFF;      ///< behind it
    std::optional<Rgb> text;    ///< its colour
    size_t letters = 0;         ///< bytes of it without blanks
    std::array<int, 7> ranks{}; ///< of the levels of headings, from 0 for the highest that there is
    int rankCount = 0;

    /// The class of the size of a heading of a level.
    [[nodiscard]] const char* headingSize(int level, const ComputedStyle& style) const;
};
