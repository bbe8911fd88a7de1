// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagecontext.h"

#include <QString>

/// Rendering of a single page without a window. Both return why it failed, as a sentence; an empty text means
/// success.
namespace PageRendering {

/// On sheets of paper, as printing does it.
[[nodiscard]] QString toPdf(const QString& page, const QString& output, Presentation presentation);

/// As the page view shows it when it is `width` pixels wide; at most MaximumHeight pixels of it.
[[nodiscard]] QString toPng(const QString& page, const QString& output, int width, Presentation presentation);

inline constexpr int MaximumHeight = 30000;
inline constexpr int MaximumWidth = 10000;

} // namespace PageRendering
