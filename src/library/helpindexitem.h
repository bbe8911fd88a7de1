// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

struct HelpContentsItem;
struct HelpIndexItem;

/// One row of the keyword list.
struct HelpIndexListBoxItem {
    HelpIndexItem* indexItem = nullptr; ///< first entry, in sort order, of those that the row stands for
    bool isSubKeyword = false;

    /// The keyword, after four blanks when it is a sub-keyword.
    [[nodiscard]] QString text() const;
};

/// One keyword entry of an index file.
struct HelpIndexItem {
    const HelpIndexListBoxItem* listBoxItem =
        nullptr; ///< row that stands for the entry; valid until the next build
    QString keyword;
    QString link;  ///< page that the entry opens: an absolute path, "#anchor" included
    QString title; ///< of the contents file that named the index file; null when unknown
    HelpContentsItem* contentsItem = nullptr; ///< root record of the help set
    HelpIndexItem* parent = nullptr;          ///< of a sub-keyword
    int group = -1;                           ///< number of the group of like entries; -1 for none
    bool hasPage = true;                      ///< false when `link` is the bare directory
    const QString* namedIn = nullptr;         ///< the index file
    int namedInLine = 0;
};

inline QString HelpIndexListBoxItem::text() const
{
    return isSubKeyword ? QStringLiteral("    ") + indexItem->keyword : indexItem->keyword;
}
