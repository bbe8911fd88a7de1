// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// Loads contents files as the viewer would and writes what they hold to standard output as one JSON object.
/// Returns the exit status: 1 when a named file is missing or unreadable, or when not everything
/// could be written.
[[nodiscard]] int dump(const QStringList& fileNames);
