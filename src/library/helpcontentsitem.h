// SPDX-License-Identifier: MIT
#pragma once

#include "formats/contentsoutline.h"

#include <QString>

struct HelpContentsListViewItem;
struct HelpContentsRoot;
struct HelpIndexItem;

/// What all records of one contents file share. Each root and page record has its own.
struct HelpContentsSource {
    QString fileName;  ///< of the file whose lines name the pages; null when unknown
    QString directory; ///< of the pages, with the separator; all of the path when there is no `pageName`
    QString title;     ///< of the help set; null when unknown
    HelpContentsRoot* root = nullptr; ///< null for root records and most page records
};

/// One record: a loaded help set (HelpContentsRoot), a book or topic of a contents file (entry record), or a
/// page that is shown though no row of the tree names it (page record). Made and destroyed by HelpLibrary
/// alone.
struct HelpContentsItem {
    HelpContentsListViewItem* listViewItem = nullptr; ///< row that shows the record
    const HelpContentsSource* source = nullptr;       ///< never null once the record is made
    QStringView pageName;                             ///< in a text of the help set
    const HelpIndexItem* keyword = nullptr; ///< page records that stand for a keyword without a page
    int namedInLine = 0;                    ///< of the source's file
    EntryTarget target = EntryTarget::Page;

    /// Absolute path of the page, "#anchor" included; of an including line the name as written.
    [[nodiscard]] QString page() const
    {
        if (target == EntryTarget::Contents) {
            return pageName.toString();
        }
        return pageName.isEmpty() ? source->directory : source->directory + pageName;
    }
    [[nodiscard]] const QString& title() const { return source->title; }
    [[nodiscard]] HelpContentsRoot* root() const { return source->root; }
};

/// The record of a loaded help set.
struct HelpContentsRoot : HelpContentsItem {
    HelpContentsRoot() { source = &own; }
    Q_DISABLE_COPY_MOVE(HelpContentsRoot)

    HelpContentsSource own;
    QString fileName; ///< the contents file as it was named when loaded
    int menuId = -1;  ///< the entry that removes the help set; -1 for none
};
