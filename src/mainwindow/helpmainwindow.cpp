// SPDX-License-Identifier: MIT
#include "mainwindow/helpmainwindow.h"

#include "browser/helpbrowser.h"
#include "browser/helpsettings.h"
#include "browser/messages.h"
#include "contents/helpcontents.h"
#include "icons/icons.h"
#include "index/helpindex.h"
#include "library/helplibrary.h"
#include "mainwindow/backgroundprogress.h"
#include "mainwindow/contentsfiles.h"
#include "mainwindow/fulltextsearch.h"
#include "mainwindow/helpsetmenu.h"
#include "mainwindow/manual.h"
#include "mainwindow/outlinemenu.h"
#include "mainwindow/pagesearch.h"
#include "mainwindow/printcommands.h"
#include "mainwindow/sidepanes.h"
#include "mainwindow/windowsettings.h"
#include "search/searchpane.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QToolBar>

#include <algorithm>

namespace {

constexpr QSize ToolIconSize(16, 16);
constexpr qsizetype MaximumRefusals = 5; // that the empty page view tells

} // namespace

HelpMainWindow::HelpMainWindow(HelpLibrary& library, QWidget* parent)
    : QMainWindow(parent), m_library(library), m_actions(*this), m_menus(*menuBar(), m_actions)
{
    setHelpCaption({});
    setWindowIcon(applicationIcon());
    buildToolBar();
    buildPanes();
    buildPaneShortcuts();
    connectActions();
    connectPanes();
    connectBrowserAndMenus();
    connectBackground();
    HelpMainWindow::selectionChanged();
    HelpMainWindow::sourceEmpty(true);
    for (auto* action : m_actions.goActions()) {
        action->setEnabled(false);
    }
    m_contentsFiles->buildInstalledMenu();
    loadSettings();
}

HelpMainWindow::~HelpMainWindow()
{
    if (m_isPersistent) {
        saveSettings();
    }
    // While this is still a whole window: going away, panes and tool bar tell it about their visibility.
    m_fullText.reset();
    delete m_search;
    delete takeCentralWidget();
    delete m_panes;
    delete m_goToolBar;
}

void HelpMainWindow::buildToolBar()
{
    m_goToolBar = addToolBar(tr("Go"));
    m_goToolBar->setObjectName(QStringLiteral("goToolBar"));
    m_goToolBar->setIconSize(ToolIconSize);
    m_goToolBar->addActions(m_actions.goActions());
    connect(m_goToolBar, &QToolBar::visibilityChanged, this, &HelpMainWindow::viewGoToolbarChanged);
}

void HelpMainWindow::buildPanes()
{
    auto* splitter = new QSplitter(Qt::Horizontal, this);
    setCentralWidget(splitter);
    m_panes = new SidePanes(m_library, this);
    addDockWidget(Qt::LeftDockWidgetArea, m_panes);
    connect(m_panes, &QDockWidget::visibilityChanged, this, &HelpMainWindow::viewContentsChanged);

    m_browser = new HelpBrowser(m_library, splitter);
    m_search = new PageSearch(this, m_browser);
    m_contentsFiles = new ContentsFiles(m_library, *m_panes->contents(), *m_browser, m_menus, this);
    m_fullText = std::make_unique<FullTextSearch>(m_library, *m_panes->search(), *m_browser, *statusBar());
    resizeDocks({m_panes}, {m_panes->usefulWidth()}, Qt::Horizontal);
}

/// What the page view says while it has no page.
void HelpMainWindow::showHint()
{
    QStringList lines = m_refusals.first(std::min(m_refusals.size(), MaximumRefusals));
    lines += tr("No help set is open.");
    m_browser->setHint(m_library.isBusy()
                           ? tr("Loading…")
                           : lines.join(QStringLiteral("\n\n")) + QStringLiteral("\n\n") +
                                 tr("Open one with File, Add Contents.\nPress F1 for the manual."));
}

