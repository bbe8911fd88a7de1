// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <string_view>

/// What stands for the target of a page's link in prepared HTML; URLs would change letter case, blanks and
/// percent signs of the target itself.
[[nodiscard]] QString linkCode(size_t number);

/// What the names of such anchors begin with.
inline constexpr std::string_view HeadingAnchor = "~heading-";

/// Whether an anchor is one that the preparation added for a heading; such differ between presentations.
[[nodiscard]] bool isHeadingAnchor(const QString& name);

/// The number of a linkCode(); -1 for other texts.
[[nodiscard]] int linkNumber(const QString& code);
