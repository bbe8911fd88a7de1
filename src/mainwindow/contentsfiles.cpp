// SPDX-License-Identifier: MIT
#include "mainwindow/contentsfiles.h"

#include "browser/messages.h"
#include "contents/helpcontents.h"
#include "desk/desk.h"
#include "library/helpset.h"
#include "library/installedcontents.h"
#include "mainwindow/helpsetmenu.h"
#include "mainwindow/mainmenus.h"
#include "mainwindow/malformedfiles.h"
#include "mainwindow/manual.h"
#include "mainwindow/windowsettings.h"

#include <QScopedValueRollback>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto Patience = 100ms; // a user does not notice
constexpr int Never = -1;        // as many moves as a user never has made

} // namespace

ContentsFiles::ContentsFiles(HelpLibrary& library, HelpContents& pane, Desk& desk, const MainMenus& menus,
                             QObject* parent)
    : QObject(parent), m_library(library), m_pane(pane), m_desk(desk), m_menus(menus), m_patience(Patience)
{
    connect(&library, &HelpLibrary::keywordsLeftOut, this, &ContentsFiles::reportLimit);
    connect(&library, &HelpLibrary::helpSetAboutToBeRemoved, this, [this] { m_shown = nullptr; });
}

ContentsFiles::~ContentsFiles()
{
    m_library.dropReading();
}

std::optional<HelpLibrary::Refusal> ContentsFiles::insertContents(const QString& named)
{
    const QString fileName = HelpLibrary::placeOf(named).helpSet;
    if (auto refusal = HelpLibrary::refusalOf(fileName)) {
        return refusal;
    }
    m_wasAnyOpened = true;
    m_pendingFiles.append(fileName);
    const bool isReported = !m_isDefault;
    add([this, fileName, isReported, moves = userMoves()] {
        load(fileName, moves, isReported, [this] { return m_pane.currentRow(); });
    });
    return std::nullopt;
}

QString ContentsFiles::describe(const QString& fileName, const HelpLibrary::Refusal& refusal)
{
    return tr("'%1' cannot be opened: %2.").arg(fileName, refusal.reason);
}

void ContentsFiles::removeContents(int menuId)
{
    const auto roots = m_library.roots();
    const auto root = std::find_if(roots.begin(), roots.end(),
                                   [menuId](const auto* candidate) { return candidate->menuId == menuId; });
    if (root == roots.end()) {
        return;
    }
    remember(**root);
    m_library.removeContents(*root);
    m_shown = m_desk.current();
    m_menus.removeMenu->removeEntry(menuId);
    Q_EMIT removedChanged(true);
}

void ContentsFiles::remember(const HelpContentsRoot& root)
{
    const auto* current = m_desk.current();
    const bool isShown = current != nullptr && HelpLibrary::belongsTo(*current, root);
    Removed removed{root.fileName, {}, isShown ? current->page() : QString(), isShown ? m_desk.place() : 0};
    for (const auto* row : m_library.topRows()) {
        if (row->contentsItem->root() == &root) {
            break;
        }
        removed.behind = row->contentsItem->root()->fileName;
    }
    m_removed.push_back(removed);
}

void ContentsFiles::undoRemove()
{
    if (m_removed.empty()) {
        return;
    }
    const Removed removed = m_removed.back();
    m_removed.pop_back();
    Q_EMIT removedChanged(canUndoRemove());
    if (HelpLibrary::refusalOf(removed.fileName)) {
        return;
    }
    m_pendingFiles.append(removed.fileName);
    const bool isShown = !removed.page.isEmpty();
    add([this, removed, moves = isShown ? userMoves() : Never] {
        load(removed.fileName, moves, false, [this, removed] { return lastRowOf(removed.behind); });
    });
    if (isShown) {
        showAfterLoading([this, removed] {
            if (m_library.findRow(removed.page) != nullptr) {
                m_desk.show(removed.page, removed.place);
            }
        });
    }
}

/// The last top-level row of the help set of this contents file; null when it is not open.
const HelpContentsListViewItem* ContentsFiles::lastRowOf(const QString& fileName) const
{
    const auto& rows = m_library.topRows();
    const auto last = std::find_if(rows.rbegin(), rows.rend(), [&](const auto* row) {
        return row->contentsItem->root()->fileName == fileName;
    });
    return last == rows.rend() ? nullptr : *last;
}

QStringList ContentsFiles::filesToStore() const
{
    QStringList names;
    for (const auto* root : m_library.roots()) {
        names += root->fileName;
    }
    names += m_pendingFiles + m_absentFiles;
    names.removeAll(m_manual);
    return names;
}

void ContentsFiles::forgetOpened(const QString& fileName)
{
    if (fileName.isEmpty()) {
        m_openedFiles.clear();
    } else {
        m_openedFiles.removeAll(fileName);
    }
}

bool ContentsFiles::showManual(const std::function<void(HelpContentsItem*)>& show)
{
    const QString fileName = manualContentsFile();
    if (fileName.isEmpty()) {
        return false;
    }
    if (m_library.getContentsByFileName(fileName) == nullptr && !m_pendingFiles.contains(fileName)) {
        m_manual = fileName;
    }
    showWhenLoaded(fileName, show);
    return true;
}

