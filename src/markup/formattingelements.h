// SPDX-License-Identifier: MIT
#pragma once

#include "markup/htmlnode.h"

#include <vector>

/// Elements such as b and a that go on in the next block when they were not ended; a null marks where a cell
/// or the like began, which none outside of it reaches into.
class FormattingElements {
public:
    void push(HtmlNode& node);
    void pushMarker() { m_nodes.push_back(nullptr); }
    void clearToMarker();
    void remove(const HtmlNode& node);
    void insert(size_t index, HtmlNode& node);
    void replace(size_t index, HtmlNode& node) { m_nodes[index] = &node; }

    static constexpr size_t Nowhere = size_t(-1);
    /// The last of a tag behind the last marker; null for none.
    [[nodiscard]] HtmlNode* last(Tag tag) const;
    [[nodiscard]] size_t indexOf(const HtmlNode& node) const;
    /// Where those behind the last marker begin.
    [[nodiscard]] size_t begin() const;
    [[nodiscard]] size_t size() const { return m_nodes.size(); }
    [[nodiscard]] HtmlNode& at(size_t index) const { return *m_nodes[index]; }

private:
    static constexpr size_t MostAlike = 3;
    static constexpr size_t Most = 60; ///< behind a marker

    std::vector<HtmlNode*> m_nodes;
};
