// SPDX-License-Identifier: MIT
#include "mainwindow/helpmainwindow.h"

#include "browser/helpbrowser.h"
#include "contents/helpcontents.h"
#include "desk/desk.h"
#include "icons/icons.h"
#include "library/helplibrary.h"
#include "mainwindow/aboutbox.h"
#include "mainwindow/addcontentsdialog.h"
#include "mainwindow/backgroundprogress.h"
#include "mainwindow/contentsfiles.h"
#include "mainwindow/filedrops.h"
#include "mainwindow/fulltextsearch.h"
#include "mainwindow/helpsetmenu.h"
#include "mainwindow/jumps.h"
#include "mainwindow/librarykeeper.h"
#include "mainwindow/machinecommand.h"
#include "mainwindow/outlinemenu.h"
#include "mainwindow/printcommands.h"
#include "mainwindow/session.h"
#include "mainwindow/sidepanes.h"
#include "mainwindow/viewcommands.h"
#include "mainwindow/wish.h"
#include "search/searchpane.h"

#include <QApplication>
#include <QMenuBar>
#include <QShortcut>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QToolBar>

HelpMainWindow::HelpMainWindow(HelpLibrary& library, QWidget* parent)
    : QMainWindow(parent), m_library(library), m_desk(new Desk(library, *statusBar(), this)),
      m_actions(*m_desk, *this), m_menus(*menuBar(), m_actions), m_goToolBar(makeGoToolBar(*this, m_actions))
{
    setHelpCaption({});
    setWindowIcon(applicationIcon());
    buildPanes();
    new ViewCommands(m_actions, *this, *m_desk, *m_panes, *m_goToolBar);
    connectFileCommands();
    connectCommands();
    connectPanes();
    connectDesk();
    connectKeeper();
    connectBackground();
    m_contentsFiles->buildInstalledMenu();
    Session::loadWindow(*this, m_actions, *m_panes, *m_desk);
}

HelpMainWindow::~HelpMainWindow()
{
    m_panes->putBack();
    if (m_isPersistent) {
        Session::saveWindow(*this, m_actions, *m_panes, *m_desk);
        // Who asked for files of which none could be opened has changed nothing.
        if (!m_wasRefused || m_contentsFiles->wasAnyOpened()) {
            Session::save(*m_contentsFiles, *m_desk);
        }
    }
    // While this is still a whole window: going away, panes and tool bar tell it about their visibility.
    m_fullText.reset();
    delete takeCentralWidget();
    delete m_panes;
    delete m_goToolBar;
}

void HelpMainWindow::buildPanes()
{
    setCentralWidget(m_desk);
    m_panes = new SidePanes(m_library, *m_desk, this);
    addDockWidget(Qt::LeftDockWidgetArea, m_panes);
    m_panes->addShortcuts(*this);
    new Jumps(m_library, *m_desk, *m_panes->index(), m_actions, *this);
    m_contentsFiles = new ContentsFiles(m_library, *m_panes->contents(), *m_desk, m_menus, this);
    m_keeper = new LibraryKeeper(m_library, *m_contentsFiles, *m_menus.recentMenu, this);
    m_fullText = std::make_unique<FullTextSearch>(m_library, *m_panes->search(), *m_desk, *statusBar());
}

void HelpMainWindow::connectFileCommands()
{
    const auto run = [this](QAction* action, const auto& command) {
        connect(action, &QAction::triggered, this, command);
    };
    run(m_actions.fileAddContentsAction, &HelpMainWindow::addContents);
    run(m_actions.fileUndoRemoveAction, [this] { m_contentsFiles->undoRemove(); });
    run(m_actions.filePrintAction, [this] { PrintCommands::print(this, m_desk->view()); });
    run(m_actions.fileMachineAction, [this] {
        openMachineDialog(m_library, this, [this](const QString& name) { insertContents(name); });
    });
    run(m_actions.filePreviewAction, [this] { PrintCommands::preview(this, m_desk->view()); });
    run(m_actions.fileExportAction, [this] { PrintCommands::exportAsPdf(this, m_desk->view()); });
    run(m_actions.fileExitAction, [this] { close(); });
    connect(m_contentsFiles, &ContentsFiles::removedChanged, m_actions.fileUndoRemoveAction,
            &QAction::setEnabled);
    connect(m_menus.fileMenu, &QMenu::aboutToShow, m_keeper, &LibraryKeeper::fillRecentMenu);
    connect(m_menus.removeMenu, &HelpSetMenu::chosen, this, &HelpMainWindow::removeContents);
    connect(m_menus.installedMenu, &HelpSetMenu::chosen, this,
            [this](int id) { showInstalled(m_contentsFiles->installedFile(id)); });
    connect(new FileDrops(*this), &FileDrops::dropped, this,
            [this](const QStringList& files) { fulfil({.open = files}); });
}

