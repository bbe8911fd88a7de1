// SPDX-License-Identifier: MIT
#pragma once

#include "styles/computedstyle.h"

#include <functional>
#include <string>
#include <string_view>

/// How rich text shows the text in the elements that are written.
struct ShownStyle {
    bool isBold = false;
    bool isItalic = false;
    bool isFixedPitch = false;
    bool isUnderlined = false;
    bool isStruckOut = false;
    bool keepsLook = false; ///< a heading, or marked by what it means: nothing is taken back
};

/// What `outer` becomes within the tags of `markup`, all of which are begun.
[[nodiscard]] ShownStyle shownWithin(ShownStyle outer, std::string_view markup);

/// The tag of an element that makes text look as wanted where it is shown otherwise; empty when it is not.
/// `ink` makes a page's colour readable where it is shown.
[[nodiscard]] std::string styleSpan(const ShownStyle& shown, const ComputedStyle& wanted,
                                    const ComputedStyle& ofPage, bool isInLink,
                                    const std::function<Rgb(Rgb)>& ink);

/// Whether an element's colour means something: it is one, and not that of the page.
[[nodiscard]] bool hasMeaningfulColor(const ComputedStyle& style, const ComputedStyle& ofPage);
