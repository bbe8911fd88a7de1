// SPDX-License-Identifier: MIT
#include "browser/pagebudget.h"

#include <QAbstractTextDocumentLayout>
#include <QCoreApplication>
#include <QTextDocument>
#include <QVariant>

#include <algorithm>
#include <cmath>
#include <ctime>

namespace PageBudget {

namespace {

constexpr double AffordableTime = 1; // seconds
constexpr qsizetype SmallPiece = 1 << 13;
constexpr qsizetype LargePiece = 1 << 15;
constexpr qsizetype HarmlessSize = 1 << 19; // characters; what is smaller is not worth the trial
constexpr double PageWidth = 600;           // pixels

const QString& wholePageLink()
{
    static const QString link = QStringLiteral("whole:page");
    return link;
}

/// Opens no files.
class Trial : public QTextDocument {
    QVariant loadResource(int /*type*/, const QUrl& /*name*/) override { return QStringLiteral(""); }
};

/// Time of the processor that this thread has had, in seconds.
double processorTime()
{
    timespec time = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

double timeFor(const PageText& page, qsizetype begin, qsizetype length, Presentation presentation)
{
    const double start = processorTime();
    const QString piece = page.text.sliced(begin, length);
    Trial document;
    if (page.isHtml) {
        document.setHtml(preparePage(piece, {{}, [](const QString&) { return 0; }}, presentation).html);
    } else {
        document.setPlainText(piece);
    }
    document.setTextWidth(PageWidth);
    static_cast<void>(document.documentLayout()->documentSize());
    return processorTime() - start;
}

} // namespace

qsizetype affordableLength(const PageText& page, Presentation presentation)
{
    const qsizetype size = page.text.size();
    if (size <= HarmlessSize) {
        return size;
    }
    const double small = timeFor(page, 0, SmallPiece, presentation);
    double large = timeFor(page, 0, LargePiece, presentation);
    for (const qsizetype begin : {size / 2, size - LargePiece}) {
        large = std::max(large, timeFor(page, begin, LargePiece, presentation));
    }
    // The time grows with a power of the length.
    const double power = std::clamp(std::log(large / small) / std::log(LargePiece / SmallPiece), 1.0, 2.0);
    const double affordable = double(LargePiece) * std::pow(AffordableTime / large, 1 / power);
    return std::min({size, Largest, std::max(SmallPiece, qsizetype(std::min(affordable, double(Largest))))});
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
