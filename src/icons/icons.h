// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

// Icons compiled into the program. Every icon serves its nominal size and a
// pixmap of twice that size for screens with a device pixel ratio of 2.

/// The tool buttons that move between pages.
enum class GoIcon { Back, Forward, Up, Home, Sync };

/// Icon of a tool button, 16 x 16, with a grey image for the disabled state.
[[nodiscard]] QIcon goIcon(GoIcon which);

/// The rows of the contents tree.
enum class BookIcon { Close, Open, Item };

/// Icon of a row in the contents tree, 16 x 16.
[[nodiscard]] QIcon bookIcon(BookIcon which);

/// Icon of the program and its windows, 32 x 32.
[[nodiscard]] QIcon applicationIcon();
