// SPDX-License-Identifier: MIT
#include "styles/selector.h"

#include "markup/htmltree.h"
#include "styles/cssreader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace {

constexpr uint32_t IdWeight = 1U << 16U;
constexpr uint32_t ClassWeight = 1U << 8U;
constexpr int DeepestInner = 4;
constexpr size_t MostCompounds = 32;

bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == '\\' || (static_cast<unsigned char>(c) & 0x80U) != 0;
}

std::vector<Selector> readList(std::string_view text, int depth);

/// Reads one selector.
class SelectorReader {
public:
    SelectorReader(std::string_view text, int depth) : m_text(trimmedCss(text)), m_depth(depth) {}

    std::optional<Selector> read()
    {
        Selector selector;
        char combinator = 0;
        while (m_at < m_text.size() && selector.compounds.size() < MostCompounds) {
            CompoundSelector compound;
            compound.combinator = combinator;
            if (selector.part != SelectedPart::Element || !readCompound(compound, selector)) {
                return std::nullopt;
            }
            selector.compounds.push_back(std::move(compound));
            combinator = readCombinator();
        }
        std::reverse(selector.compounds.begin(), selector.compounds.end());
        // What stood at the left of a compound stands at its right now.
        const bool isInner = m_depth > 0 && selector.part != SelectedPart::Element;
        if (m_at < m_text.size() || combinator != 0 || selector.compounds.empty() || isInner) {
            return std::nullopt;
        }
        return selector;
    }

private:
    [[nodiscard]] char peek() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }

    char readCombinator()
    {
        char combinator = 0;
        while (m_at < m_text.size() && (isBlank(peek()) || peek() == '>' || peek() == '+' || peek() == '~')) {
            combinator = isBlank(peek()) ? (combinator == 0 ? ' ' : combinator) : peek();
            ++m_at;
        }
        return combinator;
    }

    std::string readName()
    {
        std::string name;
        for (; m_at < m_text.size() && isNameCharacter(peek()); ++m_at) {
            if (peek() == '\\' && m_at + 1 < m_text.size()) {
                ++m_at;
            }
            name += peek();
        }
        return name;
    }

    bool readCompound(CompoundSelector& compound, Selector& selector)
    {
        const size_t begin = m_at;
        while (m_at < m_text.size()) {
            const char c = peek();
            if (c == '*') {
                ++m_at;
            } else if (c == '#' || c == '.') {
                ++m_at;
                const bool isId = c == '#';
                add(compound, isId ? SimpleSelector::Kind::Id : SimpleSelector::Kind::Class, readName());
                selector.specificity += isId ? IdWeight : ClassWeight;
            } else if (c == '[') {
                if (!readAttribute(compound)) {
                    return false;
                }
                selector.specificity += ClassWeight;
            } else if (c == ':') {
                if (!readPseudo(compound, selector)) {
                    return false;
                }
            } else if (isNameCharacter(c) && m_at == begin) {
                add(compound, SimpleSelector::Kind::Tag, lowerCss(readName()));
                ++selector.specificity;
            } else {
                break;
            }
        }
        return m_at > begin;
    }

    static SimpleSelector& add(CompoundSelector& compound, SimpleSelector::Kind kind, std::string name = {})
    {
        auto& simple = compound.parts.emplace_back();
        simple.kind = kind;
        simple.name = std::move(name);
        return simple;
    }

    bool readAttribute(CompoundSelector& compound)
    {
        const size_t end = m_text.find(']', m_at);
        if (end == std::string_view::npos) {
            return false;
        }
        auto content = trimmedCss(m_text.substr(m_at + 1, end - m_at - 1));
        m_at = end + 1;
        auto& simple = add(compound, SimpleSelector::Kind::Attribute);
        const size_t equals = content.find('=');
        if (equals == std::string_view::npos) {
            simple.name = lowerCss(content);
            return !content.empty();
        }
        const bool hasSign =
            equals > 0 && std::string_view("~|^$*").find(content[equals - 1]) != std::string_view::npos;
        simple.comparison = hasSign ? content[equals - 1] : '=';
        simple.name = lowerCss(trimmedCss(content.substr(0, equals - (hasSign ? 1 : 0))));
        auto value = trimmedCss(content.substr(equals + 1));
        if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'')) {
            value = value.substr(1, value.find(value.front(), 1) - 1);
        }
        simple.value = value;
        return !simple.name.empty();
    }

    bool readPseudo(CompoundSelector& compound, Selector& selector)
    {
        m_at += m_text.substr(m_at, 2) == "::" ? 2 : 1;
        const std::string name = lowerCss(readName());
        std::string_view argument;
        if (peek() == '(') {
            int depth = 0;
            const size_t begin = m_at + 1;
            do {
                depth += peek() == '(' ? 1 : peek() == ')' ? -1 : 0;
                ++m_at;
            } while (m_at < m_text.size() && depth > 0);
            argument = m_text.substr(begin, m_at - begin - 1);
        }
        return addPseudo(compound, name, argument, selector);
    }

    bool addPseudo(CompoundSelector& compound, std::string_view name, std::string_view argument,
                   Selector& selector) const
    {
        using Kind = SimpleSelector::Kind;
        static constexpr std::array<std::string_view, 12> byHand{
            "hover",    "focus",   "active",       "visited",       "target", "checked",
            "disabled", "enabled", "focus-within", "focus-visible", "open",   "invalid"};
        if (name == "is" || name == "where" || name == "not" || name == "matches" || name == "any") {
            auto& simple = add(compound, name == "not" ? Kind::Not : Kind::Is);
            simple.inner = m_depth < DeepestInner ? readList(argument, m_depth + 1) : std::vector<Selector>();
            uint32_t most = 0;
            for (const auto& inner : simple.inner) {
                most = std::max(most, inner.specificity);
            }
            selector.specificity += name == "where" ? 0 : most;
            return m_depth < DeepestInner;
        }
        if (name == "before" || name == "after") {
            selector.part = name == "before" ? SelectedPart::Before : SelectedPart::After;
            ++selector.specificity;
            return true;
        }
        selector.specificity += ClassWeight;
        if (name == "link" || name == "any-link") {
            add(compound, Kind::Link);
        } else if (name == "root") {
            add(compound, Kind::Root);
        } else if (name == "empty") {
            add(compound, Kind::Empty);
        } else if (std::find(byHand.begin(), byHand.end(), name) != byHand.end()) {
            add(compound, Kind::Never);
        } else {
            return addPosition(compound, name, argument);
        }
        return true;
    }

    static bool addPosition(CompoundSelector& compound, std::string_view name, std::string_view argument)
    {
        using Kind = SimpleSelector::Kind;
        const bool isOfType = name.size() > 8 && name.substr(name.size() - 8) == "-of-type";
        const auto stem = isOfType ? name.substr(0, name.size() - 8)
                          : name.size() > 6 && name.substr(name.size() - 6) == "-child"
                              ? name.substr(0, name.size() - 6)
                              : std::string_view();
        const auto addNth = [&](Kind kind, int step, int offset) {
            auto& simple = add(compound, kind);
            simple.isOfType = isOfType;
            simple.step = step;
            simple.offset = offset;
        };
        if (stem == "first" || stem == "only") {
            addNth(Kind::Nth, 0, 1);
        }
        if (stem == "last" || stem == "only") {
            addNth(Kind::NthLast, 0, 1);
        }
        if (stem == "nth" || stem == "nth-last") {
            const auto [step, offset] = readNth(argument);
            addNth(stem == "nth" ? Kind::Nth : Kind::NthLast, step, offset);
        }
        return stem == "first" || stem == "only" || stem == "last" || stem == "nth" || stem == "nth-last";
    }

    static std::pair<int, int> readNth(std::string_view argument)
    {
        std::string text = lowerCss(argument);
        std::erase_if(text, [](char c) { return isBlank(c) || c == '+'; });
        if (text == "odd" || text == "even") {
            return {2, text == "odd" ? 1 : 0};
        }
        const auto number = [](std::string_view digits, int fallback) {
            std::from_chars(digits.data(), digits.data() + digits.size(), fallback);
            return fallback;
        };
        const size_t n = text.find('n');
        if (n == std::string::npos) {
            return {0, number(text, 0)};
        }
        const auto step = std::string_view(text).substr(0, n);
        return {step == "-" ? -1 : number(step, 1), number(std::string_view(text).substr(n + 1), 0)};
    }

    std::string_view m_text;
    size_t m_at = 0;
    int m_depth;
};

