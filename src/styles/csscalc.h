// SPDX-License-Identifier: MIT
#pragma once

#include "styles/computedstyle.h"

#include <optional>
#include <string_view>

/// What `calc(…)` comes to, in lower case; `em` is the size of the font in pixels. Of a sum of pixels and per
/// cent the share, as it is not known of what. None when it is no calculation, or one that makes no sense.
[[nodiscard]] std::optional<StyleLength> readCalculation(std::string_view value, double em);
