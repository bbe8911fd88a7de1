// SPDX-License-Identifier: MIT
#include "sources/linkedrows.h"

#include "markup/htmltree.h"
#include "markup/pagedecoding.h"
#include "markup/tags.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr size_t MostLinks = 100'000; // of a page

int headingRank(const HtmlNode& node)
{
    return node.name.size() == 2 && node.name[0] == 'h' && node.name[1] >= '1' && node.name[1] <= '6'
               ? node.name[1] - '0'
               : 0;
}

/// Of a link or a heading, without those in it: they can be nested without end.
QString shownText(const HtmlNode& element)
{
    std::string text;
    walk(
        element,
        [&](const HtmlNode& node) {
            const bool isSameKind =
                node.name == element.name || (headingRank(node) > 0 && headingRank(element) > 0);
            text += node.content;
            return (&node == &element || !isSameKind) && !isElement(node, "script") &&
                   !isElement(node, "style");
        },
        [](const HtmlNode&) {});
    // A pilcrow is a link to the heading itself.
    return toQString(text).simplified().remove(QChar(0xB6)).trimmed();
}

bool hasWord(std::string_view words, std::string_view wanted)
{
    return anyWord(words, [&](std::string_view word) { return equalsLower(word, wanted); });
}

/// Lists that say of themselves that they are contents.
bool isContentsList(const HtmlNode& node)
{
    static constexpr std::array<std::string_view, 7> names{
        "toctree-wrapper", "toc", "contents", "menu", "toc2", "summary-toc", "section-toc"};
    static constexpr std::array<std::string_view, 6> elements{"div", "ul", "ol", "dl", "table", "nav"};
    if (!isOneOf(node.name, elements)) {
        return false;
    }
    const auto classes = attribute(node, "class");
    return std::any_of(names.begin(), names.end(),
                       [&](std::string_view name) { return hasWord(classes, name); }) ||
           (node.name == "ol" && hasWord(classes, "chapter"));
}

/// What stands on every page.
bool isFurniture(const HtmlNode& node)
{
    static constexpr std::array<std::string_view, 6> elements{"nav",    "header", "footer",
                                                              "script", "style",  "form"};
    static constexpr std::array<std::string_view, 10> names{
        "related",    "sphinxsidebar", "sidebar",    "navheader",   "navfooter",
        "navigation", "footer",        "breadcrumb", "breadcrumbs", "navbar"};
    if (isOneOf(node.name, elements)) {
        return true;
    }
    const auto classes = attribute(node, "class");
    const auto id = attribute(node, "id");
    return std::any_of(names.begin(), names.end(), [&](std::string_view name) {
        return hasWord(classes, name) || equalsLower(id, name);
    });
}

bool isListElement(const HtmlNode& node)
{
    return node.name == "ul" || node.name == "ol" || node.name == "dl";
}

/// Collects the rows of one page.
class RowCollector {
public:
    enum class Links { InLists, All };

    RowCollector(const FolderFiles& files, const QString& page) : m_files(files), m_page(page) {}

    void collect(const HtmlNode& top, Links links, bool withFurniture)
    {
        walk(
            top,
            [&](const HtmlNode& node) {
                if (!withFurniture && &node != &top && isFurniture(node) && !isContentsList(node)) {
                    return false;
                }
                return enter(node, links);
            },
            [&](const HtmlNode& node) { m_depth -= isListElement(node) ? 1 : 0; });
    }

    std::vector<FolderRow> take()
    {
        // One book around all is none.
        const bool isWrapped =
            !m_rows.empty() && m_books == 1 && m_rows.front().page.isEmpty() &&
            std::all_of(m_rows.begin() + 1, m_rows.end(), [](const auto& row) { return row.level > 0; });
        if (isWrapped) {
            m_rows.erase(m_rows.begin());
            for (auto& row : m_rows) {
                --row.level;
            }
        }
        return std::exchange(m_rows, {});
    }

private:
    struct Heading {
        int rank;
        QString title;
        bool isRow;
    };

    bool enter(const HtmlNode& node, Links links)
    {
        if (m_rows.size() >= MostLinks) {
            return false;
        }
        if (const int rank = headingRank(node); rank > 1 && m_depth == 0) {
            while (!m_headings.empty() && m_headings.back().rank >= rank) {
                m_headings.pop_back();
            }
            m_headings.push_back({rank, shownText(node), false});
        }
        if (node.name == "a" && hasAttribute(node, "href") && (m_depth > 0 || links == Links::All)) {
            addLink(node);
            return false;
        }
        m_depth += isListElement(node) ? 1 : 0;
        return true;
    }

    void addLink(const HtmlNode& link)
    {
        const auto target = m_files.resolve(m_page, toQString(attribute(link, "href")));
        const QString title = target ? shownText(link) : QString();
        if (title.isEmpty() || m_seen.contains(*target) || !isWanted(*target)) {
            return;
        }
        m_seen.insert(*target);
        for (size_t i = 0; i < m_headings.size(); ++i) {
            if (!std::exchange(m_headings[i].isRow, true)) {
                m_rows.push_back({int(i), m_headings[i].title, {}});
                ++m_books;
            }
        }
        m_rows.push_back({int(m_headings.size()) + std::max(0, m_depth - 1), title, *target});
    }

