// SPDX-License-Identifier: MIT
#pragma once

/// Has large blocks go back to the system when they are freed, instead of staying between others. To be
/// called before there are any.
void returnFreedMemory();
