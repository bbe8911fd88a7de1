// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

[[nodiscard]] inline QString toQString(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

template <size_t Size>
[[nodiscard]] bool isOneOf(std::string_view word, const std::array<std::string_view, Size>& words)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Appends text with the characters escaped that mean something in HTML.
void appendEscaped(std::string& html, std::string_view text);

/// An attribute as it stands in a tag, such as ` name="value"`.
[[nodiscard]] std::string attributeText(std::string_view name, std::string_view value);

/// `attributes` is a sequence of what attributeText() gives.
[[nodiscard]] std::string startTag(std::string_view name, std::string_view attributes = {});
[[nodiscard]] std::string endTag(std::string_view name);
