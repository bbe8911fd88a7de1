// SPDX-License-Identifier: MIT
#include "pages/longtable.h"

#include "markup/htmltree.h"

#include <algorithm>
#include <charconv>
#include <numeric>

namespace {

constexpr size_t FewRows = 100;
constexpr size_t LongestLine = 60; // bytes of a cell that count
constexpr size_t LongestWord = 24; // bytes
constexpr size_t ManyColumns = 50;

template <typename Use>
void forEachElement(const HtmlNode& parent, Use use)
{
    for (const auto* child = parent.firstChild; child != nullptr; child = child->next) {
        if (isElement(*child)) {
            use(*child);
        }
    }
}

std::vector<const HtmlNode*> rowsOf(const HtmlNode& table)
{
    std::vector<const HtmlNode*> rows;
    forEachElement(table, [&rows](const HtmlNode& child) {
        if (isElement(child, "tr")) {
            rows.push_back(&child);
        } else {
            forEachElement(child, [&rows](const HtmlNode& row) {
                if (isElement(row, "tr")) {
                    rows.push_back(&row);
                }
            });
        }
    });
    return rows;
}

size_t spanOf(const HtmlNode& cell, std::string_view name)
{
    const auto text = attribute(cell, name);
    size_t span = 1;
    std::from_chars(text.data(), text.data() + text.size(), span);
    return std::max<size_t>(1, span);
}

/// How much room a cell asks for: its words are not to be broken, and long texts are not to become high.
size_t weightOf(const HtmlNode& cell)
{
    size_t length = 1;
    size_t longestWord = 1;
    const auto* node = nextNode(&cell, &cell);
    while (node != nullptr && length < LongestLine) {
        length += isBlank(node->content) ? 0 : node->content.size();
        anyWord(node->content, [&longestWord](std::string_view word) {
            longestWord = std::max(longestWord, word.size());
            return false;
        });
        node = nextNode(node, &cell);
    }
    return 2 * std::min(longestWord, LongestWord) + std::min(length, LongestLine) / 2;
}

} // namespace

std::vector<int> columnPercents(const HtmlNode& table)
{
    const auto rows = rowsOf(table);
    if (rows.size() < FewRows) {
        return {};
    }
    std::vector<size_t> weights;
    bool isDivisible = true;
    for (const auto* row : rows) {
        size_t column = 0;
        forEachElement(*row, [&](const HtmlNode& cell) {
            const size_t span = std::min(spanOf(cell, "colspan"), ManyColumns);
            isDivisible = isDivisible && spanOf(cell, "rowspan") == 1 && column + span <= ManyColumns;
            if (isDivisible) {
                weights.resize(std::max(weights.size(), column + span), 1);
                weights[column] = span == 1 ? std::max(weights[column], weightOf(cell)) : weights[column];
                column += span;
            }
        });
    }
    const size_t sum = std::accumulate(weights.begin(), weights.end(), size_t(0));
    if (!isDivisible || sum == 0) {
        return {};
    }
    std::vector<int> percents(weights.size());
    std::transform(weights.begin(), weights.end(), percents.begin(),
                   [sum](size_t weight) { return std::max(1, int(weight * 100 / sum)); });
    return percents;
}