/// The panes have no menu entries of their own; these keys reach them.
void HelpMainWindow::buildPaneShortcuts()
{
    new QShortcut(Qt::CTRL | Qt::Key_1, this, [this] { m_panes->goToContents(); });
    new QShortcut(Qt::CTRL | Qt::Key_2, this, [this] { m_panes->goToIndex(); });
    new QShortcut(Qt::CTRL | Qt::Key_3, this, [this] { editSearchAll(); });
    new QShortcut(Qt::Key_Escape, this, [this] { stop(); });
    new QShortcut(Qt::Key_F6, this, [this] {
        if (m_panes->isAncestorOf(QApplication::focusWidget())) {
            m_browser->setFocus(Qt::ShortcutFocusReason);
        } else {
            m_panes->goToCurrent();
        }
    });
}

void HelpMainWindow::connectActions()
{
    const auto run = [this](QAction* action, void (HelpMainWindow::*slot)()) {
        connect(action, &QAction::triggered, this, slot);
    };
    run(m_actions.fileAddContentsAction, &HelpMainWindow::fileAddContents);
    run(m_actions.filePrintAction, &HelpMainWindow::filePrint);
    run(m_actions.filePreviewAction, &HelpMainWindow::filePreview);
    run(m_actions.fileExportAction, &HelpMainWindow::fileExport);
    run(m_actions.fileExitAction, &HelpMainWindow::fileExit);
    run(m_actions.editCopyAction, &HelpMainWindow::editCopy);
    run(m_actions.editFindAction, &HelpMainWindow::editFind);
    run(m_actions.editFindNextAction, &HelpMainWindow::editFindNext);
    run(m_actions.editFindPreviousAction, &HelpMainWindow::editFindPrevious);
    run(m_actions.editSearchAllAction, &HelpMainWindow::editSearchAll);
    run(m_actions.viewZoomInAction, &HelpMainWindow::viewZoomIn);
    run(m_actions.viewZoomOutAction, &HelpMainWindow::viewZoomOut);
    run(m_actions.viewZoomResetAction, &HelpMainWindow::viewZoomReset);
    run(m_actions.viewSettingsAction, &HelpMainWindow::viewSettings);
    run(m_actions.viewReadingAction, &HelpMainWindow::viewReading);
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
    connect(m_panes->contents(), &HelpContents::pageRequested, this,
            [this](HelpContentsItem* item) { loadHtml(item); });
    connect(m_panes->contents(), &HelpContents::linkHovered, this, &HelpMainWindow::showLinkInStatusBar);
    connect(m_panes->index(), &HelpIndex::pageRequested, this,
            [this](const HelpIndexItem* item) { loadHtml(item); });
    connect(m_panes->index(), &HelpIndex::linkHovered, this, &HelpMainWindow::showLinkInStatusBar);
    connect(m_panes->search(), &SearchPane::linkHovered, this, &HelpMainWindow::showLinkInStatusBar);
    connect(m_fullText.get(), &FullTextSearch::aboutToShow, m_search, &PageSearch::close);
}

void HelpMainWindow::connectBrowserAndMenus()
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
    connect(m_browser, &HelpBrowser::pageChanged, this,
            [this] { m_menus.outlineMenu->setHeadings(m_browser->page().prepared.headings); });
    connect(m_menus.outlineMenu, &OutlineMenu::chosen, m_browser, &HelpBrowser::scrollTo);
    connect(m_menus.removeMenu, &HelpSetMenu::chosen, this, &HelpMainWindow::fileRemoveContents);
    connect(m_menus.installedMenu, &HelpSetMenu::chosen, this, &HelpMainWindow::fileShowInstalled);
    connect(&m_library, &HelpLibrary::helpSetAboutToBeRemoved, m_browser, &HelpBrowser::clearLinks);
    connect(&m_library, &HelpLibrary::helpSetAboutToBeRemoved, this, [this] { goUpEnabled(false); });
}

void HelpMainWindow::connectBackground()
{
    showHint();
    connect(&m_library, &HelpLibrary::becameBusy, this, &HelpMainWindow::showHint);
    connect(&m_library, &HelpLibrary::becameIdle, this, &HelpMainWindow::showHint);
    auto* progress = new BackgroundProgress(tr("Loading"), *statusBar());
    connect(&m_library, &HelpLibrary::becameBusy, progress, &BackgroundProgress::start);
    connect(&m_library, &HelpLibrary::becameIdle, progress, &BackgroundProgress::finish);
}

