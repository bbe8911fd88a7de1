// SPDX-License-Identifier: MIT
#include "scratch.h"

#include "library/helpset.h"
#include "library/keywordindex.h"
#include "sources/nativesource.h"

/// Two index files, cut at a line "==", of one help set; the first line is typed into the look-up field, too.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const Scratch scratch;
    const QByteArray bytes = inputBytes(data, size);
    const qsizetype cut = bytes.indexOf("\n==\n");
    const QString first = scratch.write(QStringLiteral("a.idx"), cut < 0 ? bytes : bytes.first(cut));
    const QString second = scratch.write(QStringLiteral("b.idx"), cut < 0 ? "" : bytes.sliced(cut + 4));

    HelpContentsRoot root;
    const std::vector<IndexReference> references{{first, QStringLiteral("A"), 0, 1}, {second, {}, 0, 2}};
    const IndexTask task{std::make_shared<NativeSource>(references, std::vector<QString>{scratch.path({})}),
                         &root};
    auto entries = readIndexEntries(task);
    const std::vector<std::span<HelpIndexItem>> items{entries.items};
    KeywordIndex index;
    index.setRows(makeKeywordRows(items), items);
    require(index.rows().size() <= entries.items.size() && index.rows().empty() == entries.items.empty());
    for (const auto& row : index.rows()) {
        require(!index.topics(row.indexItem).empty());
        require(index.subKeywords(*row.indexItem).size() <= index.rows().size());
    }
    int current = -1;
    QString typed;
    for (const auto c : QString::fromUtf8(bytes.left(32)).section(u'\n', 0, 0)) {
        typed += c;
        current = index.lookFor(typed, current);
        require(current >= -1 && current < int(index.rows().size()));
    }
    return 0;
}
