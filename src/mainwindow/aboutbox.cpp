// SPDX-License-Identifier: MIT
#include "mainwindow/aboutbox.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QStyle>

void openAboutBox(QWidget* window)
{
    const QString text =
        QCoreApplication::translate("AboutBox", "<h3>Quenda %1</h3>"
                                                "<p>An off-line help viewer for the Linux desktop.</p>"
                                                "<p>Free software under the MIT licence.<br>"
                                                "Built with Qt %2.</p>")
            .arg(QCoreApplication::applicationVersion(), QLatin1StringView(qVersion()));
    auto* box = new QMessageBox(QMessageBox::NoIcon, QCoreApplication::translate("AboutBox", "About Quenda"),
                                text, QMessageBox::Ok, window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    const int size = window->style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, box);
    box->setIconPixmap(window->windowIcon().pixmap(size));
    box->open();
}
