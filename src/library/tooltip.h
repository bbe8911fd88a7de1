// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A tool tip that shows a text as it is. By itself the toolkit takes what looks like markup for such.
[[nodiscard]] inline QString plainToolTip(const QString& text)
{
    return QStringLiteral("<span>") + text.toHtmlEscaped() + QStringLiteral("</span>");
}
