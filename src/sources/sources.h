// SPDX-License-Identifier: MIT
#pragma once

#include "formats/regularfile.h"
#include "sources/source.h"

#include <memory>

/// The source that a file is, by its name, else by what is in it.
[[nodiscard]] std::unique_ptr<Source> openSource(const QString& fileName);

/// The title that a help set gives itself, else the file name.
[[nodiscard]] QString sourceTitle(const QString& fileName);

/// Why no help set can be opened there; none when it may be one.
[[nodiscard]] std::optional<FileError> sourceError(const QString& fileName);
