// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// Texts in a terminal, whose letters all are one column wide, or two.
namespace TextGrid {

/// How many columns a text takes.
[[nodiscard]] int columns(QStringView text);
/// The text in lines of at most `width` columns; words that are longer stay whole.
[[nodiscard]] QStringList wrapped(const QString& text, int width);
/// The text and blanks up to a width.
[[nodiscard]] QString padded(const QString& text, int width);
/// Columns of lines side by side; `widths` are theirs.
[[nodiscard]] QStringList besideEachOther(const QList<QStringList>& columns, const QList<int>& widths);

inline constexpr int Gap = 2; ///< blanks between columns

} // namespace TextGrid
