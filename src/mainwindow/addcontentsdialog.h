// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

class QWidget;

/// Lets the user choose a contents file and calls `add` with its name, which returns a sentence on what is
/// wrong with it, for a message; empty for nothing.
void openAddContentsDialog(QWidget* window, const std::function<QString(const QString& fileName)>& add);
