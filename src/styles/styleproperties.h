// SPDX-License-Identifier: MIT
#pragma once

#include "styles/computedstyle.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

struct CssDeclaration;

/// What values are relative to.
struct StyleSurroundings {
    const ComputedStyle* parent = nullptr; ///< null for the root
    double width = 1000;                   ///< pixels of the page
};

/// A property that is understood.
struct StyleProperty {
    std::string_view name;
    /// Changes a style by a value, in lower case but for strings. A value that makes no sense changes
    /// nothing.
    void (*apply)(ComputedStyle& style, std::string_view value, const StyleSurroundings& around);
};

/// What one declaration of a sheet says.
struct StyleDeclaration {
    const StyleProperty* property = nullptr; ///< null for a variable
    bool isImportant = false;
    bool isForSight = false;  ///< what it says decides whether and as what an element is shown
    bool isForFont = false;   ///< other lengths depend on it
    bool hasVariable = false; ///< to be put in
    std::string name;         ///< of a variable
    std::string value;
};

/// What is understood of a rule's declarations.
[[nodiscard]] std::vector<StyleDeclaration> understood(const std::vector<CssDeclaration>& declarations);

/// The parts of a value that stand between blanks.
[[nodiscard]] std::vector<std::string_view> wordsOf(std::string_view value);

[[nodiscard]] std::span<const StyleProperty> textProperties();
[[nodiscard]] std::span<const StyleProperty> boxProperties();
[[nodiscard]] std::span<const StyleProperty> layoutProperties();
