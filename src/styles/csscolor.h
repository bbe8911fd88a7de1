// SPDX-License-Identifier: MIT
#pragma once

#include "styles/computedstyle.h"

#include <optional>
#include <string_view>

/// A colour as a style sheet writes it, in lower case; none when it is not understood, or transparent.
/// Colours that are half transparent are mixed with white.
[[nodiscard]] std::optional<Rgb> readColor(std::string_view value);

/// A colour by its hue, saturation and lightness, all from 0 to 1.
[[nodiscard]] Rgb fromHsl(double hue, double saturation, double lightness);
