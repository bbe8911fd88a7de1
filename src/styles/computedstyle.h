// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

/// An opaque colour, 0xRRGGBB.
using Rgb = uint32_t;

/// What is handed down from an element to those in it.
struct InheritedStyle {
    bool isBold = false;
    bool isItalic = false;
    bool isFixedPitch = false;
    bool isUnderlined = false; ///< by this element or one around it, as is the next
    bool isStruckOut = false;
    bool isVisible = true;
    std::optional<Rgb> color; ///< of the text; none for the reader's
};

/// What an element looks like after all style sheets.
struct ComputedStyle : InheritedStyle {
    bool isDisplayed = true;
    bool isOutOfSight = false; ///< displayed, but cut off or far away
    bool isFixed = false;      ///< stays where it is while the page is scrolled

    [[nodiscard]] bool isHidden() const { return !isDisplayed || !isVisible || isOutOfSight; }
};
