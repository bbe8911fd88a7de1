// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct HtmlNode;
struct Selector;

/// One condition on one element.
struct SimpleSelector {
    enum class Kind {
        Tag,
        Id,
        Class,
        Attribute,
        Link, ///< a link that has a target
        Root,
        Empty,
        Nth,     ///< the a·n+b-th child, or of its name
        NthLast, ///< the same, from the end
        Is,      ///< one of `inner` matches
        Not,     ///< none of `inner` does
        Never    ///< needs a reader's hand, such as :hover
    };

    Kind kind = Kind::Never;
    std::string name;    ///< of tag, id, class or attribute
    std::string value;   ///< of the attribute
    char comparison = 0; ///< 0: the attribute is there; '=', '~', '|', '^', '$' or '*'
    bool isOfType = false;
    int step = 0;   ///< a
    int offset = 0; ///< b
    std::vector<Selector> inner;
};

/// All conditions on one element, and how it stands to the one at its left.
struct CompoundSelector {
    std::vector<SimpleSelector> parts;
    char combinator = 0; ///< to the left: ' ', '>', '+' or '~'; 0 for the first
};

/// What of an element a selector means.
enum class SelectedPart : uint8_t { Element, Before, After };

struct Selector {
    std::vector<CompoundSelector> compounds; ///< from the right to the left
    SelectedPart part = SelectedPart::Element;
    uint32_t specificity = 0;
};

/// The selectors of a list; those that are not understood are left out.
[[nodiscard]] std::vector<Selector> readSelectors(std::string_view text);

/// Tells whether elements match selectors, until a number of steps has been made; then nothing matches.
class SelectorMatcher {
public:
    explicit SelectorMatcher(size_t mostSteps) : m_steps(mostSteps) {}

    [[nodiscard]] bool matches(const Selector& selector, const HtmlNode& element)
    {
        return matchesFrom(selector, 0, element);
    }
    [[nodiscard]] bool isExhausted() const { return m_steps == 0; }

private:
    [[nodiscard]] bool matchesFrom(const Selector& selector, size_t compound, const HtmlNode& element);
    [[nodiscard]] bool matchesAll(const CompoundSelector& compound, const HtmlNode& element);
    [[nodiscard]] bool matchesSimple(const SimpleSelector& simple, const HtmlNode& element);
    [[nodiscard]] bool isNth(const SimpleSelector& simple, const HtmlNode& element);
    [[nodiscard]] bool anyMatches(const std::vector<Selector>& selectors, const HtmlNode& element);
    bool step();

    size_t m_steps;
};
