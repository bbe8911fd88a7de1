// SPDX-License-Identifier: MIT
#pragma once

#include "styles/ancestorfilter.h"
#include "styles/computedstyle.h"
#include "styles/stylesheet.h"

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct HtmlNode;

/// Custom properties, `--name: value`, of an element that sets some; the others are those around it.
struct StyleVariables {
    const StyleVariables* outer = nullptr;
    int depth = 0;
    std::unordered_map<std::string, std::string> values;
};

/// How much of a style is wanted.
enum class StyleExtent : uint8_t {
    Sight, ///< what decides whether elements are shown, and whether in a line or apart
    All
};

/// Computes the styles of a page's elements: style sheets and style attributes by weight, then what is handed
/// down. Elements look as HTML says where no sheet says otherwise. In time proportional to the page; where
/// its sheets would take longer, no more rules apply. Elements that look alike share a style.
class PageStyles {
public:
    explicit PageStyles(const Medium& medium, StyleExtent extent = StyleExtent::All)
        : m_medium(medium), m_extent(extent)
    {
    }

    /// Whether a condition, in lower case, holds where the page is shown; an empty one does.
    [[nodiscard]] bool applies(std::string_view condition) const
    {
        return condition.empty() || holds(condition, m_medium);
    }
    /// The sheets of a page in their order. Their imports are not followed.
    void add(const std::shared_ptr<const StyleSheet>& sheet);
    [[nodiscard]] bool hasSheets() const { return !m_sheets.empty(); }
    /// Whether the sheets say anything.
    [[nodiscard]] bool hasRules() const { return m_ruleCount > 0; }

    /// The style of an element, which lives as long as this. For all elements in the order of the page, from
    /// the root on.
    const ComputedStyle& compute(const HtmlNode& element, const ComputedStyle* parent);

private:
    static constexpr size_t MostSteps = 10'000'000; ///< of matching; take about a tenth of a second
    static constexpr size_t MostRules = 100'000;
    static constexpr size_t MostStyles = 50'000;

    struct Rule {
        const StyleRule* rule;
        size_t order;
    };
    /// What a rule says, by its weight.
    struct Match {
        uint64_t weight;
        const StyleBlock* block;
    };
    using Matches = std::vector<Match>;
    using Rules = std::unordered_map<std::string_view, std::vector<Rule>>;
    /// What decides a style.
    struct Shared {
        std::vector<const void*> key;
        const ComputedStyle* style;
    };

    void collect(const std::vector<Rule>& rules, const HtmlNode& element);
    void collect(const Rules& rules, std::string_view key, const HtmlNode& element);
    void collectAll(const HtmlNode& element);
    [[nodiscard]] const StyleBlock* ownBlock(std::string_view text);
    [[nodiscard]] std::vector<const void*> keyOf(const HtmlNode& element, const ComputedStyle* parent) const;
    const ComputedStyle& make(const HtmlNode& element, const ComputedStyle* parent);
    [[nodiscard]] const ComputedStyle* makePart(const Matches& matches, const ComputedStyle& parent);
    void setVariables(ComputedStyle& style, const Matches& matches);
    void apply(ComputedStyle& style, const Matches& matches, const ComputedStyle* parent);
    void apply(ComputedStyle& style, const StyleDeclaration& declaration, const StyleSurroundings& around);

    Medium m_medium;
    StyleExtent m_extent;
    std::vector<std::shared_ptr<const StyleSheet>> m_sheets;
    size_t m_ruleCount = 0;
    Rules m_byId;
    Rules m_byClass;
    Rules m_byTag;
    std::vector<Rule> m_others;
    SelectorMatcher m_matcher{MostSteps};
    AncestorFilter m_around; ///< the element that is computed
    Matches m_matches;       ///< of the element that is computed
    Matches m_before;        ///< of what comes before its content
    Matches m_after;
    std::unordered_map<std::string, StyleBlock> m_own; ///< style attributes, by their text
    std::deque<StyleVariables> m_variables;
    std::deque<ComputedStyle> m_styles;
    std::unordered_multimap<size_t, Shared> m_shared;
};
