// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct ComputedStyle;
struct HtmlNode;

/// The counters of style sheets, while the elements of a page are visited in their order.
class Counters {
public:
    /// An element, or what is put before or behind its content, begins; ends with leave().
    void enter(const ComputedStyle& style);
    void leave();

    /// The text of a `content` property of the element that was entered last; without signs that only a font
    /// of the page's own could show.
    [[nodiscard]] std::string text(std::string_view content, const HtmlNode& element) const;

private:
    struct Counter {
        int value;
        int depth; ///< of the element with whose end it ends
    };
    using Values = std::vector<Counter>;

    void change(std::string_view names, int usual, bool isReset);
    [[nodiscard]] std::string value(std::string_view arguments, bool isNested) const;
    [[nodiscard]] std::string functionText(std::string_view name, std::string_view arguments,
                                           const HtmlNode& element) const;

    std::unordered_map<std::string, Values> m_counters;
    std::vector<std::vector<std::string>> m_made; ///< by depth, what ends there
    int m_depth = 0;
};
