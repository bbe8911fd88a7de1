// SPDX-License-Identifier: MIT
#include "styles/stylesheet.h"

#include "styles/csslength.h"

#include <algorithm>
#include <utility>

namespace {

/// "min-width: 40em", "width >= 600px", "prefers-color-scheme: dark" and the like.
bool featureHolds(std::string_view feature, const Medium& medium)
{
    if (const size_t colon = feature.find(':'); colon != std::string_view::npos) {
        const auto name = trimmedCss(feature.substr(0, colon));
        const auto value = trimmedCss(feature.substr(colon + 1));
        const auto length = readLength(value, FontSize);
        const bool isWidth = name.find("width") != std::string_view::npos && length;
        return isWidth ? (name.substr(0, 3) == "min" ? medium.width >= *length : medium.width <= *length)
                       : name == "prefers-color-scheme" && value == "light";
    }
    const size_t sign = feature.find_first_of("<>");
    if (sign == std::string_view::npos || trimmedCss(feature.substr(0, sign)) != "width") {
        return feature == "color" || feature == "width";
    }
    const size_t end = feature.find_first_not_of("<>=", sign);
    const auto length =
        end == std::string_view::npos ? std::nullopt : readLength(trimmedCss(feature.substr(end)), FontSize);
    return length && (feature[sign] == '<' ? medium.width <= *length : medium.width >= *length);
}

/// One of the conditions that are joined by "and".
bool termHolds(std::string_view term, const Medium& medium)
{
    constexpr std::string_view negation = "not ";
    if (term.substr(0, negation.size()) == negation) {
        return !termHolds(trimmedCss(term.substr(negation.size())), medium);
    }
    if (term.substr(0, 5) == "only ") {
        term = trimmedCss(term.substr(5));
    }
    if (term.size() >= 2 && term.front() == '(' && term.back() == ')') {
        return featureHolds(trimmedCss(term.substr(1, term.size() - 2)), medium);
    }
    return term.empty() || term == "all" || term == (medium.isPaper ? "print" : "screen");
}

bool queryHolds(std::string_view query, const Medium& medium)
{
    constexpr std::string_view joint = " and ";
    for (size_t begin = 0; begin <= query.size();) {
        const size_t end = std::min(query.find(joint, begin), query.size());
        if (!termHolds(trimmedCss(query.substr(begin, end - begin)), medium)) {
            return false;
        }
        begin = end + joint.size();
    }
    return true;
}

} // namespace

StyleBlock::StyleBlock(const std::vector<CssDeclaration>& written) : declarations(understood(written))
{
    for (const auto& declaration : declarations) {
        isForSight = isForSight || declaration.isForSight;
        hasVariables = hasVariables || declaration.property == nullptr;
        hasImportant = hasImportant || declaration.isImportant;
        hasFont = hasFont || declaration.isForFont;
    }
}

StyleSheet readStyleSheet(std::string_view sheet)
{
    auto text = readCss(sheet);
    StyleSheet result;
    result.imports = std::move(text.imports);
    for (const auto& rule : text.rules) {
        auto block = std::make_shared<const StyleBlock>(rule.declarations);
        if (block->declarations.empty()) {
            continue;
        }
        for (auto& selector : readSelectors(rule.selectors)) {
            const auto needs = AncestorFilter::needsOf(selector);
            result.rules.push_back({std::move(selector), needs, block, rule.media});
        }
    }
    return result;
}

bool holds(std::string_view condition, const Medium& medium)
{
    const auto queries = splitCss(condition, ',');
    return std::any_of(queries.begin(), queries.end(),
                       [&medium](std::string_view query) { return queryHolds(query, medium); });
}
