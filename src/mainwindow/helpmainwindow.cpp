// SPDX-License-Identifier: MIT
#include "mainwindow/helpmainwindow.h"

#include "browser/helpbrowser.h"
#include "contents/helpcontents.h"
#include "contents/helpcontentslistview.h"
#include "icons/icons.h"
#include "index/helpindex.h"
#include "library/helplibrary.h"
#include "library/installedcontents.h"
#include "mainwindow/helpsetmenu.h"
#include "mainwindow/malformedfiles.h"
#include "mainwindow/manual.h"

#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QSettings>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QTabWidget>
#include <QTextDocumentFragment>
#include <QToolBar>

#include <algorithm>

namespace {

constexpr int DockWidth = 200; // pixels
constexpr QSize ToolIconSize(16, 16);
constexpr QSize DefaultSize(590, 400);

const QString LastOpenKey = QStringLiteral("/HelpMainWindow/contents");

} // namespace

HelpMainWindow::HelpMainWindow(HelpLibrary& library, QWidget* parent)
    : QMainWindow(parent), m_library(library), m_actions(*this)
{
    setHelpCaption({});
    setWindowIcon(applicationIcon());
    buildMenus();
    buildToolBar();
    buildPanes();
    buildPaneShortcuts();
    connectActions();
    connectPanes();
    connectBrowser();
    statusBar();
    selectionChanged();
    for (auto* action :
         {m_actions.filePrintAction, m_actions.editCopyAction, m_actions.editFindAction,
          m_actions.viewZoomInAction, m_actions.viewZoomOutAction, m_actions.goBackAction,
          m_actions.goForwardAction, m_actions.goUpAction, m_actions.goHomeAction, m_actions.goSyncAction}) {
        action->setEnabled(false);
    }
    buildInstalledMenu();
    resize(DefaultSize);
}

HelpMainWindow::~HelpMainWindow()
{
    if (m_isPersistent) {
        saveSettings();
    }
    // While this is still a whole window: going away, panes and tool bar tell it about their visibility.
    delete takeCentralWidget();
    delete m_contentsDock;
    delete m_goToolBar;
}

void HelpMainWindow::buildMenus()
{
    auto* fileMenu = menuBar()->addMenu(tr("&File"));
    fileMenu->addAction(m_actions.fileAddContentsAction);
    m_removeMenu = new HelpSetMenu(tr("&Remove Contents"), fileMenu);
    m_removeMenu->setObjectName(QStringLiteral("removeMenu"));
    connect(m_removeMenu, &HelpSetMenu::chosen, this, &HelpMainWindow::fileRemoveContents);
    fileMenu->addMenu(m_removeMenu);
    fileMenu->addSeparator();
    m_installedMenu = new HelpSetMenu(tr("&Installed Contents"), fileMenu);
    m_installedMenu->setObjectName(QStringLiteral("installedMenu"));
    connect(m_installedMenu, &HelpSetMenu::chosen, this, &HelpMainWindow::fileShowInstalled);
    fileMenu->addMenu(m_installedMenu);
    fileMenu->addSeparator();
    fileMenu->addAction(m_actions.filePrintAction);
    fileMenu->addSeparator();
    fileMenu->addAction(m_actions.fileExitAction);

    auto* editMenu = menuBar()->addMenu(tr("&Edit"));
    editMenu->addActions({m_actions.editCopyAction, m_actions.editFindAction});

    auto* viewMenu = menuBar()->addMenu(tr("&View"));
    viewMenu->addActions({m_actions.viewZoomInAction, m_actions.viewZoomOutAction});
    viewMenu->addSeparator();
    viewMenu->addActions({m_actions.viewContentsAction, m_actions.viewGoToolbarAction});
    viewMenu->addSeparator();
    viewMenu->addAction(m_actions.viewSettingsAction);

    auto* goMenu = menuBar()->addMenu(tr("&Go"));
    goMenu->addActions({m_actions.goBackAction, m_actions.goForwardAction, m_actions.goUpAction,
                        m_actions.goHomeAction, m_actions.goSyncAction});

    auto* helpMenu = menuBar()->addMenu(tr("&Help"));
    helpMenu->addActions({m_actions.helpManualAction, m_actions.helpAboutAction});
}

void HelpMainWindow::buildToolBar()
{
    m_goToolBar = addToolBar(tr("Go"));
    m_goToolBar->setObjectName(QStringLiteral("goToolBar"));
    m_goToolBar->setIconSize(ToolIconSize);
    m_goToolBar->addActions({m_actions.goBackAction, m_actions.goForwardAction, m_actions.goUpAction,
                             m_actions.goHomeAction, m_actions.goSyncAction});
    connect(m_goToolBar, &QToolBar::visibilityChanged, this, &HelpMainWindow::viewGoToolbarChanged);
}

