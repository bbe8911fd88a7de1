// SPDX-License-Identifier: MIT
#pragma once

#include "formats/regularfile.h"
#include "formats/result.h"

#include <QString>

/// The text of a regular file that declares no encoding.
[[nodiscard]] Result<QString, FileError> readText(const QString& fileName);
