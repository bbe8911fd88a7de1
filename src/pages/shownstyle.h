// SPDX-License-Identifier: MIT
#pragma once

#include "styles/computedstyle.h"

#include <optional>
#include <string>
#include <string_view>

/// How rich text shows the text in the elements that are written.
struct ShownStyle {
    bool isBold = false;
    bool isItalic = false;
    bool isFixedPitch = false;
    bool isUnderlined = false;
    bool isStruckOut = false;
    bool isRaised = false;    ///< or lowered
    bool keepsWeight = false; ///< a heading's
};

/// What `outer` becomes within the tags of `markup`, all of which are begun.
[[nodiscard]] ShownStyle shownWithin(ShownStyle outer, std::string_view markup);

/// How a text is to look.
struct WantedLook {
    const ComputedStyle* style = nullptr;
    std::string_view size;     ///< such as "large"; empty for that around it
    std::optional<Rgb> color;  ///< as it is shown
    std::optional<Rgb> ground; ///< the same, behind this text only
    bool isInLink = false;
    bool keepsPitch = false; ///< not to be shown in fixed pitch
};

/// The tags of elements that make text look as wanted where it is shown otherwise; empty when it is not.
[[nodiscard]] std::string styleTags(const ShownStyle& shown, const WantedLook& wanted);
/// What ends them.
[[nodiscard]] std::string styleEnds(std::string_view tags);

/// A size relative to that of the body's text, as rich text knows it, such as "large"; empty for the same
/// size.
[[nodiscard]] std::string_view sizeName(float ratio);
