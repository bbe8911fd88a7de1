// SPDX-License-Identifier: MIT
#pragma once

#include "styles/readablecolor.h"

#include <QColor>
#include <QPalette>
#include <QString>

/// The display settings that pages take as a style sheet; what a page says itself goes before it.
struct PageStyle {
    QString fixedFamily; ///< of preformatted text and code
    bool linkUnderline = true;
    bool isUnderlineChosen = false; ///< by the user; otherwise pages may do without
    bool hasOwnLinkColor = false;   ///< the user chose it; otherwise the palette's is made readable

    /// What links look like where the page does not say.
    [[nodiscard]] QColor shownLinkColor(const QPalette& palette) const;
    /// For pages that are shown as they were written.
    [[nodiscard]] QString sheet(const QPalette& palette) const;
    /// For pages that are laid out by the viewer's own rules. All text has LeastContrast at least to what it
    /// stands on.
    [[nodiscard]] QString readingSheet(const QPalette& palette) const;
};

/// Contrast ratio of two opaque colours by their relative luminance, from 1 to 21.
[[nodiscard]] double contrast(const QColor& a, const QColor& b);

/// `color`, made lighter or darker until its contrast to `ground` is LeastContrast.
[[nodiscard]] QColor readableOn(const QColor& color, const QColor& ground);
