// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/words.h"

#include <string>
#include <string_view>

/// The language of a page, such as "de": the one that it declares, else what its text looks like; empty when
/// it looks like none that is known.
[[nodiscard]] std::string pageLanguage(std::string_view declared, const Words& words);
