// SPDX-License-Identifier: MIT
#pragma once

#include "markup/htmlnode.h"

#include <deque>
#include <memory>
#include <string_view>
#include <vector>

/// Holds what a tree is made of. Nothing is freed one by one: a page has many nodes, and they go together.
class HtmlStore {
public:
    HtmlNode& addNode() { return m_nodes.emplace_back(); }
    HtmlAttribute& addAttribute() { return m_attributes.emplace_back(); }
    /// A copy; it follows on the one before where there is room.
    [[nodiscard]] std::string_view keep(std::string_view text);

private:
    std::deque<HtmlNode> m_nodes;
    std::deque<HtmlAttribute> m_attributes;
    std::vector<std::unique_ptr<char[]>> m_blocks; ///< of texts
    char* m_free = nullptr;                        ///< where the last block is free
    size_t m_freeSize = 0;
};
