// SPDX-License-Identifier: MIT
#pragma once

#include "desk/pagesearch.h"
#include "desk/searchmarks.h"

#include <QTimer>
#include <QWidget>

class ArrivalMark;
class Breadcrumb;
class FindLine;
class HelpBrowser;
class HelpLibrary;
class LibraryPage;
class QStackedWidget;
class QStatusBar;
struct HelpContentsItem;
struct HelpContentsListViewItem;
struct HelpIndexItem;

/// Where pages are read. The desk owns the page view with its history and whatever belongs to one page, and
/// the library page that stands in its place while there is none. It shows the window one face: what is
/// shown, which conditions of commands hold, and signals that stay the same whichever view they come from.
/// The library must outlive it.
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
    /// The user goes through pages by keys and has come to this one. Of such pages only the one enters the
    /// history where the user stays for half a second, or does something else.
    void showPassing(HelpContentsItem* record);
    void show(const QString& page, int place);
    using QWidget::show;
    /// Shows a page that a search of all pages found, and marks what `query` finds in it.
    void showFound(const QString& page, const QString& query, const QString& language);
    /// Shows a page as the first one of a new history.
    void showAfresh(HelpContentsItem* record);
    void scrollTo(const QString& anchor);
    /// Shows the library page; a page that is shown stays behind it.
    void showLibrary();
    [[nodiscard]] bool isLibraryShown() const;

    void find();
    void openFindLine();
    /// Goes to the next or previous place of what a search of all pages found, while its marks are shown;
    /// else of what was looked for in the page last; else opens the line under the page.
    void findAgain(bool forward);
    /// Ends the first of these that there is, and returns whether there was one: the line under the page, the
    /// marks of a search, the library page in front of a page, the filling of a long page.
    bool stop();

Q_SIGNALS:
    void conditionChanged(Desk::Condition condition, bool holds);
    /// A page of a help set with this title is shown; empty for no page.
    void captionChanged(const QString& title);
    /// A help set is to be opened, and this page of it shown.
    void helpSetRequested(const QString& fileName, const QString& page);
    /// For the status bar.
    void linkHovered(const QString& text);
    /// Another page, or none, is shown.
    void pageChanged();
    /// The row of the page shown is another one; null for none.
    void rowChanged(const HelpContentsListViewItem* row);
    /// The library page has come to the front and wants to be filled.
    void libraryShown(LibraryPage* page);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void connectView();
    void connectLibrary();
    void currentChanged();
    void recover();
    void showHint();
    /// Brings the view to the front, or the library page when there is no page and none is coming.
    void chooseFront();
    void showPage();
    FindLine& findLine();

    HelpLibrary& m_library;
    HelpBrowser* m_browser;
    Breadcrumb* m_breadcrumb;
    QStackedWidget* m_front;
    LibraryPage* m_libraryPage = nullptr; ///< made when it is first shown, like the line
    FindLine* m_findLine = nullptr;
    bool m_libraryStays = false; ///< in front, whatever becomes of the page
    ArrivalMark* m_arrival;
    QTimer m_passing; ///< runs while a page passed by may still leave the history
    PageSearch m_search;
    SearchMarks m_marks;
};
