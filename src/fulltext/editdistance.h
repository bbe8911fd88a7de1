// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

/// How many letters are to be added, dropped, replaced or exchanged with their neighbour to make one word of
/// the other; some number above `most` when they are more.
[[nodiscard]] int editDistance(std::string_view a, std::string_view b, int most);
