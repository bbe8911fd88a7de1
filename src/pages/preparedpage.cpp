// SPDX-License-Identifier: MIT
#include "pages/preparedpage.h"

#include "pages/faithfulwriter.h"
#include "pages/htmltree.h"
#include "pages/maincontent.h"
#include "pages/pagehead.h"
#include "pages/pagesurvey.h"
#include "pages/readingwriter.h"

PreparedPage preparePage(const QString& html, const PageContext& context, Presentation presentation)
{
    const HtmlTree tree(html);
    auto head = readPageHead(tree, context.file);
    PreparedPage page;
    page.title = std::move(head.title);
    page.language = std::move(head.language);
    page.base = std::move(head.base);
    page.refresh = std::move(head.refresh);
    auto* root = tree.root();
    if (root == nullptr) {
        return page;
    }
    if (presentation == Presentation::Reading && tree.first("frameset") == nullptr) {
        const PageSurvey survey(*root);
        if (survey.isWebPage()) {
            const auto* body = tree.first("body");
            const auto content = findMainContent(body == nullptr ? *root : *body);
            page.isReading = true;
            page.foundBy = content.foundBy;
            ReadingWriter(context, page).writePage(body == nullptr ? *root : *body, *content.element);
            return page;
        }
    }
    FaithfulWriter(context, page).writePage(*root);
    return page;
}