void HelpMainWindow::buildPanes()
{
    auto* splitter = new QSplitter(Qt::Horizontal, this);
    setCentralWidget(splitter);
    m_contentsDock = new QDockWidget(tr("Contents"), this);
    m_contentsDock->setObjectName(QStringLiteral("contentsDock"));
    m_contentsDock->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    addDockWidget(Qt::LeftDockWidgetArea, m_contentsDock);
    connect(m_contentsDock, &QDockWidget::visibilityChanged, this, &HelpMainWindow::viewContentsChanged);

    m_paneTabs = new QTabWidget(m_contentsDock);
    m_contentsDock->setWidget(m_paneTabs);
    const ContentsIcons icons{bookIcon(BookIcon::Close), bookIcon(BookIcon::Open), bookIcon(BookIcon::Item)};
    m_contentsPane = new HelpContents(m_library, icons, this);
    m_paneTabs->addTab(m_contentsPane, tr("Contents"));
    m_indexPane = new HelpIndex(m_library, this);
    m_paneTabs->addTab(m_indexPane, tr("Index"));

    m_browser = new HelpBrowser(m_library, splitter);
    m_browser->setHint(
        tr("No help set is open.\n\nOpen one with File, Add Contents.\nPress F1 for the manual."));
    resizeDocks({m_contentsDock}, {DockWidth}, Qt::Horizontal);
}

/// The panes have no menu entries of their own; these keys reach them.
void HelpMainWindow::buildPaneShortcuts()
{
    new QShortcut(Qt::CTRL | Qt::Key_1, this, [this] { showPane(m_contentsPane); });
    new QShortcut(Qt::CTRL | Qt::Key_2, this, [this] {
        showPane(m_indexPane);
        m_indexPane->selectLookFor();
    });
    new QShortcut(Qt::Key_F6, this, [this] {
        if (m_contentsDock->isAncestorOf(QApplication::focusWidget())) {
            m_browser->setFocus(Qt::ShortcutFocusReason);
        } else {
            showPane(m_paneTabs->currentWidget());
        }
    });
}

void HelpMainWindow::connectActions()
{
    const auto run = [this](QAction* action, void (HelpMainWindow::*slot)()) {
        connect(action, &QAction::triggered, this, slot);
    };
    run(m_actions.fileAddContentsAction, &HelpMainWindow::fileAddContents);
    run(m_actions.fileExitAction, &HelpMainWindow::fileExit);
    run(m_actions.editCopyAction, &HelpMainWindow::editCopy);
    run(m_actions.viewZoomInAction, &HelpMainWindow::viewZoomIn);
    run(m_actions.viewZoomOutAction, &HelpMainWindow::viewZoomOut);
    run(m_actions.viewContentsAction, &HelpMainWindow::viewContents);
    run(m_actions.viewGoToolbarAction, &HelpMainWindow::viewGoToolbar);
    run(m_actions.goBackAction, &HelpMainWindow::goBack);
    run(m_actions.goForwardAction, &HelpMainWindow::goForward);
    run(m_actions.goUpAction, &HelpMainWindow::goUp);
    run(m_actions.goHomeAction, &HelpMainWindow::goHome);
    run(m_actions.goSyncAction, &HelpMainWindow::goSync);
    run(m_actions.helpManualAction, &HelpMainWindow::helpManual);
    run(m_actions.helpAboutAction, &HelpMainWindow::helpAbout);
}

void HelpMainWindow::connectPanes()
{
    connect(m_contentsPane, &HelpContents::pageRequested, this,
            [this](HelpContentsItem* item) { loadHtml(item); });
    connect(m_contentsPane, &HelpContents::linkHovered, this, &HelpMainWindow::showLinkInStatusBar);
    connect(m_indexPane, &HelpIndex::pageRequested, this,
            [this](const HelpIndexItem* item) { loadHtml(item); });
    connect(m_indexPane, &HelpIndex::linkHovered, this, &HelpMainWindow::showLinkInStatusBar);
}

