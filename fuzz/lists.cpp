// SPDX-License-Identifier: MIT
#include "scratch.h"

#include "library/helpset.h"
#include "sources/htmlfoldersource.h"

#include <QDir>

#include <array>

/// A folder of HTML: the input, cut at lines "==", is a page and the lists of generators.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const Scratch scratch;
    static constexpr std::array names{u"index.html",  u"a.html",         u"bookindex.html",
                                      u"objects.inv", u"navtreedata.js", u"type-search-index.js"};
    QByteArray rest = inputBytes(data, size);
    for (const auto* name : names) {
        const qsizetype cut = rest.indexOf("\n==\n");
        scratch.write(QString::fromUtf16(name), cut < 0 ? rest : rest.first(cut));
        rest = cut < 0 ? QByteArray() : rest.sliced(cut + 4);
    }
    const QString folder = scratch.path({});
    HelpSet set(folder, std::make_shared<HtmlFolderSource>(folder));
    set.adoptIndex(readIndexEntries(set.indexTask()));
    require(set.isReadable());
    for (const auto& record : set.records()) {
        require(record.target != EntryTarget::Page || record.page().startsWith(folder));
    }
    return 0;
}
