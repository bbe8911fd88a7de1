// SPDX-License-Identifier: MIT
#include "browser/pagebudget.h"
#include "pages/linkcode.h"

#include <QCoreApplication>

namespace PageBudget {

namespace {

const QString& wholePageLink()
{
    static const QString link = QStringLiteral("whole:page");
    return link;
}

} // namespace

bool isWholePageLink(const QString& href)
{
    return href == wholePageLink();
}

QString wholePageNotice(const QString& text, std::vector<PageLink>& links)
{
    const QString link = QCoreApplication::translate("PageBudget", "Show all of it");
    links.push_back({wholePageLink(), link});
    return QStringLiteral("<p><b>%1</b> <a href=\"%2\">%3</a></p>")
        .arg(text.toHtmlEscaped(), linkCode(links.size() - 1), link.toHtmlEscaped());
}

void addNotice(PreparedPage& page)
{
    const QString notice = wholePageNotice(
        QCoreApplication::translate("PageBudget", "This is the beginning of a page that takes long to show."),
        page.links);
    page.html = notice + page.html; // in the room that it needs
    for (auto& joint : page.joints) {
        joint += notice.size();
    }
}

} // namespace PageBudget
