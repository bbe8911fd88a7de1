// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>

/// Opens a message over `parent`, which stays modal until it is answered, and returns at once: nothing waits
/// in a nested event loop for an answer, so whatever the message is about may go away meanwhile. `text` is
/// plain. The box belongs to `parent` and deletes itself.
QMessageBox* openMessage(QMessageBox::Icon icon, const QString& title, const QString& text, QWidget* parent,
                         QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                         QMessageBox::StandardButton defaultButton = QMessageBox::NoButton);
