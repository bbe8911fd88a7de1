// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/words.h"

#include <string>
#include <string_view>

/// The language of a page, such as "de": the one that it declares, else what its file or directory is called
/// after, else what its text looks like; empty when it looks like none that is known.
[[nodiscard]] std::string pageLanguage(std::string_view declared, std::string_view path, const Words& words);
