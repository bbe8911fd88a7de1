// SPDX-License-Identifier: MIT
#pragma once

/// Leaves the processor to the window: for the calling thread, from now on.
void lowerPriority();
