// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Contents file of the program's own manual: of the installation, else of the source tree that the program
/// was built in. Empty when there is none.
[[nodiscard]] QString manualContentsFile();
