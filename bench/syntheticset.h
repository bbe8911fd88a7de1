// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Size of a help set that is made for measuring.
struct SyntheticSize {
    int topics = 0;
    int keywords = 0;
};

/// Writes bench.cnt, its index file and the first pages into the directory; the same for the same arguments.
/// Returns the name of the contents file. Topics stand in books of twelve, three levels deep; every fifth
/// keyword is a sub-keyword, every tenth repeats an earlier one in another case.
QString writeSyntheticSet(const QString& dir, SyntheticSize size);

/// Colours of the start page: its ground, and a block that appears when the page is scrolled.
inline constexpr char StartColour[] = "#3a7d44";
inline constexpr char ScrolledColour[] = "#b5438a";
