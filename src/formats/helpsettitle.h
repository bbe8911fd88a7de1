// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// What stands behind the first "=" of a directive line, trimmed; nothing when the (trimmed) line does not
/// begin with `directive` or has no "=".
[[nodiscard]] std::optional<QStringView> directiveValue(QStringView trimmedLine, QStringView directive);

inline constexpr QStringView TitleDirective = u":title";
inline constexpr QStringView IndexDirective = u":index";

/// The title that a contents file gives its help set; the file name when it gives none or cannot be read.
[[nodiscard]] QString getTitle(const QString& fileName);
