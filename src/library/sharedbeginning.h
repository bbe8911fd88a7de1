// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

/// The text without words at its beginning that it shares with the one before it or the one behind it, and a
/// mark in their place, so that what tells them apart can be seen where there is little room: as few of these
/// words as it takes until it `fits`, or all of them. Blanks before the first word stay. The text as it is
/// when so little is shared that this gains nothing.
[[nodiscard]] QString withoutSharedBeginning(QStringView text, QStringView before, QStringView behind,
                                             const std::function<bool(const QString&)>& fits);
