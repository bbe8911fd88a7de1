// SPDX-License-Identifier: MIT
#pragma once

#include "markup/htmltree.h"

/// What a page says in its head to all who show it.
struct HtmlHead {
    QString title;
    QString refresh; ///< the link that it passes its readers on to; empty for none
};

[[nodiscard]] HtmlHead readHtmlHead(const HtmlTree& tree);
