// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

/// Loads the contents files argv[2] … as the viewer would and writes what they hold to standard output as one
/// JSON object. Returns the exit status: 1 when a named file is missing or unreadable, or when not everything
/// could be written; nothing when no file is named.
[[nodiscard]] std::optional<int> dumpHelpSets(int argc, char* argv[]);
