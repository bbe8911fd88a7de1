// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <vector>

struct PageHeading {
    int level; ///< from 1 to 6
    QString text;
    QString anchor; ///< a name in the prepared page that leads here
};

struct PageLink {
    QString href; ///< as the page wrote it
    QString text;
};

/// How the part of a page that holds what it says was found.
enum class ContentFoundBy { WholePage, Landmark, Generator, Density };

/// A page made ready for the view, with what else there is to know of it.
struct PreparedPage {
    QString html; ///< for rich text; targets of links are those of linkCode()
    /// Positions in a long `html`, in order, at which it can be divided into parts to be shown one after
    /// another.
    std::vector<qsizetype> joints;
    bool isReading = false; ///< laid out by the viewer's own rules, otherwise as written
    QString title;
    QString language; ///< as the page declares it, such as "en"
    /// What relative names start from, "/dir/file" or "/dir/"; the page's own file unless it says otherwise.
    QString base;
    QString refresh; ///< the page that this one passes its readers on to, as written; empty for none
    std::vector<PageHeading> headings;
    std::vector<PageLink> links;
    QString text; ///< the main content as plain text
    ContentFoundBy foundBy = ContentFoundBy::WholePage;
    bool isBeginning = false; ///< the rest was left out, as it would take long to show
};
