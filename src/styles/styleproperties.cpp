// SPDX-License-Identifier: MIT
#include "styles/styleproperties.h"

#include "styles/cssreader.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace {

const StyleProperty* propertyOf(std::string_view name)
{
    static const auto table = [] {
        std::unordered_map<std::string_view, const StyleProperty*> byName;
        for (const auto properties : {textProperties(), boxProperties(), layoutProperties()}) {
            for (const auto& property : properties) {
                byName[property.name] = &property;
            }
        }
        return byName;
    }();
    const auto found = table.find(name);
    return found == table.end() ? nullptr : found->second;
}

bool isForSight(std::string_view name, std::string_view value)
{
    static constexpr std::array<std::string_view, 5> always{"display", "visibility", "position", "clip",
                                                            "clip-path"};
    static constexpr std::array<std::string_view, 4> places{"left", "top", "text-indent", "margin-left"};
    const auto has = [name](const auto& names) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    static constexpr std::array<std::string_view, 3> sizes{"width", "height", "overflow"};
    const bool isSmall = value == "hidden" || value == "1px" || value.substr(0, 1) == "0";
    return has(always) || (has(sizes) && isSmall) || (has(places) && !value.empty() && value.front() == '-');
}

/// In lower case, but for what is shown or names something.
std::string normalized(std::string_view name, std::string_view value)
{
    const bool isCaseful = name == "content" || name.substr(0, 8) == "counter-";
    return isCaseful ? std::string(value) : lowerCss(value);
}

} // namespace

std::vector<StyleDeclaration> understood(const std::vector<CssDeclaration>& declarations)
{
    std::vector<StyleDeclaration> result;
    for (const auto& written : declarations) {
        const bool isVariable = written.name.compare(0, 2, "--") == 0;
        const auto* property = isVariable ? nullptr : propertyOf(written.name);
        if (property == nullptr && !isVariable) {
            continue;
        }
        auto& declaration = result.emplace_back();
        declaration.property = property;
        declaration.isImportant = written.isImportant;
        declaration.name = isVariable ? written.name : std::string();
        declaration.value = isVariable ? written.value : normalized(written.name, written.value);
        declaration.hasVariable = declaration.value.find("var(") != std::string::npos;
        declaration.isForSight = !isVariable && isForSight(written.name, declaration.value);
        declaration.isForFont = written.name == "font" || written.name == "font-size";
    }
    return result;
}

std::vector<std::string_view> wordsOf(std::string_view value)
{
    auto words = splitCss(value, ' ');
    std::erase_if(words, [](std::string_view word) { return word.empty(); });
    return words;
}
