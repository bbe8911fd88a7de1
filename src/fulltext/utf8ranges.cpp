// SPDX-License-Identifier: MIT
#include "fulltext/utf8ranges.h"

#include <algorithm>

namespace {

/// Walks through a text and counts UTF-16 code units.
class Counter {
public:
    explicit Counter(std::string_view utf8) : m_utf8(utf8) {}

    /// Of the part before a byte; positions never decrease.
    qsizetype unitsBefore(size_t byte)
    {
        for (; m_byte < byte; ++m_byte) {
            const auto unit = static_cast<unsigned char>(m_utf8[m_byte]);
            const bool isContinued = (unit & 0xC0U) == 0x80;
            m_units += isContinued ? 0 : unit >= 0xF0 ? 2 : 1;
        }
        return m_units;
    }

private:
    std::string_view m_utf8;
    size_t m_byte = 0;
    qsizetype m_units = 0;
};

} // namespace

std::vector<TextRange> utf16Ranges(std::string_view utf8, std::vector<QueryMatcher::Match> matches)
{
    std::sort(matches.begin(), matches.end(), [](const auto& a, const auto& b) { return a.begin < b.begin; });
    std::vector<TextRange> ranges;
    Counter counter(utf8);
    uint32_t end = 0;
    for (const auto& match : matches) {
        if (!ranges.empty() && match.begin <= end) {
            if (match.end > end) {
                ranges.back().length = counter.unitsBefore(match.end) - ranges.back().start;
            }
        } else {
            const qsizetype start = counter.unitsBefore(match.begin);
            ranges.push_back({start, counter.unitsBefore(match.end) - start});
        }
        end = std::max(end, match.end);
    }
    return ranges;
}