void HelpMainWindow::connectCommands()
{
    const auto run = [this](QAction* action, const auto& command) {
        connect(action, &QAction::triggered, this, command);
    };
    run(m_actions.editSearchAllAction, [this] { m_panes->goToSearch(); });
    run(m_actions.goUpAction, [this] {
        if (const auto* row = m_desk->currentRow(); row != nullptr && row->parent != nullptr) {
            m_panes->contents()->gotoPage(row->parent);
        }
    });
    run(m_actions.goSyncAction, [this] {
        m_panes->showContents();
        m_panes->selectCurrentRow();
    });
    run(m_actions.goLibraryAction, [this] {
        m_desk->showLibrary();
        m_desk->setFocus(Qt::ShortcutFocusReason);
    });
    run(m_actions.helpManualAction, &HelpMainWindow::helpManual);
    run(m_actions.helpAboutAction, [this] { openAboutBox(this); });
}

void HelpMainWindow::connectPanes()
{
    connect(m_panes, &SidePanes::linkHovered, this, &HelpMainWindow::showLinkInStatusBar);
    connect(m_panes->contents(), &HelpContents::searchRequested, this,
            [this](const HelpContentsRoot* root) { searchIn(root->fileName); });
    connect(m_panes->contents(), &HelpContents::removalRequested, this,
            [this](const HelpContentsRoot* root) { removeContents(root->menuId); });
}

void HelpMainWindow::connectDesk()
{
    connect(m_desk, &Desk::captionChanged, this, &HelpMainWindow::setHelpCaption);
    connect(m_desk, &Desk::helpSetRequested, this, [this](const QString& fileName, const QString& page) {
        insertContents(fileName);
        showPage(page, 0);
    });
    connect(m_desk, &Desk::linkHovered, this, &HelpMainWindow::showLinkInStatusBar);
    connect(m_desk, &Desk::pageChanged, this,
            [this] { m_menus.outlineMenu->setHeadings(m_desk->view().page().prepared.headings); });
    connect(m_menus.outlineMenu, &OutlineMenu::chosen, m_desk, &Desk::scrollTo);
}

void HelpMainWindow::connectKeeper()
{
    connect(m_desk, &Desk::libraryShown, m_keeper, &LibraryKeeper::keep);
    connect(m_keeper, &LibraryKeeper::wished, this, &HelpMainWindow::fulfil);
    connect(m_keeper, &LibraryKeeper::addRequested, this, &HelpMainWindow::addContents);
    connect(m_keeper, &LibraryKeeper::machineRequested, m_actions.fileMachineAction, &QAction::trigger);
    connect(m_keeper, &LibraryKeeper::manualRequested, this, &HelpMainWindow::helpManual);
    connect(m_keeper, &LibraryKeeper::removeRequested, this, &HelpMainWindow::removeContents);
    connect(m_keeper, &LibraryKeeper::installedChanged, m_contentsFiles, &ContentsFiles::buildInstalledMenu);
    connect(m_fullText.get(), &FullTextSearch::indexed, m_keeper, &LibraryKeeper::noteIndexed);
}

void HelpMainWindow::connectBackground()
{
    new QShortcut(Qt::Key_Escape, this, this, &HelpMainWindow::stop);
    auto* progress = new BackgroundProgress(tr("Loading"), *statusBar());
    connect(&m_library, &HelpLibrary::becameBusy, progress, &BackgroundProgress::start);
    connect(&m_library, &HelpLibrary::becameIdle, progress, &BackgroundProgress::finish);
}

