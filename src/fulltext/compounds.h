// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// The words of a compound in a writing without blanks, divided where the writing changes: "画像の回転" has
/// "画像" and "回転", "RAIDとLVM" has "RAID" and "LVM". Hiragana between others only say how these belong
/// together, unless the character before is a lone one, whose ending they are. Four or six Chinese characters
/// are words of two. Any other text is one word.
[[nodiscard]] QStringList compoundParts(const QString& text);
