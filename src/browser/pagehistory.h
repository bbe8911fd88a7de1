// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <vector>

struct HelpContentsItem;

/// Which pages have been shown, one behind the other: a value that knows nothing of showing them.
class PageHistory {
public:
    /// A page that was left.
    struct Visit {
        HelpContentsItem* item;
        int place; ///< what stood at the top of the view
    };
    enum class Direction { Back, Forward };

    /// Null when no page is shown, or one that has been forgotten.
    [[nodiscard]] HelpContentsItem* current() const { return m_current; }
    /// The first page shown since all was forgotten; null when there is none.
    [[nodiscard]] HelpContentsItem* home() const { return m_home; }
    [[nodiscard]] bool canStep(Direction direction) const { return !visits(direction).empty(); }

    /// The pages that were left, each once, those left last first.
    [[nodiscard]] std::vector<HelpContentsItem*> left() const;

    /// Another page is shown; the one that is left is kept unless it has no name. True when it was kept.
    bool enter(HelpContentsItem* item, int leftPlace);
    /// The page shown is another one that takes the place of the one before.
    void replace(HelpContentsItem* item);
    /// Leaves the page shown for the one before or behind it; none when there is none.
    std::optional<Visit> step(Direction direction, int leftPlace);
    /// Leaves the page shown, which is not kept, and the way forward.
    void leave();
    /// Makes what was read before the page that has been forgotten the page shown.
    std::optional<Visit> stepBackFromNowhere();
    /// Lets go of all records for which `isGone` holds.
    void forget(const std::function<bool(const HelpContentsItem&)>& isGone);

private:
    [[nodiscard]] std::vector<Visit>& visits(Direction direction)
    {
        return direction == Direction::Back ? m_back : m_forward;
    }
    [[nodiscard]] const std::vector<Visit>& visits(Direction direction) const
    {
        return direction == Direction::Back ? m_back : m_forward;
    }

    std::vector<Visit> m_back;    ///< the most recent one is the last
    std::vector<Visit> m_forward; ///< the next page is the last
    HelpContentsItem* m_current = nullptr;
    HelpContentsItem* m_home = nullptr;
};