void HelpMainWindow::connectBrowser()
{
    connect(m_browser, &HelpBrowser::selectionChanged, this, &HelpMainWindow::selectionChanged);
    connect(m_browser, &HelpBrowser::sourceEmpty, this, &HelpMainWindow::sourceEmpty);
    connect(m_browser, &HelpBrowser::backEnabled, this, &HelpMainWindow::goBackEnabled);
    connect(m_browser, &HelpBrowser::forwardEnabled, this, &HelpMainWindow::goForwardEnabled);
    connect(m_browser, &HelpBrowser::upEnabled, this, &HelpMainWindow::goUpEnabled);
    connect(m_browser, &HelpBrowser::homeEnabled, this, &HelpMainWindow::goHomeEnabled);
    connect(m_browser, &HelpBrowser::syncEnabled, this, &HelpMainWindow::goSyncEnabled);
    connect(m_browser, &HelpBrowser::captionChanged, this, &HelpMainWindow::setHelpCaption);
    connect(m_browser, &HelpBrowser::linkHovered, this, &HelpMainWindow::showLinkInStatusBar);
    connect(m_browser, &HelpBrowser::noticed, this, &HelpMainWindow::showLinkInStatusBar);
    connect(&m_library, &HelpLibrary::helpSetAboutToBeRemoved, m_browser, &HelpBrowser::clearLinks);
}

void HelpMainWindow::loadHtml(HelpContentsItem* item)
{
    m_browser->setSource(item);
    if (item == nullptr) {
        setHelpCaption({});
    }
}

void HelpMainWindow::loadHtml(const HelpIndexItem* item)
{
    if (item == nullptr) {
        m_browser->setSource(QString());
        setHelpCaption({});
    } else {
        m_browser->setSource(*item);
    }
}

void HelpMainWindow::setHelpCaption(const QString& title)
{
    const QString caption = tr("On-line Help");
    // "[*]" is a placeholder in window titles.
    const QString plain = QString(title).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
    setWindowTitle(title.isEmpty() ? caption : caption + QStringLiteral(": ") + plain);
}

void HelpMainWindow::showLinkInStatusBar(const QString& text)
{
    statusBar()->showMessage(text);
}

void HelpMainWindow::gotoFirstPage()
{
    m_contentsPane->gotoFirstPage();
}

void HelpMainWindow::insertContents(const QString& fileName)
{
    if (!HelpLibrary::isFile(fileName)) {
        return;
    }
    const auto loaded = m_library.loadContents(fileName, m_contentsPane->currentRow());
    loaded.root->menuId = m_removeMenu->addEntry(HelpLibrary::getTitle(fileName));
    if (loaded.firstPage != nullptr) {
        m_contentsPane->gotoPage(loaded.firstPage);
    }
    m_library.buildIndex();
    reportMalformedFiles(loaded.malformedFiles, m_contentsPane);
}

void HelpMainWindow::removeContents(int menuId)
{
    const auto roots = m_library.roots();
    const auto root = std::find_if(roots.begin(), roots.end(),
                                   [menuId](const auto* candidate) { return candidate->menuId == menuId; });
    if (root == roots.end()) {
        return;
    }
    m_library.removeContents(*root);
    m_contentsPane->gotoFirstPage();
    m_removeMenu->removeEntry(menuId);
}

void HelpMainWindow::showInstalled(const QString& fileName)
{
    if (m_library.getContentsByFileName(fileName) == nullptr) {
        insertContents(fileName);
    }
    if (auto* record = m_library.getContentsByFileName(fileName)) {
        m_browser->clearLinks();
        loadHtml(record);
        goSync();
    }
}

void HelpMainWindow::loadDefault()
{
    loadFromSettings();
    if (m_library.isEmpty()) {
        for (const auto& fileName : std::as_const(m_installedFiles)) {
            insertContents(fileName);
        }
    }
    m_contentsPane->gotoFirstPage();
}

void HelpMainWindow::loadFromSettings()
{
    const QStringList stored = QSettings().value(LastOpenKey).toStringList();
    for (const auto& fileName : InstalledContents::sortingCntList(stored)) {
        insertContents(fileName);
    }
}

void HelpMainWindow::saveSettings() const
{
    QStringList open;
    for (const auto* root : m_library.roots()) {
        open.append(root->fileName);
    }
    QSettings().setValue(LastOpenKey, open.isEmpty() ? QVariant(QString()) : QVariant(open));
}

void HelpMainWindow::buildInstalledMenu()
{
    m_installedFiles = InstalledContents::dropVanishedContents();
    for (const auto& fileName : std::as_const(m_installedFiles)) {
        m_installed.insert(m_installedMenu->addEntry(HelpLibrary::getTitle(fileName)), fileName);
    }
}

void HelpMainWindow::sourceEmpty(bool value)
{
    for (auto* action : {m_actions.filePrintAction, m_actions.editCopyAction, m_actions.editFindAction,
                         m_actions.viewZoomInAction, m_actions.viewZoomOutAction}) {
        action->setEnabled(!value);
    }
}

