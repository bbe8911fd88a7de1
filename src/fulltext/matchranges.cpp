// SPDX-License-Identifier: MIT
#include "fulltext/matchranges.h"

#include "fulltext/querymatcher.h"
#include "fulltext/utf8ranges.h"

std::vector<TextRange> matchRanges(const QString& query, const QString& text, const QString& language,
                                   bool isTyping)
{
    const std::string utf8 = text.toStdString();
    Words words;
    words.read(utf8);
    return utf16Ranges(utf8,
                       QueryMatcher(parseQuery(query, isTyping), language.toStdString()).matches(words));
}
