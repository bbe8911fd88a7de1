// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

/// Serves an install, uninstall or query request: writes its one line to standard output and returns the exit
/// status. Nothing when the arguments are no such request.
[[nodiscard]] std::optional<int> serveRequest(int argc, char* argv[]);
