// SPDX-License-Identifier: MIT
#pragma once

/// Serves "--search WORDS [--limit N] [--json] [FILE.cnt ...]" and "--index FILE.cnt ..."; needs no display.
/// Without files the installed help sets are searched. Returns the exit status: 1 when nothing was found; 2,
/// with a line on standard error, for wrong arguments and files that cannot be read.
[[nodiscard]] int searchHelpSets(int argc, char* argv[]);
[[nodiscard]] int indexHelpSets(int argc, char* argv[]);
