// SPDX-License-Identifier: MIT
#include "fulltext/querywords.h"

#include "fulltext/words.h"

#include <algorithm>

namespace {

/// The parts of a folded name between its dots and colons.
std::vector<std::string> segmentsOf(const std::string& name)
{
    std::vector<std::string> segments;
    for (size_t at = 0; at < name.size();) {
        const size_t end = std::min(name.find_first_of(".:", at), name.size());
        if (end > at) {
            segments.push_back(name.substr(at, end - at));
        }
        at = end + 1;
    }
    return segments;
}

} // namespace

QueryWords::QueryWords(const QString& text)
{
    const std::string utf8 = text.toStdString();
    Words words;
    words.read(utf8);
    for (const auto& word : words.all()) {
        const bool isEndOfPairs =
            word.isBeginning && &word != &words.all().front() && (&word)[-1].end == word.end;
        if (word.isLiteral) {
            m_literals.emplace_back(words.folded(word));
        } else if (!word.isPart && !isEndOfPairs) {
            m_whole.emplace_back(words.folded(word));
        }
    }
    if (m_whole.size() == 1) {
        m_segments = segmentsOf(m_whole.front());
    }
    m_isLoneCharacter = words.all().size() == 1 && words.all().front().isBeginning;
}
