// SPDX-License-Identifier: MIT
#pragma once

/// Does what the command line says, which is an option of the program or help sets for the viewer; returns
/// the exit status.
[[nodiscard]] int serveCommandLine(int argc, char* argv[]);
