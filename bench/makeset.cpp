// SPDX-License-Identifier: MIT
// makeset DIR TOPICS KEYWORDS: writes a help set to measure with.
#include "syntheticset.h"

int main(int argc, char* argv[])
{
    if (argc != 4) {
        qFatal("usage: makeset DIR TOPICS KEYWORDS");
    }
    writeSyntheticSet(QString::fromLocal8Bit(argv[1]),
                      {QByteArray(argv[2]).toInt(), QByteArray(argv[3]).toInt()});
    return 0;
}
