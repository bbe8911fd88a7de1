// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

/// Serves "--pdf OUT.pdf PAGE.html" and "--png OUT.png [--width W] PAGE.html"; needs no display. Returns the
/// exit status: 1, with a line on standard error, when the page or the output cannot be read or written;
/// nothing for wrong arguments.
[[nodiscard]] std::optional<int> renderPage(int argc, char* argv[]);
