// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

/// Serves "--search WORDS [--limit N] [--json] [--typing] [--in TITLE | FILE.cnt ...]" and "--index FILE.cnt
/// ..."; needs no display. Without files the installed help sets are searched. Returns the exit status: 1
/// when nothing was found; 2, with a line on standard error, for files that cannot be read; nothing for wrong
/// arguments.
[[nodiscard]] std::optional<int> searchHelpSets(int argc, char* argv[]);
[[nodiscard]] std::optional<int> indexHelpSets(int argc, char* argv[]);
