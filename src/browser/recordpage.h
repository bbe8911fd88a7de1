// SPDX-License-Identifier: MIT
#pragma once

#include "pages/builtinpage.h"
#include "pages/pagefile.h"

#include <variant>
#include <vector>

class HelpLibrary;
struct HelpContentsItem;
struct HelpIndexItem;

/// A help set to open, and the page to show in it.
struct ClosedHelpSet {
    QString fileName;
    QString page;
};

/// What a link of a page of the viewer's own leads to.
using RecordLink = std::variant<HelpContentsItem*, HelpIndexItem*, ClosedHelpSet>;

/// The name of the page that it leads to.
[[nodiscard]] QString pageOf(const RecordLink& link);

/// A page of the viewer's own with the targets of its links.
struct RecordPage {
    BuiltinPage page;
    std::vector<RecordLink> targets;
};

/// The line of a contents or index file that names a page, or a page with a link to it, which has no line;
/// `file` is null when unknown.
struct NamedBy {
    QString file;
    int line = 0;
};

/// The page of a record that has no page file: a book with its children, or a keyword with its sub-keywords.
[[nodiscard]] RecordPage makeRecordPage(const HelpLibrary& library, const HelpContentsItem& record);

/// The page that offers to open the help set that a page belongs to.
[[nodiscard]] RecordPage makeClosedPage(const ClosedHelpSet& closed, const NamedBy& namedBy);

/// The page that says why `name` cannot be shown. `helpSet` may be null.
[[nodiscard]] BuiltinPage makeErrorPage(const QString& name, const QString& reason, const QString& helpSet,
                                        const NamedBy& namedBy);
