// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>

class HelpContents;
class HelpIndex;
class HelpLibrary;
class QTabWidget;
class SearchPane;

/// The dock beside the page with the ways to one: contents, index and search, one at a time.
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

    // These show the dock, and give the pane the focus; where there is a field to type in, the field.
    void goToContents();
    void goToIndex();
    void goToSearch();
    void goToCurrent();
    /// Shows the contents without taking the focus.
    void showContents();

private:
    void goTo(QWidget* pane);

    QTabWidget* m_tabs;
    HelpContents* m_contents;
    HelpIndex* m_index;
    SearchPane* m_search;
};
