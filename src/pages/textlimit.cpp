// SPDX-License-Identifier: MIT
#include "pages/textlimit.h"

#include "markup/htmltree.h"

#include <algorithm>

namespace {

/// Whether a line may end here: at blanks, and at each ideograph, of which this is the first byte then.
bool isBreak(char byte)
{
    constexpr unsigned char firstIdeograph = 0xE3;
    return isBlank(byte) || static_cast<unsigned char>(byte) >= firstIdeograph;
}

size_t lastBreak(std::string_view text)
{
    const auto found = std::find_if(text.rbegin(), text.rend(), isBreak);
    return found == text.rend() ? std::string_view::npos : size_t(text.rend() - found) - 1;
}

} // namespace

void TextLimit::beginParagraph(bool isInTable)
{
    m_wordLength = m_paragraphLength = 0;
    m_paragraphCost = isInTable ? TableParagraphCost : ParagraphCost;
    m_partCost += m_paragraphCost;
    m_isReached = m_isReached || (!m_isOff && m_partCost > LargestPart);
}

std::string_view TextLimit::take(std::string_view text, bool isVerbatim)
{
    if (m_isOff) {
        return text;
    }
    m_wordLength += FormatCost;
    m_paragraphLength += FormatCost;
    const auto lines = isVerbatim ? size_t(std::count(text.begin(), text.end(), '\n')) : 0;
    const size_t cost = FormatCost + text.size() + lines * m_paragraphCost;
    if (m_wordLength + text.size() > LongestWord || m_paragraphLength + text.size() > LongestParagraph ||
        m_partCost + cost > LargestPart) {
        text = cutOff(text, isVerbatim);
    }
    m_partCost += cost;
    const size_t lineEnd = lines > 0 ? text.rfind('\n') : std::string_view::npos;
    const auto lengthBehind = [text](size_t position, size_t before) {
        return position == std::string_view::npos ? before + text.size() : text.size() - position - 1;
    };
    m_wordLength = lengthBehind(lastBreak(text), m_wordLength);
    m_paragraphLength = lengthBehind(lineEnd, m_paragraphLength);
    return text;
}

std::string_view TextLimit::cutOff(std::string_view text, bool isVerbatim)
{
    size_t wordLength = m_wordLength;
    size_t paragraphLength = m_paragraphLength;
    size_t cost = m_partCost;
    for (size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool isLineEnd = isVerbatim && byte == '\n';
        wordLength = isBreak(text[i]) ? 0 : wordLength + 1;
        paragraphLength = isLineEnd ? 0 : paragraphLength + 1;
        cost += isLineEnd ? m_paragraphCost : 1;
        const bool isCharacterBegin = (byte & 0xC0U) != 0x80U;
        if (isCharacterBegin &&
            (wordLength > LongestWord || paragraphLength > LongestParagraph || cost > LargestPart)) {
            m_isReached = true;
            return text.substr(0, i);
        }
    }
    return text;
}
