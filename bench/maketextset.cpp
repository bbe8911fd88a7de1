// SPDX-License-Identifier: MIT
// maketextset DIRECTORY PAGES: a help set of running text.
#include "textset.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char* argv[])
{
    if (argc != 3) {
        std::fputs("usage: maketextset DIRECTORY PAGES\n", stderr);
        return 2;
    }
    writeTextSet(QString::fromLocal8Bit(argv[1]), std::atoi(argv[2]));
    return 0;
}
