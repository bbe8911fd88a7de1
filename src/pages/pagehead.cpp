// SPDX-License-Identifier: MIT
#include "pages/pagehead.h"

#include "markup/tags.h"
#include "pages/links.h"

#include <QRegularExpression>

namespace {

QString textOf(const HtmlNode& element)
{
    QString text;
    for (const auto* node = &element; node != nullptr; node = nextNode(node, &element)) {
        text += toQString(node->content);
    }
    return text.simplified();
}

QString refreshTarget(const HtmlNode& meta)
{
    static const QRegularExpression target(QStringLiteral(R"(^[\s\d.]*[;,\s]\s*url\s*=\s*['"]?\s*([^'"]+))"),
                                           QRegularExpression::CaseInsensitiveOption);
    const QString found = target.match(toQString(attribute(meta, "content"))).captured(1).trimmed();
    return isRemoteName(found) || !foreignScheme(found).isEmpty() ? QString() : found;
}

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
    const auto* end = tree.first("body");
    // What a page says to browsers without scripts about itself is not about its content.
    const auto isForOthers = [](const HtmlNode& node) { return isElement(node, "noscript"); };
    for (const auto* node = tree.root(); node != nullptr && node != end;
         node = nextNode(node, tree.root(), !isForOthers(*node))) {
        if (isElement(*node, "title") && head.title.isEmpty()) {
            head.title = textOf(*node);
        } else if (isElement(*node, "meta") && head.refresh.isEmpty() &&
                   equalsLower(attribute(*node, "http-equiv"), "refresh")) {
            head.refresh = refreshTarget(*node);
        }
    }
    return head;
}