    /// Sections of a page that has a row are found in the page, unless all that there is are such.
    bool isWanted(const QString& target)
    {
        const QString file = withoutAnchor(target);
        if (file == target || file == m_page) {
            return target != m_page || m_rows.empty();
        }
        return m_seen.contains(file) ? false : (m_seen.insert(file), true);
    }

    const FolderFiles& m_files;
    const QString& m_page;
    std::vector<FolderRow> m_rows;
    std::vector<Heading> m_headings;
    QSet<QString> m_seen;
    int m_depth = 0;
    int m_books = 0;
};

std::vector<FolderRow> contentsLists(const FolderFiles& files, const QString& page, const HtmlNode& root)
{
    RowCollector collector(files, page);
    for (const auto* node = &root; node != nullptr;) {
        const bool isList = isContentsList(*node);
        if (isList) {
            collector.collect(*node, RowCollector::Links::All, true);
        }
        node = nextNode(node, &root, !isList);
    }
    return collector.take();
}

bool isIndexEntry(const HtmlNode& node)
{
    return node.name == "dt" || node.name == "li" || node.name == "tr";
}

/// Whether what is in a node has nothing to do with the entry around it.
bool isOfOtherEntry(const HtmlNode& node, const HtmlNode& entry)
{
    return &node != &entry && (isListElement(node) || isIndexEntry(node));
}

/// The text before the first link, without what ends it.
QString leadingText(const HtmlNode& entry)
{
    std::string text;
    bool isOver = false;
    walk(
        entry,
        [&](const HtmlNode& node) {
            isOver =
                isOver || (node.name == "a" && hasAttribute(node, "href")) || isOfOtherEntry(node, entry);
            if (!isOver) {
                text += node.content;
            }
            return !isOver;
        },
        [](const HtmlNode&) {});
    const QString simplified = toQString(text).simplified();
    QStringView result = simplified;
    while (!result.isEmpty() && QStringView(u",:;([- ").contains(result.back())) {
        result.chop(1);
    }
    return result.toString();
}

class IndexCollector {
public:
    IndexCollector(const FolderFiles& files, const QString& page, std::vector<FolderKeyword>& keywords)
        : m_files(files), m_page(page), m_keywords(keywords)
    {
    }

    void collect(const HtmlNode& top)
    {
        for (const auto* node = &top; node != nullptr;) {
            const bool isSkipped = isFurniture(*node) || m_keywords.size() >= MostLinks * 10;
            if (!isSkipped && isIndexEntry(*node)) {
                addEntry(*node);
            }
            node = nextNode(node, &top, !isSkipped);
        }
    }

private:
    void addEntry(const HtmlNode& entry)
    {
        QString keyword = leadingText(entry);
        std::vector<QString> pages;
        bool isFirst = true;
        walk(
            entry,
            [&](const HtmlNode& node) {
                if (isOfOtherEntry(node, entry)) {
                    return false;
                }
                if (node.name == "a" && hasAttribute(node, "href")) {
                    const auto target = m_files.resolve(m_page, toQString(attribute(node, "href")));
                    // Letters at the top of an index lead to places in it.
                    const bool isElsewhere = target && withoutAnchor(*target) != m_page;
                    if (isElsewhere && keyword.isEmpty() && isFirst) {
                        keyword = shownText(node);
                    }
                    isFirst = isFirst && !isElsewhere;
                    if (isElsewhere && (pages.empty() || entry.name != "tr")) {
                        pages.push_back(*target);
                    }
                }
                return true;
            },
            [](const HtmlNode&) {});
        keyword.truncate(200);
        for (const auto& page : pages) {
            if (!keyword.isEmpty()) {
                m_keywords.push_back({keyword, page, -1});
            }
        }
    }

    const FolderFiles& m_files;
    const QString& m_page;
    std::vector<FolderKeyword>& m_keywords;
};

} // namespace

std::vector<FolderRow> linkedRows(const FolderFiles& files, const QString& page, const QByteArray& html,
                                  ContentsScope scope)
{
    const HtmlTree tree(decodePage(html));
    const auto* body = tree.first("body");
    if (body == nullptr) {
        return {};
    }
    auto rows = contentsLists(files, page, *body);
    constexpr size_t few = 3; // links that anything else can be
    if (scope == ContentsScope::Lists || !rows.empty()) {
        return rows;
    }
    for (const auto links : {RowCollector::Links::InLists, RowCollector::Links::All}) {
        for (const bool withFurniture : {false, true}) {
            if (rows.size() <= few) {
                RowCollector collector(files, page);
                collector.collect(*body, links, withFurniture);
                auto found = collector.take();
                if (found.size() > rows.size()) {
                    rows = std::move(found);
                }
            }
        }
    }
    return rows;
}

void addIndexPage(const FolderFiles& files, const QString& page, std::vector<FolderKeyword>& keywords)
{
    const HtmlTree tree(decodePage(files.bytes(page)));
    if (const auto* body = tree.first("body")) {
        IndexCollector(files, page, keywords).collect(*body);
    }
}
