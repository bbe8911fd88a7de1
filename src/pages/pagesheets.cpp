// SPDX-License-Identifier: MIT
#include "pages/pagesheets.h"

#include "markup/htmltree.h"
#include "markup/tags.h"
#include "pages/links.h"
#include "sources/pagefiles.h"
#include "styles/pagestyles.h"

#include <string>

namespace {

constexpr qint64 LargestFile = 4'000'000; // bytes
constexpr int MostSheets = 64;            // of a page
constexpr int DeepestImport = 4;

class SheetCollector {
public:
    SheetCollector(PageStyles& styles, StyleSheets* files) : m_styles(styles), m_files(files) {}

    /// What a sheet imports comes before what it says itself.
    void add(const std::shared_ptr<const StyleSheet>& sheet, const QString& base, int depth)
    {
        for (const auto& import : sheet->imports) {
            if (depth < DeepestImport && m_styles.applies(import.media)) {
                addFile(resolveFile(base, QString::fromStdString(import.file)), depth + 1);
            }
        }
        m_styles.add(sheet);
    }

    void addFile(const QString& file, int depth)
    {
        if (m_files != nullptr && !file.isEmpty() && ++m_count <= MostSheets) {
            add(m_files->sheet(file), file, depth);
        }
    }

private:
    PageStyles& m_styles;
    StyleSheets* m_files;
    int m_count = 0;
};

bool isStyleSheet(const HtmlNode& link)
{
    bool isSheet = false;
    bool isAlternate = false;
    anyWord(attribute(link, "rel"), [&](std::string_view word) {
        isSheet = isSheet || equalsLower(word, "stylesheet");
        isAlternate = isAlternate || equalsLower(word, "alternate");
        return false;
    });
    return isSheet && !isAlternate && !hasAttribute(link, "disabled");
}

} // namespace

std::shared_ptr<const StyleSheet> StyleSheets::sheet(const QString& file)
{
    const auto state = pageFileState(file);
    {
        const std::lock_guard lock(m_mutex);
        if (const auto* known = m_sheets.object(file); known != nullptr && known->state == state) {
            return known->sheet;
        }
    }
    const auto read = readPageFile(file, LargestFile);
    const QByteArray bytes = read.ok() ? read.value() : QByteArray();
    auto sheet =
        std::make_shared<const StyleSheet>(readStyleSheet({bytes.constData(), size_t(bytes.size())}));
    const std::lock_guard lock(m_mutex);
    m_sheets.insert(file, new Kept{state, sheet}, std::max<qsizetype>(1, bytes.size()));
    return sheet;
}

void addStyleSheets(PageStyles& styles, const HtmlTree& tree, const QString& base, StyleSheets* files)
{
    SheetCollector collector(styles, files);
    for (const auto* node = tree.root(); node != nullptr; node = nextNode(node, tree.root())) {
        const bool isSheet = isElement(*node, "link") && isStyleSheet(*node);
        const bool isStyle = isElement(*node, "style") && node->firstChild != nullptr;
        if ((!isSheet && !isStyle) || !styles.applies(lowerCss(attribute(*node, "media")))) {
            continue;
        }
        if (isSheet) {
            collector.addFile(resolveFile(base, toQString(attribute(*node, "href"))), 0);
        } else {
            std::string text;
            for (const auto* child = node->firstChild; child != nullptr; child = child->next) {
                text += child->content;
            }
            collector.add(std::make_shared<const StyleSheet>(readStyleSheet(text)), base, 0);
        }
    }
}
