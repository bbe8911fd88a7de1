// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

/// How much of a page's text can be laid out without holding the window: the toolkit's time grows faster than
/// the length of a word or a paragraph, and a part of a page cannot be interrupted.
class TextLimit {
public:
    static constexpr size_t LongestWord = 1 << 16;      ///< bytes without a blank
    static constexpr size_t LongestParagraph = 1 << 20; ///< bytes
    static constexpr size_t LargestPart = 1 << 21;      ///< bytes
    // What else takes time, in bytes that take as long.
    static constexpr size_t FormatCost = 16; ///< of a text in a format of its own
    static constexpr size_t ParagraphCost = 32;
    static constexpr size_t TableParagraphCost = 128; ///< of a paragraph in a table

    explicit TextLimit(bool isOff) : m_isOff(isOff) {}

    /// The part of a text, UTF-8, that is within the limit. In a verbatim text each line is a paragraph.
    [[nodiscard]] std::string_view take(std::string_view text, bool isVerbatim);
    void beginParagraph(bool isInTable);
    /// What comes next is shown by itself.
    void beginPart() { m_partCost = 0; }
    /// Whether there was too much text.
    [[nodiscard]] bool isReached() const { return m_isReached; }

private:
    [[nodiscard]] std::string_view cutOff(std::string_view text, bool isVerbatim);

    bool m_isOff;
    bool m_isReached = false;
    size_t m_wordLength = 0; ///< since the last blank
    size_t m_paragraphLength = 0;
    size_t m_partCost = 0;
    size_t m_paragraphCost = ParagraphCost;
};
