// SPDX-License-Identifier: MIT
#include "sources/foldercontents.h"

#include "sources/generatorlists.h"
#include "sources/linkedrows.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr int MostTitles = 20'000; // that are read from pages

/// Whether a page may have contents of its own; looked for before it is taken apart.
bool mayHaveContents(const QByteArray& html)
{
    static constexpr std::array marks{"toctree-wrapper", "\"toc\"",     "\"contents\"",   "\"menu\"",
                                      "summary-toc",     "\"chapter\"", "\"section-toc\""};
    return std::any_of(marks.begin(), marks.end(), [&](const char* mark) { return html.contains(mark); });
}

} // namespace

const QStringList& startPageNames()
{
    static const QStringList names{QStringLiteral("index.html"),  QStringLiteral("index.htm"),
                                   QStringLiteral("index.xhtml"), QStringLiteral("contents.html"),
                                   QStringLiteral("toc.html"),    QStringLiteral("main.html"),
                                   QStringLiteral("manual.html")};
    return names;
}

QString startPage(const FolderFiles& files)
{
    const auto& names = startPageNames();
    const auto found =
        std::find_if(names.begin(), names.end(), [&](const auto& name) { return files.isPage(name); });
    if (found != names.end()) {
        return *found;
    }
    return files.pages().isEmpty() ? QString() : files.pages().front();
}

std::vector<FolderRow> FolderContents::rows()
{
    m_named.insert(startPage(m_files));
    auto listed = listedRows();
    for (const auto& row : listed) {
        m_named.insert(withoutAnchor(row.page));
    }
    if (m_isListComplete) {
        m_rows = std::move(listed);
    } else {
        addExpanded(std::move(listed));
    }
    addBranches();
    addCrates();
    addOthers();
    return std::move(m_rows);
}

void FolderContents::add(FolderRow row)
{
    m_named.insert(withoutAnchor(row.page));
    m_rows.push_back(std::move(row));
}

/// Of the folder as a whole.
std::vector<FolderRow> FolderContents::listedRows()
{
    const QString doxygen = QStringLiteral("navtreedata.js");
    if (m_files.lists(doxygen).contains(doxygen)) {
        auto rows = doxygenRows(m_files, doxygen);
        // The first row stands for the whole.
        const bool isWrapped = rows.size() > 1 && std::all_of(rows.begin() + 1, rows.end(),
                                                              [](const auto& row) { return row.level > 0; });
        if (isWrapped) {
            rows.erase(rows.begin());
            for (auto& row : rows) {
                --row.level;
            }
        }
        if (!rows.empty()) {
            m_isListComplete = true;
            return rows;
        }
    }
    const QString javadoc = QStringLiteral("type-search-index.js");
    if (m_files.lists(javadoc).contains(javadoc)) {
        m_isListComplete = true;
        return javadocRows(m_files, javadoc);
    }
    std::vector<FolderRow> best;
    for (const auto& page :
         {startPage(m_files), QStringLiteral("contents.html"), QStringLiteral("toc.html")}) {
        auto rows = m_files.isPage(page) && !m_stop.stop_requested()
                        ? linkedRows(m_files, page, m_files.bytes(page), ContentsScope::Page)
                        : std::vector<FolderRow>();
        if (rows.size() > best.size()) {
            best = std::move(rows);
        }
    }
    // The page with which readers begin has a row already.
    std::erase_if(best, [&](const auto& row) { return row.page == startPage(m_files); });
    return best;
}

/// Adds rows, and below those whose pages have contents of their own what nothing has named before.
void FolderContents::addExpanded(std::vector<FolderRow> rows)
{
    constexpr int deepest = 30;
    std::reverse(rows.begin(), rows.end());
    QSet<QString> looked;
    while (!rows.empty() && !m_stop.stop_requested()) {
        const FolderRow row = rows.back();
        rows.pop_back();
        add(row);
        const QString page = withoutAnchor(row.page);
        if (page.isEmpty() || row.level > deepest || looked.contains(page)) {
            continue;
        }
        looked.insert(page);
        auto below = unknownRows(page);
        std::reverse(below.begin(), below.end());
        for (const auto& child : below) {
            rows.push_back({row.level + 1 + child.level, child.title, child.page});
        }
    }
}

