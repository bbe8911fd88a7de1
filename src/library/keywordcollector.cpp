// SPDX-License-Identifier: MIT
#include "library/keywordcollector.h"

#include <QCoreApplication>

#include <algorithm>

void KeywordCollector::begin(const KeywordFile& file, size_t atMost)
{
    auto& items = m_entries.items;
    const size_t needed = std::min(items.size() + atMost, MaximumKeywords);
    if (needed > items.capacity()) {
        items.reserve(std::max(needed, 2 * items.capacity()));
    }
    m_entries.sources.emplace_back(std::make_unique<HelpIndexSource>(
        HelpIndexSource{file.fileName, file.directory, file.title, m_root}));
    m_first = int(items.size());
}

QStringView KeywordCollector::keep(const QString& text)
{
    return m_entries.texts.emplace_back(text);
}

bool KeywordCollector::add(const IndexLine& line)
{
    auto& items = m_entries.items;
    if (items.size() == MaximumKeywords) {
        return false;
    }
    auto& item = items.emplace_back();
    item.keyword = line.keyword;
    item.pageName = line.page;
    item.source = m_entries.sources.back().get();
    item.parentDistance = line.parent < 0 ? 0 : int(items.size()) - 1 - (m_first + line.parent);
    item.namedInLine = line.line;
    return true;
}

void KeywordCollector::leaveOutRest(const KeywordFile& file)
{
    m_entries.limitReached =
        QCoreApplication::translate(
            "HelpSet", "More than %1 keywords, or far too many lines of them; the rest is not read")
            .arg(MaximumKeywords);
    note({file.namedIn, file.namedInLine, Problem::Severity::Error, m_entries.limitReached});
}
