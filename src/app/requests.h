// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

/// Serve an install, uninstall or query request for the contents file argv[2]: write its one line to standard
/// output and return the exit status.
[[nodiscard]] std::optional<int> serveInstall(int argc, char* argv[]);
[[nodiscard]] std::optional<int> serveUninstall(int argc, char* argv[]);
[[nodiscard]] std::optional<int> serveIsinstall(int argc, char* argv[]);
