// SPDX-License-Identifier: MIT
#include "mainwindow/helpmainwindow.h"

#include "browser/helpbrowser.h"
#include "browser/messages.h"
#include "contents/helpcontents.h"
#include "desk/desk.h"
#include "icons/icons.h"
#include "index/helpindex.h"
#include "library/helplibrary.h"
#include "mainwindow/aboutbox.h"
#include "mainwindow/backgroundprogress.h"
#include "mainwindow/contentsfiles.h"
#include "mainwindow/displaydialog.h"
#include "mainwindow/fulltextsearch.h"
#include "mainwindow/helpsetmenu.h"
#include "mainwindow/manual.h"
#include "mainwindow/outlinemenu.h"
#include "mainwindow/printcommands.h"
#include "mainwindow/session.h"
#include "mainwindow/sidepanes.h"
#include "mainwindow/windowsettings.h"
#include "search/searchpane.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QShortcut>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QToolBar>

#include <algorithm>

namespace {

constexpr QSize ToolIconSize(16, 16);
constexpr qsizetype MaximumRefusals = 5; // that the empty page view tells

} // namespace

HelpMainWindow::HelpMainWindow(HelpLibrary& library, QWidget* parent)
    : QMainWindow(parent), m_library(library), m_desk(new Desk(library, *statusBar(), this)),
      m_actions(*m_desk, *this), m_menus(*menuBar(), m_actions)
{
    setHelpCaption({});
    setWindowIcon(applicationIcon());
    buildToolBar();
    buildPanes();
    buildPaneShortcuts();
    connectCommands();
    connectPanes();
    connectDesk();
    connectBackground();
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
    setCentralWidget(m_desk);
    m_panes = new SidePanes(m_library, this);
    addDockWidget(Qt::LeftDockWidgetArea, m_panes);
    connect(m_panes, &QDockWidget::visibilityChanged, this, &HelpMainWindow::viewContentsChanged);

    m_contentsFiles = new ContentsFiles(m_library, *m_panes->contents(), *m_desk, m_menus, this);
    m_fullText = std::make_unique<FullTextSearch>(m_library, *m_panes->search(), *m_desk, *statusBar());
    resizeDocks({m_panes}, {m_panes->usefulWidth()}, Qt::Horizontal);
}

/// What the page view says while it has no page.
void HelpMainWindow::showHint()
{
    if (m_library.isBusy()) {
        m_desk->setHint(tr("Loading…"));
        return;
    }
    QStringList lines = m_refusals.first(std::min(m_refusals.size(), MaximumRefusals));
    if (m_library.isEmpty()) {
        lines += tr("No help set is open.");
        lines += tr("Open one with File, Add Contents.\nPress F1 for the manual.");
    } else {
        lines += tr("Choose a page in the contents.");
    }
    m_desk->setHint(lines.join(QStringLiteral("\n\n")));
}

/// The panes have no menu entries of their own; these keys reach them.
void HelpMainWindow::buildPaneShortcuts()
{
    new QShortcut(Qt::CTRL | Qt::Key_1, this, [this] { m_panes->goToContents(); });
    new QShortcut(Qt::CTRL | Qt::Key_2, this, [this] { m_panes->goToIndex(); });
    new QShortcut(Qt::CTRL | Qt::Key_3, this, [this] { m_panes->goToSearch(); });
    new QShortcut(Qt::Key_Escape, this, [this] { stop(); });
    new QShortcut(Qt::Key_F6, this, [this] {
        if (m_panes->isAncestorOf(QApplication::focusWidget())) {
            m_desk->setFocus(Qt::ShortcutFocusReason);
        } else {
            m_panes->goToCurrent();
        }
    });
}

void HelpMainWindow::connectCommands()
{
    const auto run = [this](QAction* action, const auto& command) {
        connect(action, &QAction::triggered, this, command);
    };
    run(m_actions.fileAddContentsAction, &HelpMainWindow::fileAddContents);
    run(m_actions.filePrintAction, &HelpMainWindow::filePrint);
    run(m_actions.filePreviewAction, [this] { PrintCommands::preview(this, m_desk->view()); });
    run(m_actions.fileExportAction, [this] { PrintCommands::exportAsPdf(this, m_desk->view()); });
    run(m_actions.fileExitAction, &HelpMainWindow::fileExit);
    run(m_actions.editSearchAllAction, [this] { m_panes->goToSearch(); });
    run(m_actions.viewFullScreenAction,
        [this](bool isOn) { setWindowState(windowState().setFlag(Qt::WindowFullScreen, isOn)); });
    run(m_actions.viewSettingsAction, &HelpMainWindow::viewSettings);
    run(m_actions.viewContentsAction, &HelpMainWindow::viewContents);
    run(m_actions.viewGoToolbarAction, &HelpMainWindow::viewGoToolbar);
    run(m_actions.goUpAction, &HelpMainWindow::goUp);
    run(m_actions.goSyncAction, &HelpMainWindow::goSync);
    run(m_actions.helpManualAction, &HelpMainWindow::helpManual);
    run(m_actions.helpAboutAction, [this] { openAboutBox(this); });
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
}

