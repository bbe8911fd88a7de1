// SPDX-License-Identifier: MIT
#pragma once

#include "styles/computedstyle.h"

#include <optional>
#include <string_view>

inline constexpr double FontSize = 16; ///< pixels, of a browser's page

// Values are in lower case; `em` is the size of the font in pixels. Of a calculated sum of pixels and per
// cent the share counts, as it is not known of what.

/// A length, "50%", "2fr" or "auto", or what `calc(…)` comes to; "auto" when it makes no sense.
[[nodiscard]] StyleLength readStyleLength(std::string_view value, double em);
/// A length in pixels of a screen. None when it is no length, or in percent.
[[nodiscard]] std::optional<double> readLength(std::string_view value, double em);
/// The same in pixels, where the page is so wide.
[[nodiscard]] std::optional<float> readPixels(std::string_view value, double em, double width);