std::vector<Selector> readList(std::string_view text, int depth)
{
    std::vector<Selector> selectors;
    for (const auto part : splitCss(text, ',')) {
        if (auto selector = SelectorReader(part, depth).read()) {
            selectors.push_back(std::move(*selector));
        }
    }
    return selectors;
}

const HtmlNode* elementBefore(const HtmlNode& element)
{
    const auto* before = element.previous;
    while (before != nullptr && !isElement(*before)) {
        before = before->previous;
    }
    return before;
}

bool compares(const SimpleSelector& simple, std::string_view found)
{
    const std::string_view value = simple.value;
    switch (simple.comparison) {
    case '~':
        return anyWord(found, [value](std::string_view word) { return word == value; });
    case '|':
        return found == value ||
               (found.substr(0, value.size()) == value && found.substr(value.size(), 1) == "-");
    case '^':
        return !value.empty() && found.substr(0, value.size()) == value;
    case '$':
        return !value.empty() && found.size() >= value.size() &&
               found.substr(found.size() - value.size()) == value;
    case '*':
        return !value.empty() && found.find(value) != std::string_view::npos;
    default:
        return found == value;
    }
}

} // namespace

std::vector<Selector> readSelectors(std::string_view text)
{
    return readList(text, 0);
}

/// False when no steps are left.
bool SelectorMatcher::step()
{
    m_steps -= m_steps > 0 ? 1 : 0;
    return m_steps > 0;
}

