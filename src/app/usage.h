// SPDX-License-Identifier: MIT
#pragma once

/// Writes the help text, respectively the version, to standard output.
void printUsage();
void printVersion();
