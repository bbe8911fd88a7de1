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
    /// Whether to prepare all of a page that takes long to show: one that is very large or has absurdly long
    /// words or paragraphs.
    bool isWhole = false;
};

inline constexpr qsizetype LargestPage = 8 << 20; ///< characters

/// Turns the text of a page into HTML that rich text shows well. Never fails: a text without elements is
/// shown as it is.
[[nodiscard]] PreparedPage preparePage(const QString& html, const PageContext& context,
                                       Presentation presentation);

/// The same for a text that is no HTML; `html` is null when the text can be shown as it is.
[[nodiscard]] PreparedPage preparePlainText(const QString& text, const PageContext& context);

/// What stands for the target of a page's link in prepared HTML; URLs would change letter case, blanks and
/// percent signs of the target itself.
[[nodiscard]] QString linkCode(size_t number);

/// Whether an anchor is one that the preparation added for a heading; such differ between presentations.
[[nodiscard]] bool isHeadingAnchor(const QString& name);

/// The number of a linkCode(); -1 for other texts.
[[nodiscard]] int linkNumber(const QString& code);
