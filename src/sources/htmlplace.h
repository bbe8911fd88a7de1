// SPDX-License-Identifier: MIT
#pragma once

#include "sources/sources.h"

/// The folder, or the book that describes it, that a page or folder of HTML belongs to.
[[nodiscard]] HelpSetPlace htmlPlaceOf(const QString& fileName);

/// Whether a folder may be a help set: it holds pages.
[[nodiscard]] bool isHtmlFolder(const QString& folder);
