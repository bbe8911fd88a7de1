// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QString;
class QWidget;

/// Lets the user choose a contents file and calls `add` with its name.
void openAddContentsDialog(QWidget* window, const std::function<void(const QString& fileName)>& add);
