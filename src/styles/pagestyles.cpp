// SPDX-License-Identifier: MIT
#include "styles/pagestyles.h"

#include "markup/htmltree.h"
#include "styles/attributestyle.h"
#include "styles/stylevariables.h"

#include <algorithm>
#include <utility>

namespace {

constexpr uint64_t StyleAttribute = uint64_t(1) << 62U;
constexpr uint64_t SheetWeight = uint64_t(1) << 61U;
constexpr unsigned OrderBits = 24;

/// The name of a simple selector of a kind, if the compound has one.
const std::string* nameOf(const CompoundSelector& compound, SimpleSelector::Kind kind)
{
    const auto found = std::find_if(compound.parts.begin(), compound.parts.end(),
                                    [kind](const SimpleSelector& simple) { return simple.kind == kind; });
    return found == compound.parts.end() ? nullptr : &found->name;
}

bool isLink(const HtmlNode& element)
{
    return element.name == "a" && hasAttribute(element, "href");
}

size_t hashOf(const std::vector<const void*>& key)
{
    constexpr size_t factor = 1'000'003;
    size_t hash = 0;
    for (const void* part : key) {
        hash = hash * factor + std::hash<const void*>()(part);
    }
    return hash;
}

} // namespace

void PageStyles::add(const std::shared_ptr<const StyleSheet>& sheet)
{
    m_sheets.push_back(sheet);
    using Kind = SimpleSelector::Kind;
    for (const auto& rule : sheet->rules) {
        const bool isWanted =
            m_extent == StyleExtent::All || (rule.selector.part == SelectedPart::Element &&
                                             (rule.block->isForSight || rule.block->hasVariables));
        if (m_ruleCount == MostRules || !applies(rule.media)) {
            continue;
        }
        const Rule added{&rule, m_ruleCount++};
        if (!isWanted) {
            continue;
        }
        const auto& last = rule.selector.compounds.front();
        if (const auto* id = nameOf(last, Kind::Id)) {
            m_byId[*id].push_back(added);
        } else if (const auto* className = nameOf(last, Kind::Class)) {
            m_byClass[*className].push_back(added);
        } else if (const auto* tag = nameOf(last, Kind::Tag)) {
            m_byTag[*tag].push_back(added);
        } else {
            m_others.push_back(added);
        }
    }
}

void PageStyles::collect(const std::vector<Rule>& rules, const HtmlNode& element)
{
    for (const auto& [rule, order] : rules) {
        if (m_around.mayHave(rule->needs) && m_matcher.matches(rule->selector, element)) {
            auto& matches = rule->selector.part == SelectedPart::Element  ? m_matches
                            : rule->selector.part == SelectedPart::Before ? m_before
                                                                          : m_after;
            matches.push_back(
                {SheetWeight | uint64_t(rule->selector.specificity) << OrderBits | order, rule->block.get()});
        }
    }
}

void PageStyles::collect(const Rules& rules, std::string_view key, const HtmlNode& element)
{
    if (const auto found = rules.find(key); found != rules.end()) {
        collect(found->second, element);
    }
}

const StyleBlock* PageStyles::ownBlock(std::string_view text)
{
    const auto [place, isNew] = m_own.try_emplace(std::string(text), std::vector<CssDeclaration>());
    if (isNew) {
        place->second = StyleBlock(readDeclarations(text));
    }
    return &place->second;
}

/// What HTML says, then the attributes of the page, its sheets, and the style attribute.
void PageStyles::collectAll(const HtmlNode& element)
{
    m_matches.clear();
    m_before.clear();
    m_after.clear();
    m_around.moveTo(element);
    if (const auto* block = defaultStyle(element.name)) {
        m_matches.push_back({0, block});
    }
    if (m_extent == StyleExtent::All) {
        if (const auto text = attributeStyle(element); !text.empty()) {
            m_matches.push_back({1, ownBlock(text)});
        }
    }
    collect(m_byId, attribute(element, "id"), element);
    anyWord(attribute(element, "class"), [&](std::string_view word) {
        collect(m_byClass, word, element);
        return false;
    });
    collect(m_byTag, element.name, element);
    collect(m_others, element);
    if (const auto own = attribute(element, "style"); !own.empty()) {
        m_matches.push_back({StyleAttribute, ownBlock(own)});
    }
    const auto lighter = [](const Match& a, const Match& b) { return a.weight < b.weight; };
    for (auto* matches : {&m_matches, &m_before, &m_after}) {
        // Each has a weight of its own.
        std::sort(matches->begin(), matches->end(), lighter);
    }
}

