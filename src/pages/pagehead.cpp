// SPDX-License-Identifier: MIT
#include "pages/pagehead.h"

#include "markup/htmlhead.h"
#include "markup/tags.h"
#include "pages/links.h"

#include <utility>

namespace {

/// A base on the web is none: the page stands on disk.
QString resolvedBase(const QString& file, const QString& href)
{
    const bool isLocal = !href.isEmpty() && !isRemoteName(href) && foreignScheme(href).isEmpty();
    const QString base = isLocal ? resolveLink(file, href) : file;
    return isLocal && href.endsWith(u'/') && !base.endsWith(u'/') ? base + u'/' : base;
}

} // namespace

PageHead readPageHead(const HtmlTree& tree, const QString& file)
{
    PageHead head;
    head.base = file;
    if (tree.root() == nullptr) {
        return head;
    }
    const auto language = attribute(*tree.root(), "lang");
    head.language = toQString(language.empty() ? attribute(*tree.root(), "xml:lang") : language);
    if (const auto* base = tree.first("base"); base != nullptr && hasAttribute(*base, "href")) {
        head.base = resolvedBase(file, toQString(attribute(*base, "href")));
    }
    auto said = readHtmlHead(tree);
    head.title = std::move(said.title);
    if (!isRemoteName(said.refresh) && foreignScheme(said.refresh).isEmpty()) {
        head.refresh = std::move(said.refresh);
    }
    return head;
}
