// SPDX-License-Identifier: MIT
#include "pages/builtinpage.h"

#include <QCoreApplication>

#include <algorithm>

QString BuiltinPage::toHtml() const
{
    QString html =
        QStringLiteral("<html><head><title>%1</title></head><body><h1>%1</h1>").arg(title.toHtmlEscaped());
    if (!text.isEmpty()) {
        html += QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped());
    }
    if (!facts.empty()) {
        html += QStringLiteral("<table cellpadding=\"4\">");
        for (const auto& fact : facts) {
            html += QStringLiteral("<tr><td><b>%1</b></td><td>").arg(fact.name.toHtmlEscaped());
            html += fact.value.toHtmlEscaped() + QStringLiteral("</td></tr>");
        }
        html += QStringLiteral("</table>");
    }
    if (!links.empty()) {
        html += QStringLiteral("<ul>");
        for (size_t i = 0; i < std::min(links.size(), MaximumLinks); ++i) {
            const QString note =
                links[i].note.isEmpty() ? QString() : QStringLiteral(" – ") + links[i].note.toHtmlEscaped();
            html += QStringLiteral("<li><a href=\"item:%1\">").arg(i);
            html += links[i].text.toHtmlEscaped() + QStringLiteral("</a>") + note + QStringLiteral("</li>");
        }
        html += QStringLiteral("</ul>");
    }
    if (links.size() > MaximumLinks) {
        const QString more = QCoreApplication::translate("BuiltinPage", "The first %1 of %2 are listed.");
        html += QStringLiteral("<p>%1</p>").arg(more.arg(MaximumLinks).arg(links.size()));
    }
    return html + QStringLiteral("</body></html>");
}
