// SPDX-License-Identifier: MIT
#include "browser/pagehistory.h"

#include "library/helpcontentsitem.h"

#include <algorithm>

std::vector<HelpContentsItem*> PageHistory::left() const
{
    std::vector<HelpContentsItem*> pages;
    const auto add = [&](const Visit& visit) {
        if (visit.item != m_current && std::find(pages.begin(), pages.end(), visit.item) == pages.end()) {
            pages.push_back(visit.item);
        }
    };
    std::for_each(m_back.rbegin(), m_back.rend(), add);
    std::for_each(m_forward.rbegin(), m_forward.rend(), add);
    return pages;
}

bool PageHistory::enter(HelpContentsItem* item, int leftPlace)
{
    if (m_home == nullptr) {
        m_home = item;
    }
    const bool isKept = m_current != nullptr && !m_current->page().trimmed().isEmpty();
    if (isKept) {
        m_back.push_back({m_current, leftPlace});
    }
    m_forward.clear();
    m_current = item;
    return isKept;
}

void PageHistory::replace(HelpContentsItem* item)
{
    if (m_home == nullptr || m_home == m_current) {
        m_home = item;
    }
    m_forward.clear();
    m_current = item;
}

std::optional<PageHistory::Visit> PageHistory::step(Direction direction, int leftPlace)
{
    auto& from = visits(direction);
    if (from.empty()) {
        return std::nullopt;
    }
    visits(direction == Direction::Back ? Direction::Forward : Direction::Back)
        .push_back({m_current, leftPlace});
    const Visit visit = from.back();
    from.pop_back();
    m_current = visit.item;
    return visit;
}

void PageHistory::leave()
{
    m_forward.clear();
    m_current = nullptr;
}

std::optional<PageHistory::Visit> PageHistory::stepBackFromNowhere()
{
    if (m_current != nullptr || m_back.empty()) {
        return std::nullopt;
    }
    const Visit visit = m_back.back();
    m_back.pop_back();
    m_current = visit.item;
    return visit;
}

void PageHistory::forget(const std::function<bool(const HelpContentsItem&)>& isGone)
{
    for (auto* list : {&m_back, &m_forward}) {
        std::erase_if(*list, [&](const Visit& visit) { return isGone(*visit.item); });
    }
    if (m_current != nullptr && isGone(*m_current)) {
        m_current = nullptr;
    }
    if (m_home != nullptr && isGone(*m_home)) {
        m_home = m_back.empty() ? m_current : m_back.front().item;
    }
    // Neighbours that were apart may be one page now.
    const auto isSame = [](const Visit& a, const Visit& b) { return a.item == b.item; };
    for (auto* list : {&m_back, &m_forward}) {
        list->erase(std::unique(list->begin(), list->end(), isSame), list->end());
        if (!list->empty() && list->back().item == m_current) {
            list->pop_back();
        }
    }
}
