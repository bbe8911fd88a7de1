// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class HelpLibrary;

/// A page with its anchor that a link leads to; where that is in a package, or means one, which is not open
/// or does not have it, the same page in one that is open.
[[nodiscard]] QString pageInOpenSet(const HelpLibrary& library, const QString& target);
