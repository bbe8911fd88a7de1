// SPDX-License-Identifier: MIT
#include "mainwindow/malformedfiles.h"

#include <QCoreApplication>
#include <QMessageBox>

#include <algorithm>

namespace {

constexpr qsizetype MaximumListed = 20;

} // namespace

void reportMalformedFiles(const QStringList& files, QWidget* parent)
{
    if (files.isEmpty()) {
        return;
    }
    QStringList lines;
    for (const auto& file : files.first(std::min(files.size(), MaximumListed))) {
        lines.append(QCoreApplication::translate("MalformedFiles", "'%1' not a contents file.").arg(file));
    }
    if (files.size() > MaximumListed) {
        lines.append(QCoreApplication::translate("MalformedFiles", "… and %1 more.")
                         .arg(files.size() - MaximumListed));
    }
    auto* box = new QMessageBox(QMessageBox::Critical,
                                QCoreApplication::translate("MalformedFiles", "Load contents error"),
                                lines.join(u'\n'), QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QMetaObject::invokeMethod(box, &QDialog::open, Qt::QueuedConnection);
}
