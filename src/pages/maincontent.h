// SPDX-License-Identifier: MIT
#pragma once

#include "pages/preparedpage.h"

struct HtmlNode;

/// The part of a page that holds what it says.
struct MainContent {
    const HtmlNode* element;
    ContentFoundBy foundBy;
};

/// `body` is the body of a page that was surveyed, or its root when it has none. Furniture may still be in
/// the content.
[[nodiscard]] MainContent findMainContent(const HtmlNode& body);
