// SPDX-License-Identifier: MIT
#include "mainwindow/addcontentsdialog.h"

#include "library/helplibrary.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>

void openAddContentsDialog(QWidget* window, const std::function<void(const QString& fileName)>& add)
{
    auto* dialog = new QFileDialog(
        window, {}, {},
        (HelpLibrary::fileFilters() << QCoreApplication::translate("AddContentsDialog", "All Files (*.*)"))
            .join(QStringLiteral(";;")));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    QObject::connect(dialog, &QFileDialog::fileSelected, window,
                     [add](const QString& fileName) { add(QFileInfo(fileName).canonicalFilePath()); });
    dialog->open();
}
