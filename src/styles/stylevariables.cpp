// SPDX-License-Identifier: MIT
#include "styles/stylevariables.h"

#include "styles/pagestyles.h"

namespace {

constexpr int MostVariables = 32;     // put into a value
constexpr size_t LongestValue = 4096; // bytes

const std::string* valueOf(const StyleVariables* variables, const std::string& name)
{
    for (; variables != nullptr; variables = variables->outer) {
        if (const auto found = variables->values.find(name); found != variables->values.end()) {
            return &found->second;
        }
    }
    return nullptr;
}

/// Where the bracket closes that opens before a position; npos if it does not.
size_t closing(std::string_view text, size_t from)
{
    int depth = 1;
    for (; from < text.size(); ++from) {
        depth += text[from] == '(' ? 1 : text[from] == ')' ? -1 : 0;
        if (depth == 0) {
            return from;
        }
    }
    return std::string_view::npos;
}

} // namespace

std::optional<std::string> withVariables(std::string_view value, const StyleVariables* variables)
{
    constexpr std::string_view open = "var(";
    std::string result(value);
    int puts = 0;
    for (size_t at = result.find(open); at != std::string::npos; at = result.find(open, at)) {
        const size_t end = closing(result, at + open.size());
        if (end == std::string::npos || result.size() > LongestValue || ++puts > MostVariables) {
            return std::nullopt;
        }
        const auto inner = std::string_view(result).substr(at + open.size(), end - at - open.size());
        const size_t comma = inner.find(',');
        const auto* set = valueOf(variables, std::string(trimmedCss(inner.substr(0, comma))));
        if (set == nullptr && comma == std::string_view::npos) {
            return std::nullopt;
        }
        const std::string put = set != nullptr ? *set : std::string(trimmedCss(inner.substr(comma + 1)));
        result.replace(at, end - at + 1, put);
    }
    return result;
}
