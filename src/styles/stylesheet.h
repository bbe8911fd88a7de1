// SPDX-License-Identifier: MIT
#pragma once

#include "styles/ancestorfilter.h"
#include "styles/cssreader.h"
#include "styles/selector.h"
#include "styles/styleproperties.h"

#include <memory>

/// What a rule, or an element's own style, says.
struct StyleBlock {
    explicit StyleBlock(const std::vector<CssDeclaration>& written);

    std::vector<StyleDeclaration> declarations;
    bool isForSight = false; ///< some of them decide what is shown
    bool hasVariables = false;
    bool hasImportant = false;
    bool hasFont = false;
};

/// One selector with what it says.
struct StyleRule {
    Selector selector;
    AncestorFilter::Needs needs;             ///< of the selector
    std::shared_ptr<const StyleBlock> block; ///< of all selectors of a rule
    std::string media;                       ///< empty for all
};

/// A style sheet that was understood, in the order in which it was written. Kept and used by many pages.
struct StyleSheet {
    std::vector<CssImport> imports;
    std::vector<StyleRule> rules;
};

[[nodiscard]] StyleSheet readStyleSheet(std::string_view sheet);

/// What HTML itself says of the looks of an element; null when it says nothing.
[[nodiscard]] const StyleBlock* defaultStyle(std::string_view element);

/// Whether a condition, in lower case, holds for a screen, or for paper, of a width in pixels.
struct Medium {
    bool isPaper = false;
    double width = 1000;
};
[[nodiscard]] bool holds(std::string_view condition, const Medium& medium);
