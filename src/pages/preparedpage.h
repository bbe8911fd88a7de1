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
    QString html;           ///< for rich text; targets of links are those of linkCode()
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
};

/// How pages are to be laid out.
enum class Presentation {
    Reading,  ///< by the viewer's own rules where a page was made for a web browser
    AsWritten ///< as far as rich text can
};

/// What preparing a page needs to know of its surroundings.
struct PageContext {
    QString file; ///< absolute path; empty for a page that is not in a file
    /// Width of the picture in a file in pixels; 0 when it cannot be shown, which lets its text stand for it.
    std::function<int(const QString& file)> pictureWidth;
};

/// Turns the text of a page into HTML that rich text shows well. Never fails: a text without elements is
/// shown as it is.
[[nodiscard]] PreparedPage preparePage(const QString& html, const PageContext& context,
                                       Presentation presentation);

/// What stands for the target of a page's link in prepared HTML; URLs would change letter case, blanks and
/// percent signs of the target itself.
[[nodiscard]] QString linkCode(size_t number);

/// Whether an anchor is one that the preparation added for a heading; such differ between presentations.
[[nodiscard]] bool isHeadingAnchor(const QString& name);

/// The number of a linkCode(); -1 for other texts.
[[nodiscard]] int linkNumber(const QString& code);