void ContentsFiles::loadDefault()
{
    const QScopedValueRollback isDefault(m_isDefault, true);
    QStringList files = WindowSettings::loadContents();
    files.removeIf([](const QString& fileName) {
        const auto refusal = HelpLibrary::refusalOf(fileName);
        return refusal && refusal->isGone;
    });
    const bool isAnyOpen = !files.isEmpty() || !m_library.isEmpty();
    for (const auto& fileName : isAnyOpen ? InstalledContents::sortingCntList(files) : m_installedFiles) {
        if (insertContents(fileName) && isAnyOpen) {
            m_absentFiles.append(fileName);
        }
    }
    showAfterLoading([this] { m_pane.gotoFirstPage(); });
}

void ContentsFiles::showWhenLoaded(const QString& named, const std::function<void(HelpContentsItem*)>& show)
{
    const QString fileName = HelpLibrary::placeOf(named).helpSet;
    if (m_library.getContentsByFileName(fileName) == nullptr && !m_pendingFiles.contains(fileName)) {
        const auto refusal = insertContents(fileName);
        if (refusal && !refusal->isGone) {
            openMessage(QMessageBox::Warning, tr("Load contents error"), describe(fileName, *refusal),
                        m_pane.window());
        }
        if (refusal) {
            return;
        }
    }
    showAfterLoading([this, fileName, show] {
        if (auto* record = m_library.getContentsByFileName(fileName)) {
            show(record);
        }
    });
}

void ContentsFiles::showAfterLoading(const Step& show)
{
    add([this, show, moves = userMoves()] { this->show(show, moves); });
}

void ContentsFiles::add(const Step& step)
{
    m_steps.push_back(step);
    proceed();
    waitBriefly();
}

void ContentsFiles::proceed()
{
    while (!m_isLoading && !m_steps.empty()) {
        const Step step = std::move(m_steps.front());
        m_steps.pop_front();
        step();
    }
}

/// Small help sets stand in the window as a whole when this returns. Before the window is shown only their
/// pages matter.
void ContentsFiles::waitBriefly()
{
    if (m_patience == Patience) {
        QTimer::singleShot(0, this, [this] { m_patience = Patience; });
    }
    const auto start = std::chrono::steady_clock::now();
    m_library.adoptWithin(m_patience, [this] {
        return !m_isLoading && (!m_pane.window()->isVisible() || !m_library.isBusy());
    });
    const auto waited = std::chrono::steady_clock::now() - start;
    m_patience = std::max(0ms, m_patience - std::chrono::duration_cast<std::chrono::milliseconds>(waited));
}

void ContentsFiles::load(const QString& fileName, int moves, bool isReported,
                         const HelpLibrary::CurrentRow& current)
{
    m_isLoading = true;
    m_library.readContents(fileName, current, [this, moves, isReported](const HelpLibrary::Loaded& loaded) {
        m_isLoading = false;
        adopt(loaded, moves, isReported);
        proceed();
    });
}

void ContentsFiles::adopt(const HelpLibrary::Loaded& loaded, int moves, bool isReported)
{
    if (loaded.root->fileName != m_manual) {
        const QString name = HelpLibrary::absoluteName(loaded.root->fileName);
        m_openedFiles.removeAll(name);
        m_openedFiles.prepend(name);
    }
    m_pendingFiles.removeOne(loaded.root->fileName);
    loaded.root->menuId = m_menus.removeMenu->addEntry(loaded.title, loaded.root->fileName);
    if (loaded.firstPage != nullptr) {
        show([&] { m_pane.gotoPage(loaded.firstPage); }, moves);
    }
    // One that failed before is on the library page; nobody wants to be told at each start.
    if (isReported) {
        reportMalformedFiles(loaded.malformedFiles, m_library.helpSet(*loaded.root).problems(), &m_pane);
    }
    if (!loaded.limitReached.isNull()) {
        reportLimit(loaded.root->fileName, loaded.limitReached);
    }
}

void ContentsFiles::reportLimit(const QString& fileName, const QString& reason)
{
    QTimer::singleShot(0, this, [this, text = tr("'%1' is opened in part.\n%2.").arg(fileName, reason)] {
        openMessage(QMessageBox::Warning, tr("Load contents error"), text, &m_pane);
    });
}

/// How often the user has gone to another page.
int ContentsFiles::userMoves()
{
    const auto* current = m_desk.current();
    m_userMoves += current != nullptr && current != m_shown ? 1 : 0;
    m_shown = current;
    return m_userMoves;
}

void ContentsFiles::show(const Step& step, int moves)
{
    if (userMoves() == moves) {
        step();
        m_shown = m_desk.current();
    }
}

void ContentsFiles::cancel()
{
    m_steps.clear();
    m_pendingFiles.clear();
    m_isLoading = false;
    m_library.cancelReading();
}

void ContentsFiles::buildInstalledMenu()
{
    for (auto it = m_installed.cbegin(); it != m_installed.cend(); ++it) {
        m_menus.installedMenu->removeEntry(it.key());
    }
    m_installed.clear();
    m_installedFiles = InstalledContents::dropVanishedContents();
    for (const auto& fileName : std::as_const(m_installedFiles)) {
        m_installed.insert(m_menus.installedMenu->addEntry(HelpLibrary::getTitle(fileName), fileName),
                           fileName);
    }
}
