// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct CssDeclaration {
    std::string name;  ///< in lower case, but for names that begin with "--"
    std::string value; ///< without white space at its ends
    bool isImportant = false;
};

struct CssRule {
    std::string selectors; ///< as written, separated by commas
    std::string media;     ///< of all conditions that it stands in, joined by " and "; empty for none
    std::vector<CssDeclaration> declarations;
};

struct CssImport {
    std::string file;
    std::string media; ///< empty for all
};

/// What a style sheet says, before it is understood. Forgiving: what makes no sense is left out.
struct CssText {
    std::vector<CssImport> imports;
    std::vector<CssRule> rules;
};

/// Reads a style sheet, UTF-8. Of a sheet of more than 4 MB or 50,000 rules the beginning is read.
[[nodiscard]] CssText readCss(std::string_view sheet);

/// Reads what stands in a rule, or in a style attribute.
[[nodiscard]] std::vector<CssDeclaration> readDeclarations(std::string_view text);

/// Splits at a sign that stands outside of strings and brackets; the parts have no white space at their ends.
[[nodiscard]] std::vector<std::string_view> splitCss(std::string_view text, char sign);

[[nodiscard]] std::string_view trimmedCss(std::string_view text);
[[nodiscard]] std::string lowerCss(std::string_view text);

/// The number that a text begins with, such as "1.5em"; the rest goes to `unit`.
[[nodiscard]] std::optional<double> readCssNumber(std::string_view text, std::string_view& unit);