bool SelectorMatcher::matchesFrom(const Selector& selector, size_t compound, const HtmlNode& element)
{
    const auto& right = selector.compounds[compound];
    if (!step() || !matchesAll(right, element)) {
        return false;
    }
    if (compound + 1 == selector.compounds.size()) {
        return true;
    }
    const bool isParent = right.combinator == ' ' || right.combinator == '>';
    const bool isNear = right.combinator == '>' || right.combinator == '+';
    const auto left = [isParent](const HtmlNode& from) {
        return isParent ? from.parent : elementBefore(from);
    };
    for (const auto* candidate = left(element); candidate != nullptr && m_steps > 0;
         candidate = left(*candidate)) {
        if (matchesFrom(selector, compound + 1, *candidate)) {
            return true;
        }
        if (isNear) {
            return false;
        }
    }
    return false;
}

bool SelectorMatcher::matchesAll(const CompoundSelector& compound, const HtmlNode& element)
{
    return std::all_of(compound.parts.begin(), compound.parts.end(),
                       [&](const SimpleSelector& simple) { return matchesSimple(simple, element); });
}

bool SelectorMatcher::matchesSimple(const SimpleSelector& simple, const HtmlNode& element)
{
    using Kind = SimpleSelector::Kind;
    switch (simple.kind) {
    case Kind::Tag:
        return element.name == simple.name;
    case Kind::Id:
        return attribute(element, "id") == simple.name;
    case Kind::Class:
        return anyWord(attribute(element, "class"),
                       [&](std::string_view word) { return word == simple.name; });
    case Kind::Attribute:
        return hasAttribute(element, simple.name) &&
               (simple.comparison == 0 || compares(simple, attribute(element, simple.name)));
    case Kind::Link:
        return element.name == "a" && hasAttribute(element, "href");
    case Kind::Root:
        return element.parent == nullptr;
    case Kind::Empty:
        return element.firstChild == nullptr;
    case Kind::Nth:
    case Kind::NthLast:
        return isNth(simple, element);
    case Kind::Is:
        return anyMatches(simple.inner, element);
    case Kind::Not:
        return !anyMatches(simple.inner, element);
    case Kind::Never:
        return false;
    }
    return false;
}

bool SelectorMatcher::isNth(const SimpleSelector& simple, const HtmlNode& element)
{
    const bool isFromEnd = simple.kind == SimpleSelector::Kind::NthLast;
    int position = 1;
    for (const auto* other = isFromEnd ? element.next : element.previous; other != nullptr && step();
         other = isFromEnd ? other->next : other->previous) {
        const bool counts = isElement(*other) && (!simple.isOfType || other->name == element.name);
        position += counts ? 1 : 0;
    }
    const int distance = position - simple.offset;
    return simple.step == 0 ? distance == 0 : distance % simple.step == 0 && distance / simple.step >= 0;
}

bool SelectorMatcher::anyMatches(const std::vector<Selector>& selectors, const HtmlNode& element)
{
    return std::any_of(selectors.begin(), selectors.end(),
                       [&](const Selector& selector) { return matchesFrom(selector, 0, element); });
}
