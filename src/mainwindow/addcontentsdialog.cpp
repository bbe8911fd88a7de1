// SPDX-License-Identifier: MIT
#include "mainwindow/addcontentsdialog.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>

void openAddContentsDialog(QWidget* window, const std::function<void(const QString& fileName)>& add)
{
    auto* dialog = new QFileDialog(
        window, {}, {},
        QCoreApplication::translate("AddContentsDialog", "Contents File (*.cnt);;All Files (*.*)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    QObject::connect(dialog, &QFileDialog::fileSelected, window,
                     [add](const QString& fileName) { add(QFileInfo(fileName).canonicalFilePath()); });
    dialog->open();
}
