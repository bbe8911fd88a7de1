// SPDX-License-Identifier: MIT
#include "scratch.h"

#include "library/helpset.h"
#include "sources/pagefiles.h"
#include "sources/qchsource.h"

/// A Qt help file, with the pages that its contents name.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const Scratch scratch;
    const QString file = scratch.write(QStringLiteral("a.qch"), inputBytes(data, size));
    HelpSet set(file, std::make_shared<QchSource>(file));
    set.adoptIndex(readIndexEntries(set.indexTask()));
    require(set.isReadable() || !set.problems().empty());
    int read = 0;
    for (const auto& record : set.records()) {
        constexpr int most = 20;
        if (record.target == EntryTarget::Page && ++read < most) {
            const QString page = record.page();
            require(isPageFile(page) || !readPageFile(page).ok());
        }
    }
    return 0;
}