void HelpMainWindow::connectDesk()
{
    connect(m_desk, &Desk::captionChanged, this, &HelpMainWindow::setHelpCaption);
    connect(m_desk, &Desk::linkHovered, this, &HelpMainWindow::showLinkInStatusBar);
    connect(m_desk, &Desk::pageChanged, this,
            [this] { m_menus.outlineMenu->setHeadings(m_desk->view().page().prepared.headings); });
    connect(m_menus.outlineMenu, &OutlineMenu::chosen, this,
            [this](const QString& anchor) { m_desk->view().scrollTo(anchor); });
    connect(m_menus.removeMenu, &HelpSetMenu::chosen, this, &HelpMainWindow::fileRemoveContents);
    connect(m_menus.installedMenu, &HelpSetMenu::chosen, this, &HelpMainWindow::fileShowInstalled);
}

void HelpMainWindow::connectBackground()
{
    showHint();
    connect(&m_library, &HelpLibrary::becameBusy, this, &HelpMainWindow::showHint);
    connect(&m_library, &HelpLibrary::becameIdle, this, &HelpMainWindow::showHint);
    connect(&m_library, &HelpLibrary::helpSetRemoved, this, &HelpMainWindow::showHint);
    auto* progress = new BackgroundProgress(tr("Loading"), *statusBar());
    connect(&m_library, &HelpLibrary::becameBusy, progress, &BackgroundProgress::start);
    connect(&m_library, &HelpLibrary::becameIdle, progress, &BackgroundProgress::finish);
}

/// What Escape means: one thing after another ends.
void HelpMainWindow::stop()
{
    if (m_desk->stop()) {
        return;
    }
    if (m_library.isBusy()) {
        m_contentsFiles->cancel();
    } else {
        m_fullText->cancelIndexing();
    }
}

void HelpMainWindow::loadHtml(HelpContentsItem* item)
{
    m_desk->show(item);
}

void HelpMainWindow::loadHtml(const HelpIndexItem* item)
{
    m_desk->show(item);
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
        m_desk->showAfresh(record);
        selectCurrentRow();
    });
}

void HelpMainWindow::loadDefault()
{
    m_contentsFiles->loadDefault();
    m_contentsFiles->showAfterLoading([this] { fulfil(Session::lastPage(m_library)); });
}

QStringList HelpMainWindow::fulfil(const Wish& wish)
{
    QStringList problems;
    if (wish.lastSession) {
        loadDefault();
    }
    for (const auto& fileName : wish.open) {
        problems += insertContents(fileName);
        gotoFirstPage();
    }
    if (!wish.show.isEmpty()) {
        showInstalled(wish.show);
    }
    if (!wish.page.isEmpty()) {
        m_contentsFiles->showAfterLoading([this, wish] {
            m_desk->show(wish.page, wish.place);
            selectCurrentRow();
        });
    }
    problems.removeAll(QString());
    return problems;
}

void HelpMainWindow::setPersistent(bool persistent)
{
    m_isPersistent = persistent;
    m_fullText->setEnabled(persistent);
}

void HelpMainWindow::loadSettings()
{
    WindowSettings::loadDisplay(m_desk->view());
    m_actions.page.viewReadingAction->setChecked(m_desk->view().isReadingView());
    WindowSettings::loadGeometry(*this);
    WindowSettings::loadPanes(*this, *m_panes);
}

void HelpMainWindow::saveSettings() const
{
    WindowSettings::saveDisplay(m_desk->view());
    WindowSettings::saveGeometry(*this);
    WindowSettings::savePanes(*this, *m_panes);
    // Who asked for files of which none could be opened has changed nothing.
    if (m_refusals.isEmpty() || m_contentsFiles->wasAnyOpened()) {
        Session::save(m_library, *m_contentsFiles, *m_desk);
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
    PrintCommands::print(this, m_desk->view());
}

void HelpMainWindow::fileExit()
{
    close();
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
    openDisplayDialog(this, m_desk->view());
}

void HelpMainWindow::goUp()
{
    const auto* row = m_desk->currentRow();
    if (row != nullptr && row->parent != nullptr) {
        m_panes->contents()->gotoPage(row->parent);
    }
}

void HelpMainWindow::goSync()
{
    m_panes->showContents();
    selectCurrentRow();
}

/// The page stays where it is.
void HelpMainWindow::selectCurrentRow()
{
    if (const auto* row = m_desk->currentRow()) {
        m_panes->contents()->selectRow(row);
    }
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

bool HelpMainWindow::event(QEvent* event)
{
    // Menus and tool buttons send an empty tip when the pointer leaves them; it would wipe the link shown.
    if (event->type() == QEvent::StatusTip && static_cast<QStatusTipEvent*>(event)->tip().isEmpty()) {
        return true;
    }
    return QMainWindow::event(event);
}
