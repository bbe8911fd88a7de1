// SPDX-License-Identifier: MIT
#include "browser/pagebudget.h"

#include <QCoreApplication>

#include <algorithm>

namespace PageBudget {

namespace {

// The toolkit's time grows faster than the length of these.
constexpr qsizetype LongestWord = 1 << 16; // characters without a blank
constexpr qsizetype LongestText = 1 << 20; // characters without a tag or, in plain text, a line end

const QString& wholePageLink()
{
    static const QString link = QStringLiteral("whole:page");
    return link;
}

} // namespace

qsizetype affordableLength(const PageText& page)
{
    const QStringView text = QStringView(page.text).first(std::min(page.text.size(), Largest));
    const QChar breaker = page.isHtml ? u'<' : u'\n';
    qsizetype wordBegin = 0;
    qsizetype textBegin = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        textBegin = text[i] == breaker ? i : textBegin;
        wordBegin = text[i] == breaker || text[i].isSpace() ? i : wordBegin;
        if (i - wordBegin >= LongestWord || i - textBegin >= LongestText) {
            return i;
        }
    }
    return text.size();
}

PageText beginningOf(const PageText& page, qsizetype length)
{
    const QString text = page.text.first(length);
    return {page.isHtml ? text : QStringLiteral("<pre>") + text.toHtmlEscaped() + QStringLiteral("</pre>"),
            true};
}

bool isWholePageLink(const QString& href)
{
    return href == wholePageLink();
}

void addNotice(PreparedPage& page)
{
    const QString notice =
        QCoreApplication::translate("PageBudget", "This is the beginning of a page that takes long to show.");
    const QString link = QCoreApplication::translate("PageBudget", "Show all of it");
    page.html.prepend(QStringLiteral("<p><b>%1</b> <a href=\"%2\">%3</a></p>")
                          .arg(notice.toHtmlEscaped(), linkCode(page.links.size()), link.toHtmlEscaped()));
    page.links.push_back({wholePageLink(), link});
}

} // namespace PageBudget
