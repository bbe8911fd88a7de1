// SPDX-License-Identifier: MIT
#include "scratch.h"

#include "library/helpset.h"
#include "sources/devhelpsource.h"
#include "sources/sources.h"

/// A Devhelp book.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const Scratch scratch;
    const QString file = scratch.write(QStringLiteral("a.devhelp2"), inputBytes(data, size));
    static_cast<void>(sourceTitle(file));
    HelpSet set(file, std::make_shared<DevhelpSource>(file));
    set.adoptIndex(readIndexEntries(set.indexTask()));
    require(set.isReadable() || !set.problems().empty());
    require(set.isReadable() || set.records().empty());
    return 0;
}
