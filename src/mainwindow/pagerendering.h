// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagecontext.h"

#include <QString>

/// Rendering of a single page without a window.
namespace PageRendering {

struct Options {
    Presentation presentation = Presentation::Reading;
    /// Whether to take all of a page of which the page view would show the beginning only, however long that
    /// takes.
    bool isWhole = false;
};

struct Outcome {
    QString problem; ///< why it failed, as a sentence; empty for success
    QString notice;  ///< what else there is to say, as a sentence; empty for nothing
};

/// On sheets of paper, as printing does it.
[[nodiscard]] Outcome toPdf(const QString& page, const QString& output, const Options& options);

/// As the page view shows it when it is `width` pixels wide; at most MaximumHeight pixels of it, and
/// MaximumArea.
[[nodiscard]] Outcome toPng(const QString& page, const QString& output, int width, const Options& options);

/// The words that the page view shows, in lines of `width` letters; with `hasLinks`, links have numbers.
[[nodiscard]] Outcome toText(const QString& page, QString& text, int width, bool hasLinks,
                             const Options& options);

inline constexpr int MaximumHeight = 30000;
inline constexpr int MaximumWidth = 10000;
inline constexpr int MaximumArea = 100'000'000; ///< pixels

} // namespace PageRendering
