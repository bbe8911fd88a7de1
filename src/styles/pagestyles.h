// SPDX-License-Identifier: MIT
#pragma once

#include "styles/computedstyle.h"
#include "styles/stylesheet.h"

#include <deque>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

struct HtmlNode;

/// Computes the styles of a page's elements: style sheets and style attributes by weight, then what is handed
/// down. Elements look as HTML says where no sheet says otherwise. In time proportional to the page; where
/// its sheets would take longer, no more rules apply.
class PageStyles {
public:
    explicit PageStyles(const Medium& medium) : m_medium(medium) {}

    /// Whether a condition, in lower case, holds where the page is shown; an empty one does.
    [[nodiscard]] bool applies(std::string_view condition) const
    {
        return condition.empty() || holds(condition, m_medium);
    }
    /// The sheets of a page in their order. Their imports are not followed.
    void add(const std::shared_ptr<const StyleSheet>& sheet);
    [[nodiscard]] bool hasSheets() const { return !m_sheets.empty(); }

    /// Makes the styles of an element and all in it; they live as long as this. For all elements in the order
    /// of the page, from the root on.
    const ComputedStyle& compute(const HtmlNode& element, const ComputedStyle* parent);

private:
    static constexpr size_t MostSteps = 10'000'000; ///< of matching; take about a tenth of a second

    struct Rule {
        const StyleRule* rule;
        size_t order;
    };
    /// A declaration that an element got, by its weight.
    struct Match {
        uint64_t weight;
        const CssDeclaration* declaration;
    };
    using Rules = std::unordered_map<std::string_view, std::vector<Rule>>;

    void collect(const std::vector<Rule>& rules, const HtmlNode& element);
    void collect(const Rules& rules, std::string_view key, const HtmlNode& element);
    void collect(const std::vector<CssDeclaration>& declarations, uint64_t weight);
    void apply(ComputedStyle& style, const InheritedStyle& parent);
    [[nodiscard]] std::string valueOf(const CssDeclaration& declaration) const;

    static constexpr size_t MostRules = 100'000;

    Medium m_medium;
    std::vector<std::shared_ptr<const StyleSheet>> m_sheets;
    Rules m_byId;
    Rules m_byClass;
    Rules m_byTag;
    std::vector<Rule> m_others;
    std::vector<Rule> m_rules;
    std::unordered_map<std::string, std::string> m_variables; ///< of the root and of what was computed last
    SelectorMatcher m_matcher{MostSteps};
    std::vector<Match> m_matches;      ///< of the element that is computed
    std::vector<CssDeclaration> m_own; ///< in its style attribute
    std::deque<ComputedStyle> m_styles;
};