void HelpMainWindow::fileAddContents()
{
    const QString fileName =
        QFileDialog::getOpenFileName(this, {}, {}, tr("Contents File (*.cnt);;All Files (*.*)"));
    if (!fileName.isEmpty()) {
        insertContents(QFileInfo(fileName).canonicalFilePath());
    }
}

void HelpMainWindow::fileRemoveContents(int index)
{
    removeContents(index);
}

void HelpMainWindow::fileShowInstalled(int index)
{
    if (m_installed.contains(index)) {
        showInstalled(m_installed.value(index));
    }
}

void HelpMainWindow::fileExit()
{
    close();
}

void HelpMainWindow::selectionChanged()
{
    m_actions.editCopyAction->setEnabled(m_browser->textCursor().hasSelection());
}

void HelpMainWindow::editCopy()
{
    QApplication::clipboard()->setText(m_browser->textCursor().selection().toPlainText());
}

void HelpMainWindow::viewZoomIn()
{
    m_browser->zoomIn();
}

void HelpMainWindow::viewZoomOut()
{
    m_browser->zoomOut();
}

void HelpMainWindow::viewContents()
{
    m_contentsDock->setVisible(m_actions.viewContentsAction->isChecked());
}

void HelpMainWindow::viewGoToolbar()
{
    m_goToolBar->setVisible(m_actions.viewGoToolbarAction->isChecked());
}

void HelpMainWindow::viewContentsChanged(bool visible)
{
    m_actions.viewContentsAction->setChecked(visible);
}

void HelpMainWindow::viewGoToolbarChanged(bool visible)
{
    m_actions.viewGoToolbarAction->setChecked(visible);
}

void HelpMainWindow::showPane(QWidget* pane)
{
    m_contentsDock->show();
    m_paneTabs->setCurrentWidget(pane);
    pane->setFocus(Qt::ShortcutFocusReason);
}

void HelpMainWindow::goBack()
{
    m_browser->backward();
}

void HelpMainWindow::goForward()
{
    m_browser->forward();
}

void HelpMainWindow::goUp()
{
    const auto* record = m_browser->getCurrentLink();
    if (record != nullptr && record->listViewItem != nullptr && record->listViewItem->parent != nullptr) {
        m_contentsPane->gotoPage(record->listViewItem->parent);
    }
}

void HelpMainWindow::goHome()
{
    m_browser->home();
}

void HelpMainWindow::goSync()
{
    const auto* record = m_browser->getCurrentLink();
    if (record == nullptr || record->listViewItem == nullptr) {
        return;
    }
    if (record->listViewItem->contentsItem == record) {
        m_contentsPane->gotoPage(record->listViewItem);
    } else {
        // A place within the row's page is shown; asking for the page would leave it.
        m_contentsPane->selectRow(record->listViewItem);
    }
}

void HelpMainWindow::goBackEnabled(bool value)
{
    m_actions.goBackAction->setEnabled(value);
}

void HelpMainWindow::goForwardEnabled(bool value)
{
    m_actions.goForwardAction->setEnabled(value);
}

void HelpMainWindow::goUpEnabled(bool value)
{
    m_actions.goUpAction->setEnabled(value);
}

void HelpMainWindow::goHomeEnabled(bool value)
{
    m_actions.goHomeAction->setEnabled(value);
}

void HelpMainWindow::goSyncEnabled(bool value)
{
    m_actions.goSyncAction->setEnabled(value);
}

/// Unlike an installed help set the manual keeps the history, so that Back leads to what the user was
/// reading.
void HelpMainWindow::helpManual()
{
    const QString fileName = manualContentsFile();
    if (fileName.isEmpty()) {
        showLinkInStatusBar(tr("The manual is not installed."));
        return;
    }
    if (m_library.getContentsByFileName(fileName) == nullptr) {
        insertContents(fileName);
    }
    if (auto* record = m_library.getContentsByFileName(fileName)) {
        loadHtml(record);
        goSync();
    }
}

void HelpMainWindow::helpAbout()
{
    QMessageBox::about(this, tr("About Quenda"),
                       tr("<h3>Quenda %1</h3><p>An off-line help viewer for the Linux desktop.</p>"
                          "<p>Free software under the MIT licence.<br>Built with Qt %2.</p>")
                           .arg(QCoreApplication::applicationVersion(), QLatin1StringView(qVersion())));
}

bool HelpMainWindow::event(QEvent* event)
{
    // Menus and tool buttons send an empty tip when the pointer leaves them; it would wipe the link shown.
    if (event->type() == QEvent::StatusTip && static_cast<QStatusTipEvent*>(event)->tip().isEmpty()) {
        return true;
    }
    return QMainWindow::event(event);
}
