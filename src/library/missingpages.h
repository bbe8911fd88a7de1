// SPDX-License-Identifier: MIT
#pragma once

#include "formats/problem.h"

#include <vector>

class HelpLibrary;

/// Contents and index lines of all loaded help sets that name a page file which does not exist. Looks at the
/// disk once for every distinct page file.
[[nodiscard]] std::vector<Problem> findMissingPages(const HelpLibrary& library);
