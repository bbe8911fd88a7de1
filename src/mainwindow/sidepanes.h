// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>

class Desk;
class HelpContents;
class HelpIndex;
class HelpLibrary;
class PageOutline;
class QFrame;
class QSplitter;
class QTabWidget;
class SearchPane;

/// The dock beside the page with the ways to one: contents, index and search, one at a time; below the
/// contents the headings of the page. In a narrow window they lie over the page instead, and go when the user
/// has chosen something.
class SidePanes : public QDockWidget {
    Q_OBJECT

public:
    /// Library and desk must outlive it.
    SidePanes(HelpLibrary& library, Desk& desk, QWidget* parent);

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
    /// Shows or hides the headings of the page, which are made when they are first shown.
    void setOutlineShown(bool isShown);
    [[nodiscard]] bool isOutlineShown() const;
    /// How much of the height they take, in percent.
    [[nodiscard]] int outlinePart() const { return m_outlinePart; }
    void setOutlinePart(int percent);
    /// The keys that reach the panes from anywhere in the window, and change between them and the page.
    void addShortcuts(QWidget& window);

    // These show the dock, and give the pane the focus; where there is a field to type in, the field.
    void goToContents();
    void goToIndex();
    void goToSearch();
    void goToOutline();
    void goToCurrent();
    /// Shows the contents without taking the focus.
    void showContents();
    /// Selects the row of the page shown, which stays where it is.
    void selectCurrentRow();

Q_SIGNALS:
    void shownChanged(bool isShown);
    void outlineShownChanged(bool isShown);
    /// For the status bar.
    void linkHovered(const QString& page);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static constexpr int UsualOutlinePart = 35; ///< percent

    void connectChoices();
    void makeOutline();
    void goTo(QWidget* pane);
    /// Lays the panes over the page, or puts them back beside it.
    void setOverPage(bool isOverPage);
    void fitOverPage();

    Desk& m_desk;
    QTabWidget* m_tabs;
    QSplitter* m_reading; ///< the contents, with the headings below
    HelpContents* m_contents;
    PageOutline* m_outline = nullptr;
    int m_outlinePart = UsualOutlinePart;
    HelpIndex* m_index;
    SearchPane* m_search;
    QFrame* m_overPage = nullptr; ///< has the panes while the window is narrow
    bool m_takesPart = false;
    bool m_wasShown = true; ///< beside the page, before the window became narrow
};
