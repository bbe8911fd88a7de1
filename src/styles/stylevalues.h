// SPDX-License-Identifier: MIT
#pragma once

#include "styles/computedstyle.h"

#include <optional>
#include <string_view>
#include <vector>

struct CssDeclaration;

inline constexpr double FontSize = 16; ///< pixels, of a browser's page

/// A length in pixels of a screen; `em` is the size of the font. None when it is no length, or in percent.
[[nodiscard]] std::optional<double> readLength(std::string_view value, double em);

/// Leaves out what applyDeclaration() does nothing with, and puts the values in lower case.
void keepKnown(std::vector<CssDeclaration>& declarations);

/// Changes a style by one declaration, whose name and value are in lower case; names that are not known
/// change nothing. `parent` is the style of the element around it.
void applyDeclaration(ComputedStyle& style, std::string_view name, std::string_view value,
                      const InheritedStyle& parent);
