// SPDX-License-Identifier: MIT
#include "search/searchsources.h"

#include "library/helplibrary.h"
#include "library/helpset.h"

#include <QSet>

#include <utility>

namespace {

void addRows(SearchSource& source, std::span<HelpContentsListViewItem* const> topRows)
{
    // Without recursion: outlines may be thousands of levels deep.
    struct Level {
        std::span<HelpContentsListViewItem* const> rows;
        size_t next;
    };
    std::vector<Level> levels{{topRows, 0}};
    while (!levels.empty()) {
        auto& [rows, next] = levels.back();
        if (next == rows.size()) {
            levels.pop_back();
            continue;
        }
        const auto& row = *rows[next++];
        const auto& record = *row.contentsItem;
        const bool hasPage = record.target == EntryTarget::Page;
        source.addTopic(hasPage ? QStringView(record.source->directory) : QStringView(),
                        hasPage ? record.pageName : QStringView(), row.text, int(levels.size()) - 1);
        levels.push_back({row.children, 0});
    }
}

/// The keywords with a page. Those of an index file that many contents files name say nothing more each time.
template <typename Use>
void visitKeywords(const HelpSet& set, Use use)
{
    QSet<std::pair<QString, QString>> files;
    const HelpIndexItem* before = nullptr;
    bool isRepeated = false;
    for (const auto& item : set.indexItems()) {
        if (before == nullptr || item.source != before->source) {
            const auto known = files.size();
            files.insert({item.source->fileName, item.source->directory});
            isRepeated = files.size() == known;
        }
        before = &item;
        if (!isRepeated && item.hasPage()) {
            use(item);
        }
    }
}

} // namespace

SearchSource makeSearchSource(const HelpSet& set)
{
    SearchSource source(HelpLibrary::absoluteName(set.root().fileName), set.ownTitle());
    qsizetype text = 0; // nearly all of it
    for (const auto& record : set.records()) {
        const auto* row = record.listViewItem;
        text += record.source->directory.size() + record.pageName.size() +
                (row == nullptr ? 0 : row->text.size());
    }
    size_t keywords = 0;
    visitKeywords(set, [&](const HelpIndexItem& item) {
        text += item.source->directory.size() + item.pageName.size() + item.keyword.size();
        ++keywords;
    });
    source.reserve(set.records().size(), keywords, text);
    addRows(source, set.topRows());
    visitKeywords(set, [&](const HelpIndexItem& item) {
        source.addKeyword(item.source->directory, item.pageName, item.keyword);
    });
    return source;
}