/// What readers of a folder in the folder begin with has its contents, as the first page of all has those of
/// all.
bool FolderContents::isFirstOfFolder(const QString& page) const
{
    const QString folder = folderOf(page);
    return !folder.isEmpty() && startPageNames().contains(page.sliced(folder.size())) &&
           m_files.lists(QStringLiteral("search-index.js")).isEmpty();
}

std::vector<FolderRow> FolderContents::unknownRows(const QString& page)
{
    constexpr qint64 mostBytes = 200'000'000; // of pages that are looked through
    constexpr int mostFolders = 500;
    const QByteArray bytes = m_bytesLookedAt < mostBytes ? m_files.bytes(page) : QByteArray();
    m_bytesLookedAt += bytes.size();
    const bool isFirst = isFirstOfFolder(page) && m_foldersLookedAt < mostFolders;
    m_foldersLookedAt += isFirst ? 1 : 0;
    if (!isFirst && !mayHaveContents(bytes)) {
        return {};
    }
    auto rows = linkedRows(m_files, page, bytes, isFirst ? ContentsScope::Page : ContentsScope::Lists);
    std::erase_if(rows, [&](const auto& row) {
        const QString target = withoutAnchor(row.page);
        const bool isKnown =
            m_named.contains(target) || target.isEmpty() || (isFirst && !target.startsWith(folderOf(page)));
        m_named.insert(target);
        return isKnown;
    });
    return rows;
}

void FolderContents::addBranch(const QString& folder, const std::vector<FolderRow>& rows)
{
    QString page = folder + QStringLiteral("index.html");
    page = m_files.isPage(page) ? page : QString();
    add({0, page.isEmpty() ? folder.chopped(1) : m_files.title(page), page});
    for (const auto& row : rows) {
        if (row.page != page) {
            add({row.level + 1, row.title, row.page});
        }
    }
}

/// Folders in the folder that another generator made.
void FolderContents::addBranches()
{
    for (const auto& list : m_files.lists(QStringLiteral("navtreedata.js"))) {
        if (list.contains(u'/') && !m_stop.stop_requested()) {
            addBranch(folderOf(list), doxygenRows(m_files, list));
        }
    }
    for (const auto& list : m_files.lists(QStringLiteral("type-search-index.js"))) {
        if (list.contains(u'/') && !m_stop.stop_requested()) {
            addBranch(folderOf(list), javadocRows(m_files, list));
        }
    }
}

/// What rustdoc made: each crate has a page of all that is in it.
void FolderContents::addCrates()
{
    if (m_files.lists(QStringLiteral("search-index.js")).isEmpty()) {
        return;
    }
    for (const auto& page : m_files.pages()) {
        if (page.endsWith(u"/all.html") && !m_stop.stop_requested()) {
            const QString folder = folderOf(page);
            const QString crate = folder + QStringLiteral("index.html");
            add({0, folder.chopped(1), m_files.isPage(crate) ? crate : page});
            for (const auto& row : linkedRows(m_files, page, m_files.bytes(page), ContentsScope::Page)) {
                add({row.level + 1, row.title, row.page});
            }
        }
    }
}

/// Pages that no list names stand in a book of their own, unless there is no list at all.
void FolderContents::addOthers()
{
    const bool isAll = m_rows.empty();
    const int level = isAll ? 0 : 1;
    QString folder;
    int titles = 0;
    bool isFirst = !isAll;
    for (const auto& page : m_files.pages()) {
        if (m_named.contains(page) || m_stop.stop_requested()) {
            continue;
        }
        if (std::exchange(isFirst, false)) {
            add({0, QCoreApplication::translate("FolderContents", "Other pages"), {}});
        }
        const QString own = folderOf(page);
        if (own != folder && !own.isEmpty()) {
            add({level, own.chopped(1), {}});
        }
        folder = own;
        add({level + (own.isEmpty() ? 0 : 1), page.sliced(own.size()), page, ++titles <= MostTitles});
    }
}
