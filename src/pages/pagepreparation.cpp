// SPDX-License-Identifier: MIT
#include "pages/pagepreparation.h"

#include "markup/htmltree.h"
#include "pages/faithfulwriter.h"
#include "pages/maincontent.h"
#include "pages/pagehead.h"
#include "pages/pagesheets.h"
#include "pages/pagesurvey.h"
#include "pages/readingwriter.h"
#include "pages/styledwriter.h"
#include "pages/textlimit.h"
#include "styles/pagestyles.h"

#include <algorithm>

namespace {

/// How much of a plain text has neither absurdly long words nor lines.
qsizetype affordableLength(std::string_view text)
{
    constexpr size_t step = 1 << 16; // bytes
    TextLimit limit(false);
    size_t length = 0;
    while (length < text.size() && !limit.isReached()) {
        limit.beginPart();
        length += limit.take(text.substr(length, step), true).size();
    }
    return qsizetype(length);
}

} // namespace

PreparedPage preparePage(const QString& html, const PageContext& context, Presentation presentation)
{
    PreparedPage page;
    page.html = QStringLiteral("");
    page.isBeginning = !context.isWhole && html.size() > LargestPage;
    const HtmlTree tree(page.isBeginning ? html.first(LargestPage) : html);
    auto head = readPageHead(tree, context.file);
    page.title = std::move(head.title);
    page.language = std::move(head.language);
    page.base = std::move(head.base);
    page.refresh = std::move(head.refresh);
    auto* root = tree.root();
    if (root == nullptr) {
        return page;
    }
    if (presentation == Presentation::Reading && tree.first("frameset") == nullptr) {
        PageStyles styles({});
        addStyleSheets(styles, tree, page.base, context.styleSheets);
        const PageSurvey survey(*root, styles);
        if (survey.isWebPage()) {
            const auto* body = tree.first("body");
            const auto content = findMainContent(body == nullptr ? *root : *body);
            page.isReading = true;
            page.foundBy = content.foundBy;
            const auto& all = body == nullptr ? *root : *body;
            if (styles.hasRules()) {
                StyledWriter(context, page).writePage(all, *content.element);
            } else {
                ReadingWriter(context, page).writePage(all, *content.element);
            }
            return page;
        }
    }
    FaithfulWriter(context, page).writePage(*root);
    return page;
}

PreparedPage preparePlainText(const QString& text, const PageContext& context)
{
    PreparedPage page;
    page.base = context.file;
    page.text = text;
    if (context.isWhole) {
        return page;
    }
    const QByteArray bytes = text.first(std::min(text.size(), LargestPage)).toUtf8();
    const qsizetype length = affordableLength({bytes.data(), size_t(bytes.size())});
    page.isBeginning = length < bytes.size() || text.size() > LargestPage;
    if (page.isBeginning) {
        page.text = QString::fromUtf8(bytes.first(length));
        page.html = QStringLiteral("<pre>") + page.text.toHtmlEscaped() + QStringLiteral("</pre>");
    }
    return page;
}
