// SPDX-License-Identifier: MIT
#include "mainwindow/librarykeeper.h"

#include "fulltext/searchcache.h"
#include "library/helplibrary.h"
#include "library/helpset.h"
#include "library/installedcontents.h"
#include "library/openedsets.h"
#include "library/setfacts.h"
#include "mainwindow/contentsfiles.h"
#include "mainwindow/helpsetmenu.h"
#include "mainwindow/windowsettings.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace {

constexpr qsizetype MaximumNotices = 5;
constexpr qsizetype MaximumRecent = 10;

bool isOpen(const HelpLibrary& library, const QString& fileName)
{
    const auto roots = library.roots();
    return std::any_of(roots.begin(), roots.end(), [&](const auto* root) {
        return HelpLibrary::absoluteName(root->fileName) == fileName;
    });
}

} // namespace

LibraryKeeper::LibraryKeeper(HelpLibrary& library, ContentsFiles& files, HelpSetMenu& recentMenu,
                             QObject* parent)
    : QObject(parent), m_library(library), m_files(files), m_recentMenu(recentMenu)
{
    connect(&recentMenu, &HelpSetMenu::chosen, this,
            [this](int id) { Q_EMIT wished({.show = m_recent.value(id), .keepsHistory = true}); });
    connect(&library, &HelpLibrary::becameIdle, this, &LibraryKeeper::fill);
    connect(&library, &HelpLibrary::helpSetRemoved, this, &LibraryKeeper::fill);
}

void LibraryKeeper::keep(LibraryPage* page)
{
    if (m_page != page) {
        m_page = page;
        connectPage(*page);
    }
    fill();
}

void LibraryKeeper::connectPage(LibraryPage& page)
{
    connect(&page, &LibraryPage::openRequested, this,
            [this](const QString& fileName) { Q_EMIT wished({.show = fileName, .keepsHistory = true}); });
    connect(&page, &LibraryPage::searchRequested, this, [this](const QString& fileName) {
        Q_EMIT wished({.show = fileName, .keepsHistory = true, .isSearch = true});
    });
    connect(&page, &LibraryPage::sessionRequested, this, [this] { Q_EMIT wished({.open = lastSession()}); });
    connect(&page, &LibraryPage::installRequested, this, &LibraryKeeper::install);
    connect(&page, &LibraryPage::removeRequested, this, &LibraryKeeper::remove);
    connect(&page, &LibraryPage::addRequested, this, &LibraryKeeper::addRequested);
    connect(&page, &LibraryPage::machineRequested, this, &LibraryKeeper::machineRequested);
    connect(&page, &LibraryPage::manualRequested, this, &LibraryKeeper::manualRequested);
    connect(&page, &LibraryPage::clearRequested, this, [this] {
        OpenedSets::clear();
        m_files.forgetOpened({});
        fill();
    });
}

void LibraryKeeper::addNotice(const QString& notice)
{
    m_notices.removeAll(notice);
    m_notices.append(notice);
    m_notices = m_notices.mid(std::max<qsizetype>(0, m_notices.size() - MaximumNotices));
    if (m_page != nullptr) {
        m_page->setNotices(m_notices);
    }
}

void LibraryKeeper::fillRecentMenu()
{
    for (auto it = m_recent.cbegin(); it != m_recent.cend(); ++it) {
        m_recentMenu.removeEntry(it.key());
    }
    m_recent.clear();
    for (const auto& fileName : closedBefore().mid(0, MaximumRecent)) {
        if (!HelpLibrary::refusalOf(fileName)) {
            m_recent.insert(m_recentMenu.addEntry(HelpLibrary::getTitle(fileName), fileName), fileName);
        }
    }
}

QStringList LibraryKeeper::closedBefore() const
{
    QStringList names = m_files.openedFiles() + OpenedSets::load();
    names.removeDuplicates();
    names.removeIf([this](const QString& fileName) { return isOpen(m_library, fileName); });
    return names.mid(0, OpenedSets::Maximum);
}

QStringList LibraryKeeper::lastSession() const
{
    for (auto session : {WindowSettings::loadContents(), OpenedSets::loadEarlierSession()}) {
        session.removeIf([](const QString& fileName) {
            const auto refusal = HelpLibrary::refusalOf(fileName);
            return fileName.isEmpty() || (refusal && refusal->isGone);
        });
        const bool isNew = std::any_of(session.begin(), session.end(), [this](const QString& fileName) {
            return !isOpen(m_library, HelpLibrary::absoluteName(fileName));
        });
        if (isNew) {
            return session;
        }
    }
    return {};
}

