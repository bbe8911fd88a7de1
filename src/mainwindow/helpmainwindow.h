// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/helpactions.h"
#include "mainwindow/mainmenus.h"

#include <QMainWindow>

#include <memory>

class ContentsFiles;
class Desk;
class FullTextSearch;
class HelpLibrary;
class LibraryKeeper;
class SidePanes;
struct HelpContentsItem;
struct HelpIndexItem;
struct Wish;

/// The viewer's window: commands, panes and page view, and the wiring between them. The library must outlive
/// it.
class HelpMainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit HelpMainWindow(HelpLibrary& library, QWidget* parent = nullptr);
    ~HelpMainWindow() override;

    /// Whether the window leaves its state in the settings store when it is destroyed, and the indexes of its
    /// help sets in the cache; it does by default.
    void setPersistent(bool persistent);

    /// The one way in for what comes from outside. Returns a sentence for each contents file that cannot be
    /// opened.
    QStringList fulfil(const Wish& wish);

    /// Loads one contents file into both panes and shows its first page. Skips a file that cannot be opened
    /// and returns a sentence that says why; empty otherwise.
    QString insertContents(const QString& fileName);
    /// Unloads the contents file whose "Remove Contents" entry has this id.
    void removeContents(int menuId);
    /// Makes sure that a contents file is loaded and shows its first page.
    void showInstalled(const QString& fileName);
    /// Loads the contents files that were open last, else all installed ones, and shows the first page.
    void loadDefault();
    void gotoFirstPage();

    /// Null empties the page view.
    void loadHtml(HelpContentsItem* item);
    void loadHtml(const HelpIndexItem* item);
    void setHelpCaption(const QString& title);
    void showLinkInStatusBar(const QString& text);

protected:
    bool event(QEvent* event) override;

private:
    void buildPanes();
    void connectFileCommands();
    void connectCommands();
    void connectPanes();
    void connectDesk();
    void connectKeeper();
    void connectBackground();

    void addContents();
    void searchIn(const QString& contentsFile);
    void showPage(const QString& page, int place);
    void helpManual();
    void stop();

    HelpLibrary& m_library;
    Desk* m_desk;
    HelpActions m_actions;
    MainMenus m_menus;
    QToolBar* m_goToolBar;
    SidePanes* m_panes = nullptr;
    std::unique_ptr<FullTextSearch> m_fullText;
    ContentsFiles* m_contentsFiles = nullptr;
    LibraryKeeper* m_keeper = nullptr;
    bool m_wasRefused = false; ///< a file that was to be opened
    bool m_isPersistent = true;
};
