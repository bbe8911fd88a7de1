// SPDX-License-Identifier: MIT
#include "scratch.h"

#include "markup/htmltree.h"
#include "markup/pagedecoding.h"
#include "pages/links.h"
#include "pages/pagepreparation.h"

namespace {

/// Whether the HTML would run something, or has a picture that is not in a file of this machine.
bool reachesOut(const QString& html)
{
    const HtmlTree tree(html);
    for (const HtmlNode* node = tree.root(); node != nullptr; node = nextNode(node, tree.root())) {
        const auto source = attribute(*node, "src");
        if (isElement(*node, "script") || source.starts_with("http") || source.starts_with("//")) {
            return true;
        }
    }
    return false;
}

/// The nodes of a tree know each other.
void checkTree(const QString& html)
{
    const HtmlTree tree(html);
    for (const HtmlNode* node = tree.root(); node != nullptr; node = nextNode(node, tree.root())) {
        require((node->firstChild == nullptr) == (node->lastChild == nullptr));
        require(node->firstChild == nullptr || (isElement(*node) && node->firstChild->previous == nullptr));
        require(node->lastChild == nullptr || node->lastChild->next == nullptr);
        require(node->next == nullptr ||
                (node->next->previous == node && node->next->parent == node->parent));
        require(node == tree.root() || node->parent != nullptr);
    }
}

} // namespace

/// The bytes of a page, from decoding to what the view gets and where its links lead.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString file = QStringLiteral("/help/page.html");
    const QString text = decodePage(inputBytes(data, size));
    checkTree(text);
    const PageContext context{file, [](const QString& name) { return int(name.size() % 3) * 500; }};
    for (const auto presentation : {Presentation::Reading, Presentation::AsWritten}) {
        const auto page = preparePage(text, context, presentation);
        require(!reachesOut(page.html));
        require(page.html.size() < 4096 + text.size() * 256);
        for (const auto& heading : page.headings) {
            require(heading.level >= 1 && heading.level <= 6);
        }
        for (const auto& link : page.links) {
            static_cast<void>(resolveLink(page.base, link.href));
        }
    }
    return 0;
}
