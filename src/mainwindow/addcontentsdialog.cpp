// SPDX-License-Identifier: MIT
#include "mainwindow/addcontentsdialog.h"

#include "browser/messages.h"
#include "library/helplibrary.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>

void openAddContentsDialog(QWidget* window, const std::function<QString(const QString& fileName)>& add)
{
    auto* dialog = new QFileDialog(
        window, {}, {},
        (HelpLibrary::fileFilters() << QCoreApplication::translate("AddContentsDialog", "All Files (*.*)"))
            .join(QStringLiteral(";;")));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    QObject::connect(dialog, &QFileDialog::fileSelected, window, [add, window](const QString& fileName) {
        if (const QString problem = add(QFileInfo(fileName).canonicalFilePath()); !problem.isEmpty()) {
            openMessage(QMessageBox::Warning,
                        QCoreApplication::translate("AddContentsDialog", "Load contents error"), problem,
                        window);
        }
    });
    dialog->open();
}
