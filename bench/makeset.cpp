// SPDX-License-Identifier: MIT
// makeset DIR TOPICS KEYWORDS: writes a help set to measure with, small ones also in other kinds.
#include "otherkinds.h"
#include "syntheticset.h"

int main(int argc, char* argv[])
{
    if (argc != 4) {
        qFatal("usage: makeset DIR TOPICS KEYWORDS");
    }
    constexpr int small = 10'000; // topics
    const QString dir = QString::fromLocal8Bit(argv[1]);
    const SyntheticSize size{QByteArray(argv[2]).toInt(), QByteArray(argv[3]).toInt()};
    writeSyntheticSet(dir, size);
    if (size.topics <= small) {
        writeOtherKinds(dir);
    }
    return 0;
}
