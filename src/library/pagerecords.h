// SPDX-License-Identifier: MIT
#pragma once

#include "library/helpcontentsitem.h"

#include <functional>
#include <list>

struct HelpIndexItem;

/// Records of pages that have no row of their own in the contents, made when somebody asks for them.
class PageRecords {
public:
    /// Of a page of which the contents know nothing; `namedIn` is the file, with its line, that names it.
    [[nodiscard]] HelpContentsItem& add(const QString& page, const QString& namedIn, int namedInLine);
    /// Of a page that is shown by the row of `whole`, of which it is a place.
    [[nodiscard]] HelpContentsItem& addPlace(const QString& page, const HelpContentsItem& whole);
    /// What stands for a keyword without a page, the same each time.
    [[nodiscard]] HelpContentsItem& of(const HelpIndexItem& keyword);

    void forget(const std::function<bool(const HelpContentsItem&)>& isForgotten);
    [[nodiscard]] bool isEmpty() const { return m_records.empty(); }

private:
    struct Record {
        HelpContentsItem item;
        HelpContentsSource own;
    };

    HelpContentsItem& add(const HelpContentsSource& source);

    std::list<Record> m_records;
};
