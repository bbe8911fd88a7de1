// SPDX-License-Identifier: MIT
#pragma once

#include "styles/cssreader.h"
#include "styles/selector.h"

#include <memory>

/// One selector with what it says.
struct StyleRule {
    Selector selector;
    std::shared_ptr<const std::vector<CssDeclaration>> declarations; ///< of all selectors of a rule
    std::string media;                                               ///< empty for all
};

/// A style sheet that was understood, in the order in which it was written. Kept and used by many pages.
struct StyleSheet {
    std::vector<CssImport> imports;
    std::vector<StyleRule> rules;
};

[[nodiscard]] StyleSheet readStyleSheet(std::string_view sheet);

/// Whether a condition, in lower case, holds for a screen, or for paper, of a width in pixels.
struct Medium {
    bool isPaper = false;
    double width = 1000;
};
[[nodiscard]] bool holds(std::string_view condition, const Medium& medium);
