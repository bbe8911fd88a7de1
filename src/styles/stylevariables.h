// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

struct StyleVariables;

/// A value with its variables put in; none when one of them is not set and has nothing to stand for it, or
/// when they grow without end.
[[nodiscard]] std::optional<std::string> withVariables(std::string_view value,
                                                       const StyleVariables* variables);