/// What Escape means: one thing after another ends.
void HelpMainWindow::stop()
{
    if (m_fullText->marks().isOn()) {
        m_fullText->marks().clear();
    } else if (m_browser->isFilling()) {
        m_browser->stopFilling();
    } else if (m_library.isBusy()) {
        m_contentsFiles->cancel();
    } else {
        m_fullText->cancelIndexing();
    }
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
    m_contentsFiles->showAfterLoading([this] { m_panes->contents()->gotoFirstPage(); });
}

QString HelpMainWindow::insertContents(const QString& fileName)
{
    const auto refusal = m_contentsFiles->insertContents(fileName);
    if (!refusal) {
        return {};
    }
    m_refusals.append(ContentsFiles::describe(fileName, *refusal));
    showHint();
    showLinkInStatusBar(m_refusals.constLast());
    return m_refusals.constLast();
}

void HelpMainWindow::removeContents(int menuId)
{
    m_contentsFiles->removeContents(menuId);
}

void HelpMainWindow::showInstalled(const QString& fileName)
{
    m_contentsFiles->showWhenLoaded(fileName, [this](HelpContentsItem* record) {
        m_browser->clearLinks();
        loadHtml(record);
        selectCurrentRow();
    });
}

void HelpMainWindow::loadDefault()
{
    m_contentsFiles->loadDefault();
    m_contentsFiles->showAfterLoading([this] { showLastPage(); });
}

/// Brings back the page that was shown last, when it still belongs to a loaded help set.
void HelpMainWindow::showLastPage()
{
    const auto session = WindowSettings::loadSession();
    if (session.page.isEmpty() || m_library.findRow(session.page) == nullptr) {
        return;
    }
    m_browser->setSource(session.page);
    m_browser->setPlace(session.scroll);
    selectCurrentRow();
}

void HelpMainWindow::setPersistent(bool persistent)
{
    m_isPersistent = persistent;
    m_fullText->setEnabled(persistent);
}

void HelpMainWindow::loadSettings()
{
    WindowSettings::loadDisplay(*m_browser);
    m_actions.viewReadingAction->setChecked(m_browser->isReadingView());
    WindowSettings::loadGeometry(*this);
    WindowSettings::loadPanes(*this, *m_panes);
}

void HelpMainWindow::saveSettings() const
{
    WindowSettings::saveDisplay(*m_browser);
    WindowSettings::saveGeometry(*this);
    WindowSettings::savePanes(*this, *m_panes);
    // Who asked for files of which none could be opened has changed nothing.
    if (m_refusals.isEmpty() || m_contentsFiles->wasAnyOpened()) {
        saveOpenFiles();
    }
}

void HelpMainWindow::saveOpenFiles() const
{
    QStringList open;
    for (const auto* root : m_library.roots()) {
        open.append(root->fileName);
    }
    WindowSettings::saveContents(open + m_contentsFiles->pendingFiles() + m_contentsFiles->absentFiles());
    const auto* record = m_browser->getCurrentLink();
    if (record == nullptr && !m_contentsFiles->pendingFiles().isEmpty()) {
        return;
    }
    WindowSettings::saveSession(record == nullptr
                                    ? WindowSettings::Session()
                                    : WindowSettings::Session{record->page(), m_browser->place()});
}

void HelpMainWindow::sourceEmpty(bool value)
{
    for (auto* action : m_actions.pageActions()) {
        action->setEnabled(!value);
    }
}

void HelpMainWindow::fileAddContents()
{
    auto* dialog = new QFileDialog(this, {}, {}, tr("Contents File (*.cnt);;All Files (*.*)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& fileName) {
        const QString problem = insertContents(QFileInfo(fileName).canonicalFilePath());
        if (!problem.isEmpty()) {
            openMessage(QMessageBox::Warning, tr("Load contents error"), problem, this);
        }
    });
    dialog->open();
}

void HelpMainWindow::fileRemoveContents(int index)
{
    removeContents(index);
}

void HelpMainWindow::fileShowInstalled(int index)
{
    const QString fileName = m_contentsFiles->installedFile(index);
    if (!fileName.isEmpty()) {
        showInstalled(fileName);
    }
}

void HelpMainWindow::filePrint()
{
    PrintCommands::print(this, *m_browser);
}

