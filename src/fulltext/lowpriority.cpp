// SPDX-License-Identifier: MIT
#include "fulltext/lowpriority.h"

#include <sys/resource.h>
#include <unistd.h>

void lowerPriority()
{
    constexpr int lowPriority = 10; // as of nice(1); here each thread has its own
    ::setpriority(PRIO_PROCESS, id_t(::gettid()), lowPriority);
}
