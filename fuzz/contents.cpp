// SPDX-License-Identifier: MIT
#include "scratch.h"

#include "formats/contentsreader.h"
#include "formats/helpsettitle.h"
#include "formats/paths.h"
#include "library/helpset.h"
#include "sources/nativesource.h"

#include <array>

namespace {

/// Rows below `rows`, which know their parent and their position.
size_t countRows(std::span<HelpContentsListViewItem* const> rows)
{
    std::vector<const HelpContentsListViewItem*> waiting(rows.begin(), rows.end());
    size_t count = 0;
    while (!waiting.empty()) {
        const auto* row = waiting.back();
        waiting.pop_back();
        ++count;
        for (size_t i = 0; i < row->children.size(); ++i) {
            require(row->children[i]->parent == row && row->children[i]->position == int(i));
            waiting.push_back(row->children[i]);
        }
    }
    return count;
}

} // namespace

/// Contents files that may include each other: the input, cut at lines "==", is a.cnt, b.cnt and c.cnt.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const Scratch scratch;
    static constexpr std::array names{u"a.cnt", u"b.cnt", u"c.cnt"};
    QByteArray rest = inputBytes(data, size);
    for (const auto* name : names) {
        const qsizetype cut = rest.indexOf("\n==\n");
        scratch.write(QString::fromUtf16(name), cut < 0 ? rest : rest.first(cut));
        rest = cut < 0 ? QByteArray() : rest.sliced(cut + 4);
    }
    const QString top = scratch.path(QStringLiteral("a.cnt"));
    static_cast<void>(getTitle(top));
    static_cast<void>(onlyOneTopContent(top));
    HelpSet set(top, std::make_shared<NativeSource>(top));
    require(set.isReadable());
    require(countRows(set.topRows()) == set.records().size());
    for (const auto& record : set.records()) {
        const auto* found = set.findPage(absoluteFilePath(record.page()));
        require(record.target != EntryTarget::Page || isOneFile(found->page(), record.page()));
    }
    return 0;
}
