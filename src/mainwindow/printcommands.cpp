// SPDX-License-Identifier: MIT
#include "mainwindow/printcommands.h"

#include "browser/pageview.h"
#include "mainwindow/pageprinter.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

namespace PrintCommands {

namespace {

void reportFailure(QWidget* window, const QString& output)
{
    const QString reason =
        output.isEmpty()
            ? QCoreApplication::translate("PrintCommands", "The page could not be printed.")
            : QCoreApplication::translate("PrintCommands", "The file '%1' could not be written.").arg(output);
    QMessageBox box(QMessageBox::Warning, QCoreApplication::translate("PrintCommands", "Print error"), reason,
                    QMessageBox::Ok, window);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace

PrintablePage printablePage(const PageView& view)
{
    PrintablePage page;
    const auto& prepared = view.page().prepared;
    const bool isHtml = !prepared.html.isNull();
    page.content = {isHtml ? prepared.html : view.page().source.text, isHtml};
    page.links = prepared.links;
    page.baseUrl = view.document()->baseUrl();
    page.title = prepared.title.simplified();
    if (page.title.isEmpty()) {
        page.title = QFileInfo(view.page().file).completeBaseName();
    }
    page.font = view.font();
    page.styleSheet = view.pageSheet(PrintDocument::paperPalette());
    return page;
}

void print(QWidget* window, const PageView& view)
{
    const PrintablePage page = printablePage(view);
    QPrinter printer(QPrinter::ScreenResolution);
    PagePrinter::prepare(printer, page.title);
    QPrintDialog dialog(&printer, window);
    if (dialog.exec() == QDialog::Accepted && !PagePrinter::paint(printer, page)) {
        reportFailure(window, printer.outputFileName());
    }
}

void preview(QWidget* window, const PageView& view)
{
    const PrintablePage page = printablePage(view);
    QPrinter printer(QPrinter::ScreenResolution);
    PagePrinter::prepare(printer, page.title);
    QPrintPreviewDialog dialog(&printer, window);
    bool painted = true;
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&](QPrinter* sheets) { painted = PagePrinter::paint(*sheets, page); });
    if (dialog.exec() == QDialog::Accepted && !painted) {
        reportFailure(window, printer.outputFileName());
    }
}

void exportAsPdf(QWidget* window, const PageView& view)
{
    const PrintablePage page = printablePage(view);
    QString fileName =
        QFileDialog::getSaveFileName(window, QCoreApplication::translate("PrintCommands", "Export as PDF"),
                                     PagePrinter::suggestedPdfName(page.title),
                                     QCoreApplication::translate("PrintCommands", "PDF files (*.pdf)"));
    if (fileName.isEmpty()) {
        return;
    }
    if (QFileInfo(fileName).suffix().isEmpty()) {
        fileName += QStringLiteral(".pdf");
    }
    if (!PagePrinter::exportPdf(fileName, page)) {
        reportFailure(window, fileName);
    }
}

} // namespace PrintCommands
