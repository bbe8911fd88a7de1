// SPDX-License-Identifier: MIT
#include "mainwindow/contentsfiles.h"

#include "browser/messages.h"
#include "contents/helpcontents.h"
#include "desk/desk.h"
#include "library/installedcontents.h"
#include "mainwindow/helpsetmenu.h"
#include "mainwindow/mainmenus.h"
#include "mainwindow/malformedfiles.h"
#include "mainwindow/windowsettings.h"

#include <QTimer>

#include <algorithm>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto Patience = 100ms; // a user does not notice

} // namespace

ContentsFiles::ContentsFiles(HelpLibrary& library, HelpContents& pane, const Desk& desk,
                             const MainMenus& menus, QObject* parent)
    : QObject(parent), m_library(library), m_pane(pane), m_desk(desk), m_menus(menus), m_patience(Patience)
{
    connect(&library, &HelpLibrary::keywordsLeftOut, this, &ContentsFiles::reportLimit);
    connect(&library, &HelpLibrary::helpSetAboutToBeRemoved, this, [this] { m_shown = nullptr; });
}

ContentsFiles::~ContentsFiles()
{
    m_library.dropReading();
}

std::optional<HelpLibrary::Refusal> ContentsFiles::insertContents(const QString& fileName)
{
    if (auto refusal = HelpLibrary::refusalOf(fileName)) {
        return refusal;
    }
    m_wasAnyOpened = true;
    m_pendingFiles.append(fileName);
    add([this, fileName, moves = userMoves()] { load(fileName, moves); });
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
    m_library.removeContents(*root);
    m_shown = m_desk.current();
    m_menus.removeMenu->removeEntry(menuId);
}

void ContentsFiles::loadDefault()
{
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

void ContentsFiles::showWhenLoaded(const QString& fileName,
                                   const std::function<void(HelpContentsItem*)>& show)
{
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

void ContentsFiles::load(const QString& fileName, int moves)
{
    m_isLoading = true;
    m_library.readContents(
        fileName, [this] { return m_pane.currentRow(); },
        [this, moves](const HelpLibrary::Loaded& loaded) {
            m_isLoading = false;
            adopt(loaded, moves);
            proceed();
        });
}

void ContentsFiles::adopt(const HelpLibrary::Loaded& loaded, int moves)
{
    m_pendingFiles.removeOne(loaded.root->fileName);
    loaded.root->menuId = m_menus.removeMenu->addEntry(loaded.title, loaded.root->fileName);
    if (loaded.firstPage != nullptr) {
        show([&] { m_pane.gotoPage(loaded.firstPage); }, moves);
    }
    reportMalformedFiles(loaded.malformedFiles, &m_pane);
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
    m_installedFiles = InstalledContents::dropVanishedContents();
    for (const auto& fileName : std::as_const(m_installedFiles)) {
        m_installed.insert(m_menus.installedMenu->addEntry(HelpLibrary::getTitle(fileName), fileName),
                           fileName);
    }
}
