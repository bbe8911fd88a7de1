// SPDX-License-Identifier: MIT
#pragma once

#include "sources/sources.h"

/// The folder, or the book that describes it, that a page or folder of HTML belongs to.
[[nodiscard]] HelpSetPlace htmlPlaceOf(const QString& fileName);

/// Whether a folder belongs to all users or all packages, so that no help set is all that is in it.
[[nodiscard]] bool isCommonFolder(const QString& path);

/// Whether a folder may be a help set: it holds pages.
[[nodiscard]] bool isHtmlFolder(const QString& folder);
