// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// What a character counts as when text is cut into words.
enum class CharacterKind {
    Separator,
    Letter, ///< letters, digits and signs that belong to words
    Dense,  ///< of a writing without blanks between words
};

[[nodiscard]] CharacterKind kindOf(char32_t character);

/// Appends a character in UTF-8 without letter case and accents; of an accent by itself nothing is left.
void appendFolded(std::string& folded, char32_t character);
