// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/printdocument.h"

#include <QString>

class QPrinter;

/// Pages on paper, which print, preview and PDF files share. Printers are to be of screen resolution.
namespace PagePrinter {

/// Gives the job the page's title and makes it cover whole sheets; call it before a dialog shows the printer.
/// When the machine has no printer, the output goes to the suggested PDF file.
void prepare(QPrinter& printer, const QString& title);

/// Paints the sheets that the printer's page ranges name: margins of one inch and the page's number below the
/// text, flush right. False when the output cannot be begun or not be finished, or there is no such sheet.
[[nodiscard]] bool paint(QPrinter& printer, const PrintablePage& page);

/// Writes the page to a PDF file with the page's title. False when the file cannot be written.
[[nodiscard]] bool exportPdf(const QString& fileName, const PrintablePage& page);

/// A file name made from a page's title, in the user's folder of documents; never that of a directory.
[[nodiscard]] QString suggestedPdfName(const QString& title);

} // namespace PagePrinter
