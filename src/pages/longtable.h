// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

struct HtmlNode;

/// Widths of a long table's columns in percent, by the lengths of what is in them: the parts that it is
/// divided into all get these, and so look like one table. Empty for a table that is short, or whose cells
/// reach over several rows.
[[nodiscard]] std::vector<int> columnPercents(const HtmlNode& table);
