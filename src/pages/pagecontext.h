// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>
#include <functional>

class StyleSheets;

/// How pages are to be laid out.
enum class Presentation {
    Reading,  ///< by the viewer's own rules where a page was made for a web browser
    AsWritten ///< as far as rich text can
};

/// What a page is shown with, 0xRRGGBB.
struct PaletteColors {
    uint32_t base = 0xFFFFFF;
    uint32_t text = 0;
    uint32_t link = 0x0000EE;
    bool isLinkChosen = false; ///< a person chose the colour of links

    [[nodiscard]] bool operator==(const PaletteColors&) const = default;
};

/// What preparing a page needs to know of its surroundings.
struct PageContext {
    QString file; ///< absolute path; empty for a page that is not in a file
    /// Width of the picture in a file in pixels; 0 when it cannot be shown, which lets its text stand for it.
    std::function<int(const QString& file)> pictureWidth;
    /// Whether to prepare all of a page that takes long to show: one that is very large or has absurdly long
    /// words or paragraphs.
    bool isWhole = false;
    /// The style sheets of files; null to look at those in the page only.
    StyleSheets* styleSheets = nullptr;
    PaletteColors colors = {};
};
