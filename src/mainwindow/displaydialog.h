// SPDX-License-Identifier: MIT
#pragma once

class PageView;
class QWidget;

/// Lets the user choose how pages look and applies the choice to the view, which must outlive the dialog.
void openDisplayDialog(QWidget* window, PageView& view);
