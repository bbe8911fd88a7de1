// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class HelpLibrary;
class QString;
class QWidget;

/// Lists the documentation that is on the machine and calls `open` with the name of each help set that the
/// user chooses.
void openMachineDialog(const HelpLibrary& library, QWidget* window,
                       const std::function<void(const QString& name)>& open);
