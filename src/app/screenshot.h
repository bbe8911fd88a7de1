// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

/// Draws the window that the viewer would show for argv[3] … into the PNG file argv[2] and says on standard
/// output what was loaded. Needs no display. Returns the exit status: 1 when the picture could not be
/// written; nothing when no picture is named.
[[nodiscard]] std::optional<int> takeScreenshot(int argc, char* argv[]);
