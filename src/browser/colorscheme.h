// SPDX-License-Identifier: MIT
#pragma once

class QPalette;

/// The colours of all windows.
enum class ColorScheme { Desktop, Light, Dark };

/// Colours of its own for a light or dark scheme; the toolkit's present ones for the desktop's.
[[nodiscard]] QPalette paletteOf(ColorScheme scheme);

/// Gives all windows these colours.
void applyColorScheme(ColorScheme scheme);
/// What was applied last; the desktop's at first.
[[nodiscard]] ColorScheme appliedColorScheme();
