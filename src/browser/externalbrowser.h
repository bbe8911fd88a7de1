// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Hands a name, as its only argument, to the first web browser program that starts; it is not waited for.
/// False when none could be started, or when the name begins with "-" and would be taken for an option.
[[nodiscard]] bool openInExternalBrowser(const QString& name);
