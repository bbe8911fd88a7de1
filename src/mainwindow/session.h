// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/wish.h"

class ContentsFiles;
class Desk;
class HelpLibrary;

/// What was open and what was read, from one run to the next.
namespace Session {

/// The page that was shown last; no page when it belongs to no loaded help set.
[[nodiscard]] Wish lastPage(const HelpLibrary& library);

void save(const HelpLibrary& library, const ContentsFiles& files, const Desk& desk);

} // namespace Session
