// SPDX-License-Identifier: MIT
#include "markup/openelements.h"

void OpenElements::insert(size_t index, HtmlNode& node)
{
    m_nodes.insert(m_nodes.begin() + std::ptrdiff_t(index), &node);
    ++m_counts[size_t(node.tag)];
}

void OpenElements::remove(size_t index)
{
    --m_counts[size_t(m_nodes[index]->tag)];
    m_nodes.erase(m_nodes.begin() + std::ptrdiff_t(index));
}

void OpenElements::shrink(size_t size)
{
    while (m_nodes.size() > size) {
        pop();
    }
}

void OpenElements::popUntil(Tag tag)
{
    bool isLast = false;
    while (!isLast && m_nodes.size() > 1) {
        isLast = current().tag == tag;
        pop();
    }
}

void OpenElements::popUntil(Trait trait)
{
    bool isLast = false;
    while (!isLast && m_nodes.size() > 1) {
        isLast = has(current().tag, trait);
        pop();
    }
}

size_t OpenElements::indexOf(const HtmlNode& node) const
{
    for (size_t i = m_nodes.size(); i > firstLooked(); --i) {
        if (m_nodes[i - 1] == &node) {
            return i - 1;
        }
    }
    return Nowhere;
}

size_t OpenElements::lastIndexOf(Tag tag) const
{
    for (size_t i = m_nodes.size(); count(tag) > 0 && i > firstLooked(); --i) {
        if (m_nodes[i - 1]->tag == tag) {
            return i - 1;
        }
    }
    return Nowhere;
}

template <typename Wanted, typename Barrier>
bool OpenElements::isFound(Wanted isWanted, Barrier isBarrier) const
{
    for (size_t i = m_nodes.size(); i > firstLooked(); --i) {
        const HtmlNode& node = *m_nodes[i - 1];
        if (isWanted(node)) {
            return true;
        }
        if (isBarrier(node.tag)) {
            return false;
        }
    }
    return false;
}

bool OpenElements::isInScope(Tag tag) const
{
    return count(tag) > 0 && isFound([tag](const HtmlNode& node) { return node.tag == tag; },
                                     [](Tag barrier) { return has(barrier, Trait::Scope); });
}

bool OpenElements::isInListScope(Tag tag) const
{
    return count(tag) > 0 &&
           isFound([tag](const HtmlNode& node) { return node.tag == tag; },
                   [](Tag barrier) { return has(barrier, Trait::Scope) || has(barrier, Trait::ListScope); });
}

bool OpenElements::isInButtonScope(Tag tag) const
{
    return count(tag) > 0 &&
           isFound([tag](const HtmlNode& node) { return node.tag == tag; },
                   [](Tag barrier) { return has(barrier, Trait::Scope) || barrier == Tag::Button; });
}

bool OpenElements::isInTableScope(Tag tag) const
{
    return count(tag) > 0 && isFound([tag](const HtmlNode& node) { return node.tag == tag; },
                                     [](Tag barrier) { return has(barrier, Trait::TableScope); });
}

bool OpenElements::isInSelectScope(Tag tag) const
{
    return count(tag) > 0 &&
           isFound([tag](const HtmlNode& node) { return node.tag == tag; },
                   [](Tag barrier) { return barrier != Tag::Optgroup && barrier != Tag::Option; });
}

bool OpenElements::isInScope(const HtmlNode& node) const
{
    return isFound([&node](const HtmlNode& open) { return &open == &node; },
                   [](Tag barrier) { return has(barrier, Trait::Scope); });
}

bool OpenElements::isHeadingInScope() const
{
    const size_t headings =
        count(Tag::H1) + count(Tag::H2) + count(Tag::H3) + count(Tag::H4) + count(Tag::H5) + count(Tag::H6);
    return headings > 0 && isFound([](const HtmlNode& node) { return has(node.tag, Trait::Heading); },
                                   [](Tag barrier) { return has(barrier, Trait::Scope); });
}

bool OpenElements::isRowGroupInTableScope() const
{
    return isFound([](const HtmlNode& node) { return has(node.tag, Trait::RowGroup); },
                   [](Tag barrier) { return has(barrier, Trait::TableScope); });
}

void OpenElements::generateImpliedEnds(Tag except)
{
    while (!m_nodes.empty() && current().tag != except && has(current().tag, Trait::ImpliedEnd)) {
        pop();
    }
}
