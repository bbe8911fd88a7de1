// SPDX-License-Identifier: MIT
#include "fulltext/editdistance.h"

#include <algorithm>
#include <array>
#include <cstdlib>

int editDistance(std::string_view a, std::string_view b, int most)
{
    constexpr size_t longest = 64;
    if (std::abs(int(a.size()) - int(b.size())) > most || std::max(a.size(), b.size()) > longest) {
        return most + 1;
    }
    // Optimal string alignment, with the last three rows of the table.
    std::array<std::array<int, longest + 1>, 3> rows{};
    for (size_t j = 0; j <= b.size(); ++j) {
        rows[0][j] = int(j);
    }
    for (size_t i = 1; i <= a.size(); ++i) {
        const auto& before = rows[(i - 1) % 3];
        auto& row = rows[i % 3];
        row[0] = int(i);
        for (size_t j = 1; j <= b.size(); ++j) {
            row[j] =
                std::min({before[j] + 1, row[j - 1] + 1, before[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], rows[(i - 2) % 3][j - 2] + 1);
            }
        }
        if (*std::min_element(row.begin(), row.begin() + std::ptrdiff_t(b.size()) + 1) > most) {
            return most + 1;
        }
    }
    return rows[a.size() % 3][b.size()];
}
