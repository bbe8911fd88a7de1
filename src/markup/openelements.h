// SPDX-License-Identifier: MIT
#pragma once

#include "markup/htmlnode.h"

#include <array>
#include <vector>

/// The elements that have begun and not ended, the html element first. Looks at the innermost five hundred
/// only, so that no page takes absurdly long.
class OpenElements {
public:
    [[nodiscard]] bool isEmpty() const { return m_nodes.empty(); }
    [[nodiscard]] size_t size() const { return m_nodes.size(); }
    [[nodiscard]] HtmlNode& current() const { return *m_nodes.back(); }
    [[nodiscard]] HtmlNode& at(size_t index) const { return *m_nodes[index]; }
    /// How many there are of a tag.
    [[nodiscard]] size_t count(Tag tag) const { return m_counts[size_t(tag)]; }

    void push(HtmlNode& node) { insert(m_nodes.size(), node); }
    void pop() { remove(m_nodes.size() - 1); }
    void insert(size_t index, HtmlNode& node);
    void remove(size_t index);
    /// Ends all down to `index`, which stays.
    void shrink(size_t size);
    void popUntil(Tag tag);
    /// Ends all down to a heading, or to a cell.
    void popUntil(Trait trait);
    void replace(size_t index, HtmlNode& node) { m_nodes[index] = &node; } // of the same tag

    static constexpr size_t Nowhere = size_t(-1);
    [[nodiscard]] size_t indexOf(const HtmlNode& node) const;
    [[nodiscard]] size_t lastIndexOf(Tag tag) const;

    /// Whether an element is open and not hidden by others, of `extra` or of Scope.
    [[nodiscard]] bool isInScope(Tag tag) const;
    [[nodiscard]] bool isInListScope(Tag tag) const;
    [[nodiscard]] bool isInButtonScope(Tag tag) const;
    [[nodiscard]] bool isInTableScope(Tag tag) const;
    [[nodiscard]] bool isInSelectScope(Tag tag) const;
    [[nodiscard]] bool isInScope(const HtmlNode& node) const;
    [[nodiscard]] bool isHeadingInScope() const;
    [[nodiscard]] bool isRowGroupInTableScope() const;

    /// Ends what needs no end of its own.
    void generateImpliedEnds(Tag except = Tag::Text);

private:
    template <typename Wanted, typename Barrier>
    [[nodiscard]] bool isFound(Wanted isWanted, Barrier isBarrier) const;
    [[nodiscard]] size_t firstLooked() const
    {
        return m_nodes.size() > MostLooked ? m_nodes.size() - MostLooked : 0;
    }

    static constexpr size_t MostLooked = 500;

    std::vector<HtmlNode*> m_nodes;
    std::array<size_t, TagCount> m_counts{};
};
