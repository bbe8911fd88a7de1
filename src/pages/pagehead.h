// SPDX-License-Identifier: MIT
#pragma once

#include "markup/htmltree.h"

/// What a page says about itself.
struct PageHead {
    QString title;
    QString language;
    QString base;    ///< what relative names start from
    QString refresh; ///< where the page passes its readers on to; empty for none
};

/// `file` is the page's own.
[[nodiscard]] PageHead readPageHead(const HtmlTree& tree, const QString& file);
