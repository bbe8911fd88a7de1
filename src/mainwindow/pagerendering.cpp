// SPDX-License-Identifier: MIT
#include "mainwindow/pagerendering.h"

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
    View(const QString& page, Presentation presentation)
        : m_problem(problemOf(page)), m_browser(m_library, nullptr)
    {
        m_browser.setShowsWholePages(true);
        m_browser.setReadingView(presentation == Presentation::Reading);
        if (m_problem.isEmpty()) {
            m_browser.setSource(HelpLibrary::absoluteName(page));
        }
    }

    /// Empty when the page is there.
    [[nodiscard]] const QString& problem() const { return m_problem; }
    [[nodiscard]] HelpBrowser& browser() { return m_browser; }

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

QString toPdf(const QString& page, const QString& output, Presentation presentation)
{
    View view(page, presentation);
    if (!view.problem().isEmpty()) {
        return view.problem();
    }
    return PagePrinter::exportPdf(output, PrintCommands::printablePage(view.browser())) ? QString()
                                                                                        : outputProblem();
}

QString toPng(const QString& page, const QString& output, int width, Presentation presentation)
{
    View view(page, presentation);
    if (!view.problem().isEmpty()) {
        return view.problem();
    }
    auto& document = *view.browser().document();
    view.browser().resize(width + view.browser().width() - view.browser().viewport()->width(), MaximumHeight);
    document.setTextWidth(width);
    const int height = std::clamp(int(std::ceil(document.size().height())), 1, MaximumHeight);
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(view.browser().palette().color(QPalette::Base));
    QPainter painter(&image);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette = view.browser().palette();
    context.clip = image.rect();
    document.documentLayout()->draw(&painter, context);
    painter.end();
    return image.save(output, "PNG") ? QString() : outputProblem();
}

} // namespace PageRendering
