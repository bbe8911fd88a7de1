// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

/// Which signs of ASCII are worth a word of their own, or belong to a name beside them.
namespace Signs {

[[nodiscard]] bool isSign(char c);
/// Whether signs beside this character stand apart: blanks, quotes, brackets that open on their left or close
/// on their right.
[[nodiscard]] bool isApart(char c);
/// Whether a run of signs that stands apart is a word: "->>", ":=", not the lines that are drawn with signs.
[[nodiscard]] bool isWord(std::string_view run);
/// Without what ends a sentence.
[[nodiscard]] std::string_view withoutPunctuation(std::string_view run);
/// Whether a run belongs to the name that begins with this character: "%s", "@property", "$1".
[[nodiscard]] bool canPrecedeName(std::string_view run, char name);
/// Whether the character may belong to the name before it.
[[nodiscard]] bool canFollowName(char c);
/// How many signs belong to the name before them: "!", "^", "~3".
[[nodiscard]] size_t trailing(std::string_view rest);
/// How much of a text trailing() looks at.
inline constexpr size_t LongestTrailing = 4;

} // namespace Signs
