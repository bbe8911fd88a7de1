// SPDX-License-Identifier: MIT
#pragma once

#include "pages/preparedpage.h"

#include <libxml/tree.h>

/// The part of a page that holds what it says.
struct MainContent {
    const xmlNode* element;
    ContentFoundBy foundBy;
};

/// `body` is the body of a page that was surveyed, or its root when it has none. Furniture may still be in
/// the content.
[[nodiscard]] MainContent findMainContent(const xmlNode& body);
