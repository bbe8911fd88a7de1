// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

struct HtmlNode;
struct Selector;

/// Names of the elements around one, of which a few bits are known: tells quickly that a selector which needs
/// others cannot match.
class AncestorFilter {
public:
    static constexpr size_t MostNeeds = 4;
    /// What a selector needs to be around an element, as numbers; 0 for no more.
    using Needs = std::array<uint16_t, MostNeeds>;
    [[nodiscard]] static Needs needsOf(const Selector& selector);

    /// Goes to an element. Quick when elements come in the order of the page.
    void moveTo(const HtmlNode& element);
    /// Whether there may be all that is needed.
    [[nodiscard]] bool mayHave(const Needs& needs) const
    {
        return std::all_of(needs.begin(), needs.end(),
                           [this](uint16_t need) { return need == 0 || m_counts[need] > 0; });
    }

private:
    static constexpr size_t Size = 4096;

    struct Level {
        const HtmlNode* element;
        size_t begin; ///< in `m_names`
    };

    void push(const HtmlNode& element);
    void pop();
    void add(uint16_t name);

    std::array<uint32_t, Size> m_counts{};
    std::vector<uint16_t> m_names; ///< of all levels
    std::vector<Level> m_levels;   ///< the elements around, from the outermost
};
