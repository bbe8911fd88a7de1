// SPDX-License-Identifier: MIT
#include "library/pagerecords.h"

#include "library/helpindexitem.h"

#include <algorithm>

HelpContentsItem& PageRecords::add(const HelpContentsSource& source)
{
    auto& record = m_records.emplace_back(Record{{}, source});
    record.item.source = &record.own;
    return record.item;
}

HelpContentsItem& PageRecords::add(const QString& page, const QString& namedIn, int namedInLine)
{
    auto& record = add({namedIn, page, {}, nullptr});
    record.namedInLine = namedInLine;
    return record;
}

HelpContentsItem& PageRecords::addPlace(const QString& page, const HelpContentsItem& whole)
{
    auto& record = add({whole.source->fileName, page, whole.title(), whole.root()});
    record.listViewItem = whole.listViewItem;
    record.namedInLine = whole.namedInLine;
    return record;
}

HelpContentsItem& PageRecords::of(const HelpIndexItem& keyword)
{
    const auto known = std::find_if(m_records.begin(), m_records.end(),
                                    [&](const auto& record) { return record.item.keyword == &keyword; });
    if (known != m_records.end()) {
        return known->item;
    }
    auto& record = add({keyword.source->fileName, keyword.link(), keyword.title(), nullptr});
    record.target = EntryTarget::Nothing;
    record.keyword = &keyword;
    record.namedInLine = keyword.namedInLine;
    return record;
}

void PageRecords::forget(const std::function<bool(const HelpContentsItem&)>& isForgotten)
{
    m_records.remove_if([&](const Record& record) { return isForgotten(record.item); });
}