void HelpMainWindow::filePreview()
{
    PrintCommands::preview(this, *m_browser);
}

void HelpMainWindow::fileExport()
{
    PrintCommands::exportAsPdf(this, *m_browser);
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
    m_browser->copy();
}

void HelpMainWindow::editFind()
{
    m_search->editFind();
    m_fullText->marks().clear();
}

void HelpMainWindow::editFindNext()
{
    findAgain(true);
}

void HelpMainWindow::editFindPrevious()
{
    findAgain(false);
}

/// While a page shows what a full-text search found, that is what to go through.
void HelpMainWindow::findAgain(bool forward)
{
    if (m_fullText->marks().isOn()) {
        m_fullText->marks().step(forward);
    } else {
        m_search->findNext(forward);
    }
}

void HelpMainWindow::editSearchAll()
{
    m_panes->goToSearch();
}

void HelpMainWindow::viewZoomIn()
{
    m_browser->zoomIn();
}

void HelpMainWindow::viewZoomOut()
{
    m_browser->zoomOut();
}

void HelpMainWindow::viewZoomReset()
{
    m_browser->resetZoom();
}

void HelpMainWindow::viewReading()
{
    m_browser->setReadingView(m_actions.viewReadingAction->isChecked());
}

void HelpMainWindow::viewContents()
{
    m_panes->setVisible(m_actions.viewContentsAction->isChecked());
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

void HelpMainWindow::viewSettings()
{
    auto* dialog = new HelpSettings(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFontFamily(m_browser->getFontFamily());
    dialog->setFontFixedFamily(m_browser->getFontFixedFamily());
    dialog->setLinkUnderline(m_browser->getLinkUnderline());
    dialog->setLinkColor(m_browser->getLinkColor());
    connect(dialog, &QDialog::accepted, m_browser, [this, dialog] { applySettings(*dialog); });
    dialog->open();
}

/// What was left as it is stays the desktop's.
void HelpMainWindow::applySettings(const HelpSettings& dialog)
{
    if (dialog.getFontFamily() != m_browser->getFontFamily()) {
        m_browser->setFontFamily(dialog.getFontFamily());
    }
    if (dialog.getFontFixedFamily() != m_browser->getFontFixedFamily()) {
        m_browser->setFontFixedFamily(dialog.getFontFixedFamily());
    }
    if (dialog.getLinkUnderline() != m_browser->getLinkUnderline()) {
        m_browser->setLinkUnderline(dialog.getLinkUnderline());
    }
    if (dialog.getLinkColor() != m_browser->getLinkColor()) {
        m_browser->setLinkColor(dialog.getLinkColor());
    }
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
        m_panes->contents()->gotoPage(record->listViewItem->parent);
    }
}

void HelpMainWindow::goHome()
{
    m_browser->home();
}

void HelpMainWindow::goSync()
{
    m_panes->showContents();
    selectCurrentRow();
}

/// The page stays where it is.
void HelpMainWindow::selectCurrentRow()
{
    const auto* record = m_browser->getCurrentLink();
    if (record != nullptr && record->listViewItem != nullptr) {
        m_panes->contents()->selectRow(record->listViewItem);
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
    m_contentsFiles->showWhenLoaded(fileName, [this](HelpContentsItem* record) {
        loadHtml(record);
        selectCurrentRow();
    });
}

void HelpMainWindow::helpAbout()
{
    const QString text = tr("<h3>Quenda %1</h3><p>An off-line help viewer for the Linux desktop.</p>"
                            "<p>Free software under the MIT licence.<br>Built with Qt %2.</p>")
                             .arg(QCoreApplication::applicationVersion(), QLatin1StringView(qVersion()));
    auto* box = new QMessageBox(QMessageBox::NoIcon, tr("About Quenda"), text, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, box);
    box->setIconPixmap(windowIcon().pixmap(size));
    box->open();
}

bool HelpMainWindow::event(QEvent* event)
{
    // Menus and tool buttons send an empty tip when the pointer leaves them; it would wipe the link shown.
    if (event->type() == QEvent::StatusTip && static_cast<QStatusTipEvent*>(event)->tip().isEmpty()) {
        return true;
    }
    return QMainWindow::event(event);
}
