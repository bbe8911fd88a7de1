// SPDX-License-Identifier: MIT
#include "markup/formattingelements.h"

#include <algorithm>

namespace {

size_t attributeCount(const HtmlNode& node)
{
    size_t count = 0;
    for (const auto* found = node.attributes; found != nullptr; found = found->next) {
        ++count;
    }
    return count;
}

bool isAlike(const HtmlNode& a, const HtmlNode& b)
{
    if (a.tag != b.tag || attributeCount(a) != attributeCount(b)) {
        return false;
    }
    for (const auto* found = a.attributes; found != nullptr; found = found->next) {
        if (!hasAttribute(b, found->name) || attribute(b, found->name) != found->value) {
            return false;
        }
    }
    return true;
}

} // namespace

void FormattingElements::push(HtmlNode& node)
{
    const auto first = m_nodes.begin() + std::ptrdiff_t(begin());
    const auto isLike = [&node](const HtmlNode* other) { return isAlike(*other, node); };
    if (size_t(std::count_if(first, m_nodes.end(), isLike)) >= MostAlike) {
        m_nodes.erase(std::find_if(first, m_nodes.end(), isLike));
    } else if (size_t(m_nodes.end() - first) >= Most) {
        m_nodes.erase(first);
    }
    m_nodes.push_back(&node);
}

void FormattingElements::clearToMarker()
{
    m_nodes.resize(begin());
    if (!m_nodes.empty()) {
        m_nodes.pop_back();
    }
}

void FormattingElements::remove(const HtmlNode& node)
{
    if (const size_t index = indexOf(node); index != Nowhere) {
        m_nodes.erase(m_nodes.begin() + std::ptrdiff_t(index));
    }
}

void FormattingElements::insert(size_t index, HtmlNode& node)
{
    m_nodes.insert(m_nodes.begin() + std::ptrdiff_t(index), &node);
}

HtmlNode* FormattingElements::last(Tag tag) const
{
    for (size_t i = m_nodes.size(); i > 0 && m_nodes[i - 1] != nullptr; --i) {
        if (m_nodes[i - 1]->tag == tag) {
            return m_nodes[i - 1];
        }
    }
    return nullptr;
}

size_t FormattingElements::indexOf(const HtmlNode& node) const
{
    for (size_t i = m_nodes.size(); i > 0 && m_nodes[i - 1] != nullptr; --i) {
        if (m_nodes[i - 1] == &node) {
            return i - 1;
        }
    }
    return Nowhere;
}

size_t FormattingElements::begin() const
{
    size_t i = m_nodes.size();
    while (i > 0 && m_nodes[i - 1] != nullptr) {
        --i;
    }
    return i;
}
