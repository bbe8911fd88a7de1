// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

struct HelpContentsRoot;
struct HelpIndexItem;

/// One row of the keyword list.
struct HelpIndexListBoxItem {
    HelpIndexItem* indexItem = nullptr; ///< first entry, in sort order, of those that the row stands for
    bool isSubKeyword = false;

    /// The keyword, after four blanks when it is a sub-keyword.
    [[nodiscard]] QString text() const;
};

/// What all entries of one index file share.
struct HelpIndexSource {
    QString fileName;  ///< of the index file
    QString directory; ///< that its pages are relative to; ends with "/"
    QString title;     ///< of the contents file that named the index file; null when unknown
    HelpContentsRoot* contentsItem = nullptr; ///< root record of the help set
};

/// One keyword entry of an index file.
struct HelpIndexItem {
    const HelpIndexListBoxItem* listBoxItem =
        nullptr;          ///< row that stands for the entry; valid until the next build
    QStringView keyword;  ///< in the text of the index file, as is `pageName`
    QStringView pageName; ///< empty when the entry names no page
    const HelpIndexSource* source = nullptr;
    int parentDistance = 0; ///< to the keyword of a sub-keyword, which stands before it; 0 for none
    int group = -1;         ///< number of the group of like entries; -1 for none
    int namedInLine = 0;

    /// The keyword of a sub-keyword; else null.
    [[nodiscard]] const HelpIndexItem* parent() const
    {
        return parentDistance == 0 ? nullptr : this - parentDistance;
    }

    [[nodiscard]] bool hasPage() const { return !pageName.isEmpty(); }
    /// Page that the entry opens: an absolute path, "#anchor" included; without a page the bare directory.
    [[nodiscard]] QString link() const
    {
        return hasPage() ? source->directory + pageName : source->directory;
    }
    [[nodiscard]] const QString& title() const { return source->title; }
};

inline QString HelpIndexListBoxItem::text() const
{
    return isSubKeyword ? QStringLiteral("    ") + indexItem->keyword : indexItem->keyword.toString();
}
