// SPDX-License-Identifier: MIT
#include "mainwindow/pageprinter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPageRanges>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <vector>

namespace {

constexpr int NumberDistance = 5;       // pixels between the text area and a sheet's number
constexpr qsizetype NameLength = 80;    // characters of a title that go into a file name
constexpr qsizetype TrailerLength = 64; // bytes at the end of a PDF file

/// Text area of a sheet in device pixels. Sheets too small for margins of an inch keep half their size.
QRect bodyRect(const QPaintDevice& sheet)
{
    const int marginX = qMin(sheet.logicalDpiX(), sheet.width() / 4);
    const int marginY = qMin(sheet.logicalDpiY(), sheet.height() / 4);
    return {marginX, marginY, sheet.width() - 2 * marginX, sheet.height() - 2 * marginY};
}

void paintNumber(QPainter& painter, const QFont& font, const QRect& body, int number)
{
    painter.setFont(font);
    painter.setPen(Qt::black);
    const auto metrics = painter.fontMetrics();
    const QString text = QString::number(number);
    painter.drawText(body.left() + body.width() - metrics.horizontalAdvance(text),
                     body.top() + body.height() + NumberDistance + metrics.ascent(), text);
}

/// A full disk is not reported while a PDF file is painted, but it leaves the file without its end. Pipes and
/// devices cannot be looked at.
bool isWholePdf(const QString& fileName)
{
    QFile file(fileName);
    return !QFileInfo(fileName).isFile() ||
           (file.open(QIODevice::ReadOnly) && file.seek(qMax(qint64(0), file.size() - TrailerLength)) &&
            file.readAll().trimmed().endsWith("%%EOF"));
}

/// Those that the print dialog asked for, counted from 0.
std::vector<int> chosenSheets(const QPrinter& printer, int count)
{
    const bool isAll = printer.printRange() != QPrinter::PageRange || printer.pageRanges().isEmpty();
    std::vector<int> sheets;
    for (int sheet = 0; sheet < count; ++sheet) {
        if (isAll || printer.pageRanges().contains(sheet + 1)) {
            sheets.push_back(sheet);
        }
    }
    return sheets;
}

void nameJob(QPrinter& printer, const QString& title)
{
    printer.setCreator(QCoreApplication::applicationName());
    printer.setDocName(title);
}

/// The folder of documents, or the home folder when there is none.
QDir documentsFolder()
{
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    return documents.exists() ? documents : QDir::home();
}

} // namespace

void PagePrinter::prepare(QPrinter& printer, const QString& title)
{
    nameJob(printer, title);
    printer.setFullPage(true);
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(suggestedPdfName(title));
    }
}

bool PagePrinter::paint(QPrinter& printer, const PrintablePage& page)
{
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    const QRect body = bodyRect(printer);
    PrintDocument document(page, &printer, body.size());
    const auto sheets = chosenSheets(printer, document.pageCount());
    for (const int sheet : sheets) {
        if (sheet != sheets.front() && !printer.newPage()) {
            return false;
        }
        painter.save();
        painter.translate(body.topLeft());
        document.paintSheet(painter, sheet);
        painter.restore();
        paintNumber(painter, page.font, body, sheet + 1);
    }
    return painter.end() && printer.printerState() != QPrinter::Error && !sheets.empty();
}

bool PagePrinter::exportPdf(const QString& fileName, const PrintablePage& page)
{
    QPrinter printer(QPrinter::ScreenResolution);
    nameJob(printer, page.title);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(fileName);
    return paint(printer, page) && isWholePdf(fileName);
}

QString PagePrinter::suggestedPdfName(const QString& title)
{
    static const QRegularExpression unsafe(QStringLiteral(R"([\p{C}/\\:*?"<>|~$`!;&]+)"));
    static const QRegularExpression edges(QStringLiteral(R"(^[\s._-]+|[\s._-]+$)"));
    QString name = title.simplified().first(qMin(title.simplified().size(), NameLength));
    name.replace(unsafe, QStringLiteral("_")).remove(edges);
    if (name.isEmpty()) {
        name = QCoreApplication::translate("PagePrinter", "page");
    }
    const QDir folder = documentsFolder();
    QString file = folder.filePath(name + u".pdf");
    while (QFileInfo(file).isDir()) {
        name += u'_';
        file = folder.filePath(name + u".pdf");
    }
    return file;
}
