// SPDX-License-Identifier: MIT
#include "sources/htmlfoldersource.h"

#include "formats/paths.h"
#include "sources/foldercontents.h"
#include "sources/generatorlists.h"
#include "sources/keywordtexts.h"
#include "sources/linkedrows.h"
#include "sources/outlinebuilder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace {

/// Whether a page is named like an index of a book.
bool isIndexName(const QString& page)
{
    static const QRegularExpression name(QStringLiteral(
        "(?:^|/)(?:bookindex|theindex|doc-index[^/]*|genindex(?:-all)?|ix[0-9]+|[^/]+[-_]index|[^/]*Index)"
        "\\.x?html?$"));
    return name.match(page).hasMatch();
}

/// What few entries have is no index.
void addIndexPages(const FolderFiles& files, std::vector<FolderKeyword>& keywords,
                   const std::stop_token& stop)
{
    constexpr size_t few = 10;
    const bool hasInventory = !files.lists(QStringLiteral("objects.inv")).isEmpty();
    const bool isRustdoc = !files.lists(QStringLiteral("search-index.js")).isEmpty();
    for (const auto& page : files.pages()) {
        const bool isGenerated = page.endsWith(u"genindex.html") || page.endsWith(u"genindex-all.html");
        const bool isCrate = isRustdoc && page.endsWith(u"/all.html");
        if (stop.stop_requested() || (isGenerated && hasInventory) || (!isCrate && !isIndexName(page))) {
            continue;
        }
        const size_t before = keywords.size();
        addIndexPage(files, page, keywords);
        if (keywords.size() - before < few) {
            keywords.resize(before);
        }
    }
}

/// The last step of the path that says something.
QString folderTitle(const QString& folder)
{
    const QFileInfo info(folder);
    const QString name = info.fileName();
    return name == u"html" || name == u"doc" ? QFileInfo(info.path()).fileName() : name;
}

/// What the page calls itself with which readers begin, if it is called so.
QString titleOf(const QString& folder, const QString& start)
{
    const QString own = startPageNames().contains(start) ? htmlTitle(getRightDir(folder) + start) : QString();
    return own.isEmpty() ? folderTitle(folder) : own;
}

/// Where hardly anything has a keyword, pages are looked up by their titles.
void addTitles(const std::vector<FolderRow>& rows, std::vector<FolderKeyword>& keywords)
{
    QSet<QString> known;
    for (const auto& keyword : keywords) {
        known.insert(keyword.page);
    }
    for (const auto& row : rows) {
        if (!row.page.isEmpty() && !row.title.isEmpty() && !known.contains(row.page)) {
            keywords.push_back({row.title, row.page, -1});
        }
    }
}

std::vector<FolderKeyword> keywordsOf(const FolderFiles& files, const std::vector<FolderRow>& rows,
                                      const std::stop_token& stop)
{
    std::vector<FolderKeyword> keywords;
    using Add = void (*)(const FolderFiles&, const QString&, std::vector<FolderKeyword>&);
    const std::initializer_list<std::pair<const char*, Add>> kinds{
        {"objects.inv", addInventory},
        {"navtreedata.js", addDoxygenKeywords},
        {"type-search-index.js", addJavadocKeywords},
        {"search_index.json", addMkDocsKeywords}};
    for (const auto& [name, add] : kinds) {
        for (const auto& list : files.lists(QLatin1StringView(name))) {
            if (!stop.stop_requested()) {
                add(files, list, keywords);
            }
        }
    }
    addIndexPages(files, keywords, stop);
    const bool hasList = std::any_of(kinds.begin(), kinds.end(), [&](const auto& kind) {
        return !files.lists(QLatin1StringView(kind.first)).isEmpty();
    });
    // The list may have nothing but places that are no keywords.
    if (keywords.empty() || (!hasList && keywords.size() < size_t(files.pages().size()))) {
        addTitles(rows, keywords);
    }
    return keywords;
}

} // namespace

HtmlFolderSource::HtmlFolderSource(const QString& folder) : m_folder(absoluteFilePath(folder))
{
}

QString HtmlFolderSource::title(const QString& folder)
{
    const QDir dir(absoluteFilePath(folder));
    const auto& names = startPageNames();
    const auto start =
        std::find_if(names.begin(), names.end(), [&](const auto& name) { return dir.exists(name); });
    return titleOf(dir.path(), start == names.end() ? QString() : *start);
}

ContentsOutline HtmlFolderSource::readContents(const std::stop_token& stop)
{
    const QString root = getRightDir(m_folder);
    m_files.emplace(root, stop);
    const auto& files = *m_files;
    OutlineBuilder builder(m_folder, root);
    const QString start = startPage(files);
    m_title = titleOf(m_folder, start);
    builder.setTitle(m_title);
    if (start.isEmpty()) {
        builder.note(Problem::Severity::Error, tr("The folder has no HTML pages"));
    } else {
        builder.add(0, m_title, start);
        m_rows = FolderContents(files, stop).rows();
        const auto isRefused = [&](const FolderRow& row) {
            return !builder.add(row.level + 1, row.title, row.page);
        };
        m_rows.erase(std::find_if(m_rows.begin(), m_rows.end(), isRefused), m_rows.end());
    }
    if (files.isLimited()) {
        builder.note(
            Problem::Severity::Warning,
            tr("The folder holds more than %1 files; the rest is not read").arg(FolderFiles::MaximumFiles));
    }
    auto outline = builder.take();
    outline.readable = !start.isEmpty();
    return outline;
}

void HtmlFolderSource::readKeywords(KeywordSink& sink, const std::stop_token& stop)
{
    if (!m_files) {
        return;
    }
    for (size_t i = 0; i < m_rows.size() && !stop.stop_requested(); ++i) {
        if (m_rows[i].isUntitled) {
            m_rows[i].title = m_files->title(m_rows[i].page);
            sink.retitle(int(i) + 1, m_rows[i].title);
        }
    }
    const auto keywords = keywordsOf(*m_files, std::exchange(m_rows, {}), stop);
    const KeywordFile file{m_folder, m_files->root(), m_title, m_folder, 0};
    sink.begin(file, keywords.size());
    KeywordTexts texts(sink);
    for (const auto& keyword : keywords) {
        if (!texts.add(keyword.keyword, keyword.page, 0, keyword.parent)) {
            sink.leaveOutRest(file);
            break;
        }
    }
    m_files.reset();
}