/// What Escape means: one thing after another ends.
void HelpMainWindow::stop()
{
    if (m_panes->closeOverPage() || m_desk->stop()) {
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
    statusBar()->showMessage(HelpLibrary::readableName(text));
}

void HelpMainWindow::gotoFirstPage()
{
    m_contentsFiles->showAfterLoading([this] { m_panes->contents()->gotoFirstPage(); });
}

QString HelpMainWindow::insertContents(const QString& fileName)
{
    const auto place = HelpLibrary::placeOf(fileName);
    const bool isOpen = !place.page.isNull() && m_library.getContentsByFileName(place.helpSet) != nullptr;
    const auto refusal = isOpen ? std::nullopt : m_contentsFiles->insertContents(place.helpSet);
    if (!refusal) {
        showPage(place.page, 0);
        return {};
    }
    QString notice = ContentsFiles::describe(fileName, *refusal);
    m_wasRefused = true;
    m_keeper->addNotice(notice);
    showLinkInStatusBar(notice);
    return notice;
}

void HelpMainWindow::removeContents(int menuId)
{
    m_contentsFiles->removeContents(menuId);
}

void HelpMainWindow::showInstalled(const QString& fileName)
{
    if (fileName.isEmpty()) {
        return;
    }
    m_contentsFiles->showWhenLoaded(fileName, [this](HelpContentsItem* record) {
        m_desk->showAfresh(record);
        m_panes->selectCurrentRow();
    });
}

void HelpMainWindow::addContents()
{
    openAddContentsDialog(this, [this](const QString& fileName) { return insertContents(fileName); });
}

void HelpMainWindow::loadDefault()
{
    m_contentsFiles->loadDefault();
    m_contentsFiles->showAfterLoading([this] { fulfil(Session::lastPage(m_library)); });
}

/// When all that is to be opened has been; nothing for an empty name.
void HelpMainWindow::showPage(const QString& page, int place)
{
    if (!page.isEmpty()) {
        m_contentsFiles->showAfterLoading([this, page, place] {
            m_desk->show(page, place);
            m_panes->selectCurrentRow();
        });
    }
}

QStringList HelpMainWindow::fulfil(const Wish& wish)
{
    QStringList problems;
    if (wish.lastSession) {
        loadDefault();
    }
    for (const auto& fileName : wish.open) {
        problems += insertContents(fileName);
        if (HelpLibrary::placeOf(fileName).page.isNull()) {
            gotoFirstPage();
        }
    }
    if (wish.keepsHistory) {
        m_contentsFiles->showWhenLoaded(wish.show, [this](HelpContentsItem* record) { loadHtml(record); });
    } else {
        showInstalled(wish.show);
    }
    showPage(wish.page, wish.place);
    if (wish.isSearch) {
        searchIn(wish.show);
    }
    problems.removeAll(QString());
    return problems;
}

/// In this help set; in those chosen before when the name is empty.
void HelpMainWindow::searchIn(const QString& contentsFile)
{
    if (!contentsFile.isEmpty()) {
        m_panes->search()->searchIn(HelpLibrary::absoluteName(contentsFile));
    }
    m_panes->goToSearch();
}

void HelpMainWindow::setPersistent(bool persistent)
{
    m_isPersistent = persistent;
    m_fullText->setEnabled(persistent);
}

/// Unlike an installed help set the manual keeps the history, so that Back leads to what the user was
/// reading.
void HelpMainWindow::helpManual()
{
    if (!m_contentsFiles->showManual([this](HelpContentsItem* record) { loadHtml(record); })) {
        showLinkInStatusBar(tr("The manual is not installed."));
    }
}

bool HelpMainWindow::event(QEvent* event)
{
    // Menus and tool buttons send an empty tip when the pointer leaves them; it would wipe the link shown.
    if (event->type() == QEvent::StatusTip && static_cast<QStatusTipEvent*>(event)->tip().isEmpty()) {
        return true;
    }
    return QMainWindow::event(event);
}
