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

/// Whether the character is a mark that makes another one of the kana before it.
[[nodiscard]] bool isVoicedMark(char32_t character);

/// Lets a mark make another letter of the last one where languages keep the two apart, as in Japanese and
/// Russian, though not in "\u0451". False when it does not.
bool foldMark(std::string& folded, char32_t mark);

/// Appends a character in UTF-8 without letter case and accents, kana and letters in full width; of an accent
/// by itself nothing is left. Letters that only look like others with an accent stay what they are
/// (Cyrillic).
void appendFolded(std::string& folded, char32_t character);
