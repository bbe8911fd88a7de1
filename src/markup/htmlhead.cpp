// SPDX-License-Identifier: MIT
#include "markup/htmlhead.h"

#include "markup/tags.h"

#include <QRegularExpression>

namespace {

QString textOf(const HtmlNode& element)
{
    std::string text;
    for (const auto* node = &element; node != nullptr; node = nextNode(node, &element)) {
        text += node->content;
    }
    return toQString(text).simplified();
}

QString refreshTarget(const HtmlNode& meta)
{
    static const QRegularExpression target(QStringLiteral(R"(^[\s\d.]*[;,\s]\s*url\s*=\s*['"]?\s*([^'"]+))"),
                                           QRegularExpression::CaseInsensitiveOption);
    return target.match(toQString(attribute(meta, "content"))).captured(1).trimmed();
}

} // namespace

HtmlHead readHtmlHead(const HtmlTree& tree)
{
    HtmlHead head;
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
