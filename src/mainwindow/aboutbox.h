// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// Tells name, version and licence of the program.
void openAboutBox(QWidget* window);
