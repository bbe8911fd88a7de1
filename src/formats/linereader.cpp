// SPDX-License-Identifier: MIT
#include "formats/linereader.h"

#include <algorithm>

size_t lineBound(QStringView text)
{
    return size_t(std::count_if(text.begin(), text.end(), [](QChar c) { return c == u'\n' || c == u'\r'; })) +
           1;
}

bool LineReader::next()
{
    if (m_position >= m_text.size()) {
        return false;
    }
    m_nextLineFeed = find(u'\n', m_nextLineFeed);
    m_nextReturn = find(u'\r', m_nextReturn);
    const qsizetype end = std::min(m_nextLineFeed, m_nextReturn);
    m_line = m_text.sliced(m_position, std::min(end - m_position, MaximumLength));
    const bool pair = end == m_nextReturn && m_nextLineFeed == end + 1;
    m_position = end + (pair ? 2 : 1);
    ++m_number;
    return true;
}

// What was found ahead is kept: a text with one kind of line end only is searched once for the other.
qsizetype LineReader::find(QChar end, qsizetype cached) const
{
    if (cached >= m_position) {
        return cached;
    }
    const qsizetype found = m_text.indexOf(end, m_position);
    return found < 0 ? m_text.size() : found;
}