std::vector<const void*> PageStyles::keyOf(const HtmlNode& element, const ComputedStyle* parent) const
{
    std::vector<const void*> key{parent, isCell(element) ? &m_styles : nullptr,
                                 isLink(element) ? this : nullptr};
    for (const auto* matches : {&m_matches, &m_before, &m_after}) {
        for (const auto& match : *matches) {
            key.push_back(match.block);
        }
        key.push_back(nullptr);
    }
    return key;
}

const ComputedStyle& PageStyles::compute(const HtmlNode& element, const ComputedStyle* parent)
{
    collectAll(element);
    if (m_styles.size() > MostStyles) {
        // A page with so many looks means none of them.
        m_matches.erase(m_matches.begin() + (defaultStyle(element.name) == nullptr ? 0 : 1), m_matches.end());
        m_before.clear();
        m_after.clear();
        parent = nullptr;
    }
    auto key = keyOf(element, parent);
    const size_t hash = hashOf(key);
    const auto [first, last] = m_shared.equal_range(hash);
    const auto found =
        std::find_if(first, last, [&key](const auto& entry) { return entry.second.key == key; });
    if (found != last) {
        return *found->second.style;
    }
    const auto& style = make(element, parent);
    m_shared.emplace(hash, Shared{std::move(key), &style});
    return style;
}

const ComputedStyle& PageStyles::make(const HtmlNode& element, const ComputedStyle* parent)
{
    auto& style = m_styles.emplace_back();
    if (parent != nullptr) {
        static_cast<InheritedStyle&>(style) = static_cast<const InheritedStyle&>(*parent);
    }
    if (isCell(element)) {
        style.padding.fill(style.cellPadding);
        style.border.fill({style.cellBorder, style.cellBorder > 0, false, {}});
    }
    if (isLink(element)) {
        style.color = LinkColor;
        style.isUnderlined = true;
    }
    apply(style, m_matches, parent);
    style.before = makePart(m_before, style);
    style.after = makePart(m_after, style);
    return style;
}

const ComputedStyle* PageStyles::makePart(const Matches& matches, const ComputedStyle& parent)
{
    if (matches.empty()) {
        return nullptr;
    }
    auto& style = m_styles.emplace_back();
    static_cast<InheritedStyle&>(style) = static_cast<const InheritedStyle&>(parent);
    apply(style, matches, &parent);
    const bool isShown = !style.content.empty() || !style.counterIncrement.empty();
    return isShown && !style.isHidden() ? &style : nullptr;
}

void PageStyles::setVariables(ComputedStyle& style, const Matches& matches)
{
    constexpr int deepest = 32;
    const bool isSet = std::any_of(matches.begin(), matches.end(),
                                   [](const Match& match) { return match.block->hasVariables; });
    if (!isSet || (style.variables != nullptr && style.variables->depth == deepest)) {
        return;
    }
    auto& variables = m_variables.emplace_back();
    variables.outer = style.variables;
    variables.depth = style.variables == nullptr ? 1 : style.variables->depth + 1;
    for (const bool isImportant : {false, true}) {
        for (const auto& match : matches) {
            for (const auto& declaration : match.block->declarations) {
                if (declaration.property == nullptr && declaration.isImportant == isImportant) {
                    variables.values[declaration.name] = declaration.value;
                }
            }
        }
    }
    style.variables = &variables;
}

void PageStyles::apply(ComputedStyle& style, const StyleDeclaration& declaration,
                       const StyleSurroundings& around)
{
    if (!declaration.hasVariable) {
        declaration.property->apply(style, declaration.value, around);
        return;
    }
    const auto value = withVariables(declaration.value, style.variables);
    declaration.property->apply(style, value ? lowerCss(*value) : "unset", around);
}

/// The size of the font goes before all that is measured by it.
void PageStyles::apply(ComputedStyle& style, const Matches& matches, const ComputedStyle* parent)
{
    setVariables(style, matches);
    const StyleSurroundings around{parent, m_medium.width};
    const bool isAll = m_extent == StyleExtent::All;
    for (const bool isFont : {true, false}) {
        for (const bool isImportant : {false, true}) {
            for (const auto& [weight, block] : matches) {
                const bool isWanted = (isAll || block->isForSight) && (!isFont || block->hasFont) &&
                                      (!isImportant || block->hasImportant);
                for (const auto& declaration : block->declarations) {
                    if (isWanted && declaration.property != nullptr && declaration.isForFont == isFont &&
                        declaration.isImportant == isImportant && (isAll || declaration.isForSight)) {
                        apply(style, declaration, around);
                    }
                }
            }
        }
    }
}
