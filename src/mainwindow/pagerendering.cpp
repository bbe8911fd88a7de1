// SPDX-License-Identifier: MIT
#include "mainwindow/pagerendering.h"

#include "browser/documenttext.h"
#include "browser/helpbrowser.h"
#include "browser/picturefile.h"
#include "library/helplibrary.h"
#include "mainwindow/pageprinter.h"
#include "mainwindow/printcommands.h"
#include "pages/pagefile.h"

#include <QAbstractTextDocumentLayout>
#include <QCoreApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace PageRendering {

namespace {

QString outputProblem()
{
    return QCoreApplication::translate("PageRendering", "The file cannot be written.");
}

/// A page view with one page in it.
class View {
public:
    View(const QString& page, const Options& options)
        : m_problem(problemOf(page)), m_browser(m_library, nullptr)
    {
        m_browser.setShowsWholePages(options.isWhole);
        m_browser.setReadingView(options.presentation == Presentation::Reading);
        if (m_problem.isEmpty()) {
            m_browser.setSource(HelpLibrary::absoluteName(page));
            m_browser.completePage();
        }
    }

    /// Empty when the page is there.
    [[nodiscard]] const QString& problem() const { return m_problem; }
    [[nodiscard]] HelpBrowser& browser() { return m_browser; }
    /// Of a page that was prepared.
    [[nodiscard]] Outcome outcome(const QString& problem = {}) const
    {
        const bool isBeginning = m_browser.page().prepared.isBeginning;
        return {problem, isBeginning
                             ? QCoreApplication::translate("PageRendering",
                                                           "This is the beginning of a page that takes long; "
                                                           "--whole takes all of it.")
                             : QString()};
    }

private:
    static QString problemOf(const QString& page)
    {
        const QString file = locatePage(page).file;
        // The page view would open a window for it.
        if (isPicture(file)) {
            return QCoreApplication::translate("PageRendering", "This is a picture, not a page.");
        }
        const auto content = readPage(file);
        return content.ok() ? QString() : describe(content.error());
    }

    QString m_problem;
    HelpLibrary m_library;
    HelpBrowser m_browser;
};

} // namespace

Outcome toPdf(const QString& page, const QString& output, const Options& options)
{
    View view(page, options);
    if (!view.problem().isEmpty()) {
        return {view.problem(), {}};
    }
    const bool isDone = PagePrinter::exportPdf(output, PrintCommands::printablePage(view.browser()));
    return view.outcome(isDone ? QString() : outputProblem());
}

Outcome toPng(const QString& page, const QString& output, int width, const Options& options)
{
    View view(page, options);
    if (!view.problem().isEmpty()) {
        return {view.problem(), {}};
    }
    auto& document = *view.browser().document();
    const int tallest = std::min(MaximumHeight, MaximumArea / width);
    view.browser().resize(width + view.browser().width() - view.browser().viewport()->width(), tallest);
    document.setTextWidth(width);
    const int height = std::max(int(std::ceil(document.size().height())), 1);
    QImage image(width, std::min(height, tallest), QImage::Format_RGB32);
    image.fill(view.browser().palette().color(QPalette::Base));
    QPainter painter(&image);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette = view.browser().palette();
    context.clip = image.rect();
    document.documentLayout()->draw(&painter, context);
    painter.end();
    auto outcome = view.outcome(image.save(output, "PNG") ? QString() : outputProblem());
    if (height > tallest && outcome.notice.isEmpty()) {
        outcome.notice =
            QCoreApplication::translate("PageRendering", "The picture ends after %1 of %2 pixels.")
                .arg(tallest)
                .arg(height);
    }
    return outcome;
}

Outcome toText(const QString& page, QString& text, int width, bool hasLinks, const Options& options)
{
    View view(page, options);
    if (!view.problem().isEmpty()) {
        return {view.problem(), {}};
    }
    const auto& links = view.browser().page().prepared.links;
    text = DocumentText(hasLinks ? &links : nullptr).write(*view.browser().document(), width);
    return view.outcome();
}

} // namespace PageRendering
