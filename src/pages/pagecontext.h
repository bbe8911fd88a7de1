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
    /// Makes a colour of the page's text, 0xRRGGBB, readable on what it is shown on; may be empty.
    std::function<uint32_t(uint32_t color)> ink = {};
};