void LibraryKeeper::fill()
{
    if (m_page == nullptr || !m_page->isVisibleTo(m_page->window())) {
        return;
    }
    m_looking.cancel();
    auto entries = openEntries();
    const auto installed = InstalledContents::loadInstalledFromSettings();
    for (const auto& fileName : installed) {
        if (!isOpen(m_library, fileName)) {
            entries.push_back(entryOf(LibraryEntry::Kind::Installed, fileName));
        }
    }
    for (const auto& fileName : closedBefore()) {
        if (!installed.contains(fileName)) {
            entries.push_back(entryOf(LibraryEntry::Kind::Before, fileName));
        }
    }
    for (auto& entry : entries) {
        entry.isInstalled = installed.contains(entry.fileName);
    }
    m_page->setEntries(entries);
    m_page->setNotices(m_notices);
    QStringList titles;
    for (const auto& fileName : lastSession()) {
        const QString title = HelpLibrary::getTitle(fileName);
        titles += title == fileName ? QFileInfo(fileName).fileName() : title;
    }
    m_page->setSession(titles);
    for (const auto& entry : entries) {
        if (entry.kind != LibraryEntry::Kind::Open) {
            examine(entry.fileName);
        }
    }
}

std::vector<LibraryEntry> LibraryKeeper::openEntries()
{
    std::vector<LibraryEntry> entries;
    for (const auto* root : m_library.roots()) {
        entries.push_back(openEntry(*root));
    }
    return entries;
}

LibraryEntry LibraryKeeper::openEntry(const HelpContentsRoot& root)
{
    const auto& set = m_library.helpSet(root);
    LibraryEntry entry;
    entry.fileName = HelpLibrary::absoluteName(root.fileName);
    entry.title = set.ownTitle();
    entry.topics = int(set.records().size());
    m_known.insert(entry.fileName, entry);
    entry.state = !set.malformedFiles().isEmpty()      ? tr("open in part")
                  : m_indexed.contains(entry.fileName) ? tr("open")
                                                       : tr("not yet indexed");
    return entry;
}

void LibraryKeeper::noteIndexed(const QString& contentsFile)
{
    m_indexed.insert(contentsFile);
    for (const auto* root : m_library.roots()) {
        if (m_page != nullptr && HelpLibrary::absoluteName(root->fileName) == contentsFile) {
            m_page->setFacts(openEntry(*root));
        }
    }
}

/// What was found out before stands until it is found out anew.
LibraryEntry LibraryKeeper::entryOf(LibraryEntry::Kind kind, const QString& fileName)
{
    LibraryEntry entry = m_known.value(fileName);
    if (entry.fileName.isEmpty()) {
        entry.fileName = fileName;
        entry.title = QFileInfo(fileName).fileName();
    }
    entry.kind = kind;
    return entry;
}

void LibraryKeeper::examine(const QString& fileName)
{
    struct Found {
        SetFacts facts;
        bool isIndexed;
    };
    m_looking.run(
        [fileName](const std::stop_token& stop) {
            return Found{factsOf(fileName, stop), SearchCache::hasDatabase(fileName)};
        },
        [this, fileName](const Found& found) {
            const auto& facts = found.facts;
            LibraryEntry entry;
            entry.fileName = fileName;
            entry.title = facts.title == fileName ? QFileInfo(fileName).fileName() : facts.title;
            entry.topics = facts.topics;
            entry.state = stateOf(facts, found.isIndexed);
            entry.canBeOpened = facts.canBeOpened;
            m_known.insert(fileName, entry);
            if (m_page != nullptr) {
                m_page->setFacts(entry);
            }
        });
}

QString LibraryKeeper::stateOf(const SetFacts& facts, bool isIndexed)
{
    if (!facts.canBeOpened) {
        return facts.trouble;
    }
    if (!facts.trouble.isEmpty()) {
        return tr("damaged: %1").arg(facts.trouble);
    }
    return isIndexed ? QString() : tr("not yet indexed");
}

void LibraryKeeper::install(const QString& fileName, bool isInstalled)
{
    if (isInstalled) {
        (void)InstalledContents::installContents(fileName);
    } else {
        (void)InstalledContents::uninstallContents(fileName);
    }
    Q_EMIT installedChanged();
    fill();
}

void LibraryKeeper::remove(LibraryEntry::Kind kind, const QString& fileName)
{
    switch (kind) {
    case LibraryEntry::Kind::Open:
        for (const auto* root : m_library.roots()) {
            if (HelpLibrary::absoluteName(root->fileName) == fileName) {
                Q_EMIT removeRequested(root->menuId);
                return;
            }
        }
        return;
    case LibraryEntry::Kind::Installed:
        // One that has gone is on the list under its name only.
        InstalledContents::forget(fileName);
        Q_EMIT installedChanged();
        break;
    case LibraryEntry::Kind::Before:
        OpenedSets::forget(fileName);
        m_files.forgetOpened(fileName);
        break;
    }
    fill();
}
