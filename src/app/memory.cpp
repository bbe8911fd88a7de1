// SPDX-License-Identifier: MIT
#include "app/memory.h"

#include <malloc.h>

/// By itself the C library keeps blocks of a size once one of that size has been freed.
void returnFreedMemory()
{
#ifdef __GLIBC__
    constexpr int largeBlock = 1 << 20; // bytes
    constexpr int largeTop = 4 << 20;   // bytes
    ::mallopt(M_MMAP_THRESHOLD, largeBlock);
    ::mallopt(M_TRIM_THRESHOLD, largeTop);
#endif
}
