// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Why a file that is named like a contents file cannot be one, by its beginning: a sentence part for people.
/// Null when it may be one.
[[nodiscard]] QString whyNoContentsFile(const QString& fileName);
