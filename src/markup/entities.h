// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Appends, as UTF-8, what the reference to a character at the beginning of `text` means, such as "&lt;", and
/// returns its length; 0 when there is none, and the "&" means itself.
size_t readReference(std::string_view text, bool isInAttribute, std::string& out);

/// Appends a text, with the references in it replaced.
void appendDecoded(std::string_view text, bool isInAttribute, std::string& out);
