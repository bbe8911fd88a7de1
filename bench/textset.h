// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Writes a help set of pages with 3 KB of running text, the same for the same number, and returns its
/// contents file. Words come as often as in a natural language: few very often, most seldom. The word
/// "everywhere" is on every page, "tenth" on every tenth one, "once" on a single one.
QString writeTextSet(const QString& dir, int pages);
