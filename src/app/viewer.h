// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

/// Runs the viewer on the arguments of the command line; returns what the event loop ended with.
[[nodiscard]] std::optional<int> runViewer(int argc, char* argv[]);
