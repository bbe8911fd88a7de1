// SPDX-License-Identifier: MIT
#pragma once

#include "desk/pagesearch.h"
#include "desk/searchmarks.h"

#include <QWidget>

class HelpBrowser;
class HelpLibrary;
class QStatusBar;
struct HelpContentsItem;
struct HelpContentsListViewItem;
struct HelpIndexItem;

/// Where pages are read. The desk owns the page view with its history and whatever belongs to one page, and
/// shows the window one face: what is shown, which conditions of commands hold, and signals that stay the
/// same whichever view they come from. The library must outlive it.
class Desk : public QWidget {
    Q_OBJECT

public:
    /// What a command may need.
    enum class Condition {
        Page,      ///< a page is shown
        Selection, ///< of text in the page
        Back,
        Forward,
        Up,   ///< the page's row stands below another one
        Home, ///< the first page is another one
        Row,  ///< the page has a row in the contents
    };

    Desk(HelpLibrary& library, QStatusBar& statusBar, QWidget* parent);

    /// Record of the page shown; null when there is none.
    [[nodiscard]] HelpContentsItem* current() const;
    /// Row of the page shown; null when it has none.
    [[nodiscard]] const HelpContentsListViewItem* currentRow() const;
    /// What stands at the top of the view; see PagePlaces.
    [[nodiscard]] int place() const;
    /// The view in front, for what is done with its page as a whole.
    [[nodiscard]] HelpBrowser& view() const { return *m_browser; }

    /// Null empties the view.
    void show(HelpContentsItem* record);
    /// Null empties the view.
    void show(const HelpIndexItem* keyword);
    void show(const QString& page, int place);
    using QWidget::show;
    /// Shows a page that a search of all pages found, and marks what `query` finds in it.
    void showFound(const QString& page, const QString& query, bool isEnglish);
    /// Shows a page as the first one of a new history.
    void showAfresh(HelpContentsItem* record);
    /// What the empty view says.
    void setHint(const QString& hint);

    void find();
    /// Goes to the next or previous place of what a search of all pages found, while its marks are shown;
    /// else of what was looked for in the page last.
    void findAgain(bool forward);
    /// Ends the first of these that there is, and returns whether there was one: the marks of a search, the
    /// filling of a long page.
    bool stop();

Q_SIGNALS:
    void conditionChanged(Desk::Condition condition, bool holds);
    /// A page of a help set with this title is shown; empty for no page.
    void captionChanged(const QString& title);
    /// For the status bar.
    void linkHovered(const QString& text);
    /// Another page, or none, is shown.
    void pageChanged();

private:
    void connectView();
    void connectLibrary(HelpLibrary& library);

    HelpBrowser* m_browser;
    PageSearch m_search;
    SearchMarks m_marks;
};
