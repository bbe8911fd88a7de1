// SPDX-License-Identifier: MIT
#pragma once

#include "styles/computedstyle.h"

/// Of text to what it stands on, so that everybody can read it.
inline constexpr double LeastContrast = 4.5;

/// Contrast ratio of two colours by their relative luminance, from 1 to 21.
[[nodiscard]] double contrast(Rgb a, Rgb b);

/// `color`, made lighter or darker, in its hue, until its contrast to `ground` is LeastContrast.
[[nodiscard]] Rgb readableOn(Rgb color, Rgb ground);

/// A ground of a page, the rest of which stands on `ofPage`, as it fits where the rest stands on `base`: a
/// pale one stays pale, and becomes dark on a dark base; a strong one stays as it is.
[[nodiscard]] Rgb groundOn(Rgb ground, Rgb ofPage, Rgb base);

/// How far a colour is from a grey, from 0 to 255.
[[nodiscard]] int chroma(Rgb color);
inline constexpr int LeastChroma = 48; ///< less is a grey
