// SPDX-License-Identifier: MIT
#include "styles/pagestyles.h"

#include "markup/htmltree.h"
#include "styles/stylevalues.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int MostVariables = 16;     // put into a value
constexpr size_t LongestValue = 4096; // bytes
constexpr uint64_t Important = uint64_t(1) << 63U;
constexpr uint64_t StyleAttribute = uint64_t(1) << 62U;
constexpr unsigned OrderBits = 24;

struct Default {
    std::string_view names;
    void (*apply)(ComputedStyle&);
};

/// What HTML itself says of the looks of elements.
void applyDefaults(ComputedStyle& style, std::string_view name)
{
    static const Default defaults[]{
        {"b strong th h1 h2 h3 h4 h5 h6", [](ComputedStyle& s) { s.isBold = true; }},
        {"i em cite dfn var address", [](ComputedStyle& s) { s.isItalic = true; }},
        {"code tt kbd samp pre listing xmp plaintext textarea",
         [](ComputedStyle& s) { s.isFixedPitch = true; }},
        {"u ins", [](ComputedStyle& s) { s.isUnderlined = true; }},
        {"s strike del", [](ComputedStyle& s) { s.isStruckOut = true; }}};
    static const auto table = [] {
        std::unordered_map<std::string_view, std::vector<void (*)(ComputedStyle&)>> byName;
        for (const auto& entry : defaults) {
            anyWord(entry.names, [&](std::string_view word) {
                byName[word].push_back(entry.apply);
                return false;
            });
        }
        return byName;
    }();
    if (const auto found = table.find(name); found != table.end()) {
        for (const auto apply : found->second) {
            apply(style);
        }
    }
}

/// The name of a simple selector of a kind, if the compound has one.
const std::string* nameOf(const CompoundSelector& compound, SimpleSelector::Kind kind)
{
    const auto found = std::find_if(compound.parts.begin(), compound.parts.end(),
                                    [kind](const SimpleSelector& simple) { return simple.kind == kind; });
    return found == compound.parts.end() ? nullptr : &found->name;
}

} // namespace

void PageStyles::add(const std::shared_ptr<const StyleSheet>& sheet)
{
    m_sheets.push_back(sheet);
    using Kind = SimpleSelector::Kind;
    for (const auto& rule : sheet->rules) {
        if (m_rules.size() == MostRules || !applies(rule.media)) {
            continue;
        }
        const Rule added{&rule, m_rules.size()};
        m_rules.push_back(added);
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
        if (m_matcher.matches(rule->selector, element)) {
            collect(*rule->declarations, uint64_t(rule->selector.specificity) << OrderBits | order);
        }
    }
}

void PageStyles::collect(const Rules& rules, std::string_view key, const HtmlNode& element)
{
    if (const auto found = rules.find(key); found != rules.end()) {
        collect(found->second, element);
    }
}

void PageStyles::collect(const std::vector<CssDeclaration>& declarations, uint64_t weight)
{
    for (const auto& declaration : declarations) {
        m_matches.push_back({weight | (declaration.isImportant ? Important : 0), &declaration});
    }
}

const ComputedStyle& PageStyles::compute(const HtmlNode& element, const ComputedStyle* parent)
{
    auto& style = m_styles.emplace_back();
    const auto handedDown =
        parent == nullptr ? InheritedStyle() : static_cast<const InheritedStyle&>(*parent);
    static_cast<InheritedStyle&>(style) = handedDown;
    applyDefaults(style, element.name);
    m_matches.clear();
    collect(m_byId, attribute(element, "id"), element);
    anyWord(attribute(element, "class"), [&](std::string_view word) {
        collect(m_byClass, word, element);
        return false;
    });
    collect(m_byTag, element.name, element);
    collect(m_others, element);
    if (const auto own = attribute(element, "style"); !own.empty()) {
        m_own = readDeclarations(own);
        keepKnown(m_own);
        collect(m_own, StyleAttribute);
    }
    std::stable_sort(m_matches.begin(), m_matches.end(),
                     [](const Match& a, const Match& b) { return a.weight < b.weight; });
    apply(style, handedDown);
    return style;
}

void PageStyles::apply(ComputedStyle& style, const InheritedStyle& parent)
{
    for (const auto& match : m_matches) {
        if (match.declaration->name.compare(0, 2, "--") == 0) {
            m_variables[match.declaration->name] = match.declaration->value;
        }
    }
    for (const auto& match : m_matches) {
        const auto& declaration = *match.declaration;
        const bool hasVariable = declaration.value.find("var(") != std::string::npos;
        applyDeclaration(style, declaration.name, hasVariable ? valueOf(declaration) : declaration.value,
                         parent);
    }
}

/// The value with variables put in.
std::string PageStyles::valueOf(const CssDeclaration& declaration) const
{
    std::string value = declaration.value;
    int puts = 0;
    for (size_t at = value.find("var("); at != std::string::npos && puts < MostVariables;
         at = value.find("var(", at), ++puts) {
        const size_t end = value.find(')', at);
        if (end == std::string::npos || value.size() > LongestValue) {
            return {};
        }
        const auto arguments = splitCss(std::string_view(value).substr(at + 4, end - at - 4), ',');
        const auto found = m_variables.find(std::string(arguments.front()));
        const std::string put = found != m_variables.end() ? found->second
                                : arguments.size() > 1     ? std::string(arguments[1])
                                                           : std::string();
        value.replace(at, end - at + 1, put);
    }
    return value;
}
