// SPDX-License-Identifier: MIT
#pragma once

#include "formats/contentsoutline.h"

#include <QString>

struct HelpContentsListViewItem;
struct HelpContentsRoot;
struct HelpIndexItem;

/// One record: a loaded help set (HelpContentsRoot), a book or topic of a contents file (entry record), or a
/// page that is shown though no row of the tree names it (page record). Made and destroyed by HelpLibrary
/// alone.
struct HelpContentsItem {
    HelpContentsListViewItem* listViewItem = nullptr; ///< row that shows the record
    QString directory;    ///< of the page, with the separator; all of the path when there is no `pageName`
    QStringView pageName; ///< in a text of the help set
    QString title;        ///< of the help set; null when unknown
    HelpContentsRoot* root = nullptr;       ///< null for root records and most page records
    const HelpIndexItem* keyword = nullptr; ///< page records that stand for a keyword without a page
    const QString* namedIn = nullptr;       ///< file with the line that names the page; owned by the help set
    int namedInLine = 0;
    EntryTarget target = EntryTarget::Page;

    /// Absolute path of the page, "#anchor" included.
    [[nodiscard]] QString page() const { return pageName.isEmpty() ? directory : directory + pageName; }
};

/// The record of a loaded help set.
struct HelpContentsRoot : HelpContentsItem {
    QString fileName; ///< the contents file as it was named when loaded
    int menuId = -1;  ///< the entry that removes the help set; -1 for none
};
