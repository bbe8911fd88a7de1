// SPDX-License-Identifier: MIT
#include "browser/messages.h"

QMessageBox* openMessage(QMessageBox::Icon icon, const QString& title, const QString& text, QWidget* parent,
                         QMessageBox::StandardButtons buttons, QMessageBox::StandardButton defaultButton)
{
    auto* box = new QMessageBox(icon, title, text, buttons, parent);
    box->setTextFormat(Qt::PlainText);
    box->setDefaultButton(defaultButton);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
    return box;
}
