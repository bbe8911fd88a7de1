// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/printdocument.h"

class PageView;
class QWidget;

/// The commands that put the page shown on paper, with their dialogs; `window` is the parent of the dialogs.
/// Failures are shown in a message box.
namespace PrintCommands {

/// The page shown, as it is to be printed.
[[nodiscard]] PrintablePage printablePage(const PageView& view);

void print(QWidget* window, const PageView& view);
void preview(QWidget* window, const PageView& view);
void exportAsPdf(QWidget* window, const PageView& view);

} // namespace PrintCommands
