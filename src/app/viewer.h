// SPDX-License-Identifier: MIT
#pragma once

/// Runs the viewer on the arguments of the command line; returns what the event loop ended with.
[[nodiscard]] int runViewer(int argc, char* argv[]);
