// SPDX-License-Identifier: MIT
#include "styles/ancestorfilter.h"

#include "markup/htmltree.h"
#include "styles/selector.h"

#include <algorithm>
#include <string_view>

namespace {

/// From 1 on.
uint16_t numberOf(char kind, std::string_view name, size_t size)
{
    uint32_t hash = 2166136261U ^ uint32_t(kind);
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    }
    return uint16_t((hash ^ hash >> 16U) % (size - 1) + 1);
}

char kindOf(SimpleSelector::Kind kind)
{
    return kind == SimpleSelector::Kind::Class ? '.'
           : kind == SimpleSelector::Kind::Id  ? '#'
           : kind == SimpleSelector::Kind::Tag ? 'e'
                                               : '\0';
}

} // namespace

AncestorFilter::Needs AncestorFilter::needsOf(const Selector& selector)
{
    Needs needs{};
    size_t count = 0;
    for (size_t i = 0; i + 1 < selector.compounds.size(); ++i) {
        const char combinator = selector.compounds[i].combinator;
        if (combinator != ' ' && combinator != '>') {
            continue; // a neighbour
        }
        for (const auto& simple : selector.compounds[i + 1].parts) {
            if (const char kind = kindOf(simple.kind); kind != '\0' && count < MostNeeds) {
                needs[count++] = numberOf(kind, simple.name, Size);
            }
        }
    }
    return needs;
}

void AncestorFilter::moveTo(const HtmlNode& element)
{
    while (!m_levels.empty() && m_levels.back().element != element.parent) {
        pop();
    }
    if (!m_levels.empty() || element.parent == nullptr) {
        push(element);
        return;
    }
    std::vector<const HtmlNode*> around;
    for (const auto* node = &element; node != nullptr; node = node->parent) {
        around.push_back(node);
    }
    std::for_each(around.rbegin(), around.rend(), [this](const HtmlNode* node) { push(*node); });
}

/// The element itself counts, too, which does no harm.
void AncestorFilter::push(const HtmlNode& element)
{
    m_levels.push_back({&element, m_names.size()});
    add(numberOf('e', element.name, Size));
    if (const auto id = attribute(element, "id"); !id.empty()) {
        add(numberOf('#', id, Size));
    }
    anyWord(attribute(element, "class"), [this](std::string_view word) {
        add(numberOf('.', word, Size));
        return false;
    });
}

void AncestorFilter::add(uint16_t name)
{
    m_names.push_back(name);
    ++m_counts[name];
}

void AncestorFilter::pop()
{
    for (size_t i = m_levels.back().begin; i < m_names.size(); ++i) {
        --m_counts[m_names[i]];
    }
    m_names.resize(m_levels.back().begin);
    m_levels.pop_back();
}
