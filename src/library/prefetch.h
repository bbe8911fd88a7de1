// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// Calls `visit(i, values[i])` for all, in order. What `addressOf(value)` points at, which stands anywhere in
/// memory, is fetched some steps before, instead of being waited for.
template <typename Values, typename AddressOf, typename Visit>
void forEachAhead(Values& values, AddressOf addressOf, Visit visit)
{
    constexpr size_t ahead = 12;
    const size_t count = values.size();
    for (size_t i = 0; i < count; ++i) {
        if (i + ahead < count) {
            __builtin_prefetch(addressOf(values[i + ahead]));
        }
        visit(i, values[i]);
    }
}
