// SPDX-License-Identifier: MIT
#include "mainwindow/printcommands.h"

#include "browser/messages.h"
#include "browser/pageview.h"
#include "mainwindow/pageprinter.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

#include <memory>

namespace PrintCommands {

namespace {

void reportFailure(QWidget* window, const QString& output)
{
    const QString reason =
        output.isEmpty()
            ? QCoreApplication::translate("PrintCommands", "The page could not be printed.")
            : QCoreApplication::translate("PrintCommands", "The file '%1' could not be written.").arg(output);
    openMessage(QMessageBox::Warning, QCoreApplication::translate("PrintCommands", "Print error"), reason,
                window);
}

/// A page and the printer for it, which outlive the command until its dialog is closed.
struct Job {
    explicit Job(const PageView& view) : page(printablePage(view)), printer(QPrinter::ScreenResolution)
    {
        PagePrinter::prepare(printer, page.title);
    }

    PrintablePage page;
    QPrinter printer;
    bool isPainted = true;
};

void exportTo(const QString& fileName, QWidget* window, const PrintablePage& page)
{
    if (!PagePrinter::exportPdf(fileName, page)) {
        reportFailure(window, fileName);
    }
}

void askExportName(QWidget* window, const PrintablePage& page, const QString& suggestion);

/// Asks before a file is lost. The dialog cannot: not every desktop's knows of the suffix that is added.
void exportUnlessRefused(const QString& fileName, QWidget* window, const PrintablePage& page)
{
    if (!QFileInfo(fileName).isFile()) {
        exportTo(fileName, window, page);
        return;
    }
    auto* question = openMessage(
        QMessageBox::Warning, QCoreApplication::translate("PrintCommands", "Export as PDF"),
        QCoreApplication::translate("PrintCommands", "The file '%1' exists.\nReplace it?").arg(fileName),
        window, QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    QObject::connect(question, &QDialog::finished, window, [=](int answer) {
        answer == QMessageBox::Yes ? exportTo(fileName, window, page) : askExportName(window, page, fileName);
    });
}

void askExportName(QWidget* window, const PrintablePage& page, const QString& suggestion)
{
    auto* dialog = new QFileDialog(window, QCoreApplication::translate("PrintCommands", "Export as PDF"), {},
                                   QCoreApplication::translate("PrintCommands", "PDF files (*.pdf)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->setDefaultSuffix(QStringLiteral("pdf"));
    dialog->setDirectory(QFileInfo(suggestion).path());
    dialog->selectFile(suggestion);
    QObject::connect(dialog, &QFileDialog::fileSelected, window,
                     [=](const QString& fileName) { exportUnlessRefused(fileName, window, page); });
    dialog->open();
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
    const auto job = std::make_shared<Job>(view);
    auto* dialog = new QPrintDialog(&job->printer, window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QDialog::accepted, window, [job, window] {
        if (!PagePrinter::paint(job->printer, job->page)) {
            reportFailure(window, job->printer.outputFileName());
        }
    });
    dialog->open();
}

void preview(QWidget* window, const PageView& view)
{
    const auto job = std::make_shared<Job>(view);
    auto* dialog = new QPrintPreviewDialog(&job->printer, window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QPrintPreviewDialog::paintRequested, dialog,
                     [job](QPrinter* sheets) { job->isPainted = PagePrinter::paint(*sheets, job->page); });
    QObject::connect(dialog, &QDialog::accepted, window, [job, window] {
        if (!job->isPainted) {
            reportFailure(window, job->printer.outputFileName());
        }
    });
    dialog->open();
}

void exportAsPdf(QWidget* window, const PageView& view)
{
    const PrintablePage page = printablePage(view);
    askExportName(window, page, PagePrinter::suggestedPdfName(page.title));
}

} // namespace PrintCommands
