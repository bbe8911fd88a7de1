// SPDX-License-Identifier: MIT
#include "pages/pagemeasure.h"

#include "markup/htmltree.h"
#include "pages/boxlook.h"
#include "pages/elementnotes.h"
#include "styles/readablecolor.h"

#include <algorithm>
#include <map>
#include <numeric>

namespace {

constexpr int HighestLevel = 6;
constexpr size_t LeastShare = 3; // one of three
constexpr float LargestFont = 1000;
constexpr float LeastHeading = 1.3F; // of the text's size: what is smaller, and in fixed pitch, is code
constexpr Rgb White = 0xFFFFFF;

template <typename Key>
Key mostUsed(const std::map<Key, size_t>& uses, Key fallback)
{
    const auto most = std::max_element(uses.begin(), uses.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    return most == uses.end() ? fallback : most->first;
}

size_t sumOf(const std::map<float, size_t>& sizes)
{
    return std::accumulate(sizes.begin(), sizes.end(), size_t(0),
                           [](size_t sum, const auto& entry) { return sum + entry.second; });
}

/// Whether a text is in a paragraph, and not in what stands around those.
bool isRunning(const HtmlNode& text)
{
    constexpr int farthest = 8;
    int steps = 0;
    const auto* node = text.parent;
    while (node != nullptr && notesOf(*node).style->isInline() && ++steps < farthest) {
        node = node->parent;
    }
    const auto kind = node == nullptr ? Element::Transparent : notesOf(*node).element;
    return kind == Element::Paragraph || kind == Element::Item || kind == Element::Description;
}

/// The largest of the sizes that much of the text has: what is small at the foot of a page can be long.
float sizeOfMost(const std::map<float, size_t>& sizes, float fallback)
{
    const size_t sum = sumOf(sizes);
    const auto found = std::find_if(sizes.rbegin(), sizes.rend(), [sum](const auto& entry) {
        return entry.second > 0 && entry.second * LeastShare >= sum;
    });
    return found == sizes.rend() ? mostUsed(sizes, fallback) : found->first;
}

/// What the element around a text, or one around that, has behind it. Code has one of its own.
Rgb groundBehind(const HtmlNode& text)
{
    constexpr int farthest = 64;
    int steps = 0;
    for (const auto* node = text.parent; node != nullptr && steps < farthest; node = node->parent, ++steps) {
        if (const auto& style = *notesOf(*node).style; style.ground && !style.isFixedPitch) {
            return *style.ground;
        }
    }
    return White;
}

/// How many bytes of text have each look.
struct Counts {
    std::map<float, size_t> sizes;
    std::map<float, size_t> running; ///< of paragraphs
    std::map<std::optional<Rgb>, size_t> colors;
    std::map<Rgb, size_t> grounds;
    size_t all = 0; ///< without blanks, as all of these
    size_t fixed = 0;

    void add(const HtmlNode& text)
    {
        if (isBlank(text.content)) {
            return;
        }
        const auto& notes = notesOf(*text.parent);
        const size_t count = text.content.size();
        const size_t counted = notes.style->isFixedPitch ? 0 : count;
        all += count;
        fixed += count - counted;
        sizes[notes.style->fontSize] += counted;
        running[notes.style->fontSize] += isRunning(text) ? counted : 0;
        grounds[groundBehind(text)] += count;
        if (!notes.isInLink) {
            colors[notes.style->color] += count;
        }
    }
};

} // namespace

PageMeasure::PageMeasure(const HtmlNode& body, const HtmlNode& content)
{
    Counts counts;
    std::array<float, HighestLevel + 1> levels{}; // the largest font of each
    for (const auto* node = &content; node != nullptr;) {
        bool isEntered = true;
        if (isText(*node)) {
            counts.add(*node);
        } else {
            const auto& notes = notesOf(*node);
            const bool isSeen = !notes.isHidden && !notes.isFurniture && notes.element != Element::Ignored;
            const bool isHeading = notes.element == Element::Heading;
            if (isSeen && isHeading) {
                auto& largest = levels[size_t(node->name[1] - '0')];
                largest = std::max(largest, notes.style->isFixedPitch ? notes.style->fontSize : LargestFont);
            }
            isEntered = isSeen && !isHeading;
        }
        node = nextNode(node, &content, isEntered);
    }
    letters = counts.all;
    bodySize = std::max(1.F, sizeOfMost(sumOf(counts.running) > 0 ? counts.running : counts.sizes, bodySize));
    const auto ofBody = notesOf(body).style->color;
    text = mostUsed(counts.colors, ofBody);
    text = text && chroma(*text) >= LeastChroma ? ofBody : text;
    isFixedPitch = notesOf(body).style->isFixedPitch && counts.fixed * 2 > letters;
    ground = mostUsed(counts.grounds, White);
    for (size_t level = 1; level <= HighestLevel; ++level) {
        ranks[level] = rankCount;
        rankCount += levels[level] >= bodySize * LeastHeading ? 1 : 0;
    }
}

const char* PageMeasure::headingSize(int level, const ComputedStyle& style) const
{
    constexpr int many = 4;
    if (style.isFixedPitch && style.fontSize < bodySize * LeastHeading) {
        return "usual";
    }
    const int rank = ranks[size_t(std::clamp(level, 1, HighestLevel))];
    if (rankCount >= many && rank == 0) {
        return "largest";
    }
    return rank == 0 || (rankCount >= many && rank == 1) ? "larger" : "large";
}
