// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>

class HelpContents;
class HelpIndex;
class HelpLibrary;
class QFrame;
class QTabWidget;
class SearchPane;

/// The dock beside the page with the ways to one: contents, index and search, one at a time. In a narrow
/// window they lie over the page instead, and go when the user has chosen something.
class SidePanes : public QDockWidget {
    Q_OBJECT

public:
    /// The library must outlive it.
    SidePanes(HelpLibrary& library, QWidget* parent);

    [[nodiscard]] HelpContents* contents() const { return m_contents; }
    [[nodiscard]] HelpIndex* index() const { return m_index; }
    [[nodiscard]] SearchPane* search() const { return m_search; }
    /// Pixels at which no tab is cut.
    [[nodiscard]] int usefulWidth() const;
    /// Pixels for a window of this width.
    [[nodiscard]] int widthFor(int windowWidth) const;
    /// Whether the width follows that of the window, until the user gives it another one.
    void setTakesPart(bool takesPart) { m_takesPart = takesPart; }
    /// Shows or hides the panes, wherever they are.
    void setShown(bool isShown);
    /// Puts them back beside the page, for what is stored of the window.
    void putBack() { setOverPage(false); }
    /// Whether they lie over the page; then they are hidden.
    bool closeOverPage();
    /// The keys that reach the panes from anywhere in the window, and change between them and the page.
    void addShortcuts(QWidget& window, QWidget& page);

    // These show the dock, and give the pane the focus; where there is a field to type in, the field.
    void goToContents();
    void goToIndex();
    void goToSearch();
    void goToCurrent();
    /// Shows the contents without taking the focus.
    void showContents();

Q_SIGNALS:
    void shownChanged(bool isShown);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectChoices();
    void goTo(QWidget* pane);
    /// Lays the panes over the page, or puts them back beside it.
    void setOverPage(bool isOverPage);
    void fitOverPage();

    QTabWidget* m_tabs;
    HelpContents* m_contents;
    HelpIndex* m_index;
    SearchPane* m_search;
    QFrame* m_overPage = nullptr; ///< has the panes while the window is narrow
    bool m_takesPart = false;
    bool m_wasShown = true; ///< beside the page, before the window became narrow
};
