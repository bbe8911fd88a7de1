// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/helpactions.h"
#include "mainwindow/mainmenus.h"

#include <QMainWindow>

#include <memory>

class ContentsFiles;
class FullTextSearch;
class HelpBrowser;
class HelpLibrary;
class HelpSettings;
class PageSearch;
class SidePanes;
struct HelpContentsItem;
struct HelpIndexItem;

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

protected Q_SLOTS:
    virtual void sourceEmpty(bool value);
    virtual void fileAddContents();
    virtual void fileRemoveContents(int index);
    virtual void fileShowInstalled(int index);
    virtual void filePrint();
    virtual void filePreview();
    virtual void fileExport();
    virtual void fileExit();
    virtual void selectionChanged();
    virtual void editCopy();
    virtual void editFind();
    virtual void editFindNext();
    virtual void editFindPrevious();
    virtual void editSearchAll();
    virtual void viewZoomIn();
    virtual void viewZoomOut();
    virtual void viewZoomReset();
    virtual void viewReading();
    virtual void viewContents();
    virtual void viewGoToolbar();
    virtual void viewContentsChanged(bool visible);
    virtual void viewGoToolbarChanged(bool visible);
    virtual void viewSettings();
    virtual void goBack();
    virtual void goForward();
    virtual void goUp();
    virtual void goHome();
    virtual void goSync();
    virtual void goBackEnabled(bool value);
    virtual void goForwardEnabled(bool value);
    virtual void goUpEnabled(bool value);
    virtual void goHomeEnabled(bool value);
    virtual void goSyncEnabled(bool value);
    virtual void helpManual();
    virtual void helpAbout();

protected:
    bool event(QEvent* event) override;

private:
    void applySettings(const HelpSettings& dialog);
    void buildToolBar();
    void buildPanes();
    void showHint();
    void buildPaneShortcuts();
    void connectActions();
    void connectPanes();
    void connectBrowserAndMenus();
    void connectBackground();

    void loadSettings();
    void saveSettings() const;
    void showLastPage();
    void selectCurrentRow();
    void findAgain(bool forward);
    void saveOpenFiles() const;
    void stop();

    HelpLibrary& m_library;
    HelpActions m_actions;
    MainMenus m_menus;
    QToolBar* m_goToolBar = nullptr;
    SidePanes* m_panes = nullptr;
    HelpBrowser* m_browser = nullptr;
    PageSearch* m_search = nullptr;
    std::unique_ptr<FullTextSearch> m_fullText;
    ContentsFiles* m_contentsFiles = nullptr;
    QStringList m_refusals; ///< of files that were to be opened
    bool m_isPersistent = true;
};
