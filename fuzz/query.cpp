// SPDX-License-Identifier: MIT
#include "scratch.h"

#include "fulltext/helpsetindex.h"
#include "fulltext/matchranges.h"
#include "fulltext/searchengine.h"

namespace {

/// A searchable help set of a few pages with all kinds of words.
struct Searched {
    Searched()
    {
        qputenv("XDG_CACHE_HOME", QFile::encodeName(scratch.path(QStringLiteral("cache"))));
        const auto source =
            std::make_shared<SearchSource>(scratch.path(QStringLiteral("a.cnt")), QStringLiteral("A"));
        add(*source, "a", "The window manager std::vector operator= C++ --install QTextBrowser set_encoding");
        add(*source, "b",
            "Caf\xC3\xA9 na\xC3\xAFve \xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E AND NOT near(a b) \"x\" a:b ^c");
        const auto result = indexHelpSet(
            source, {}, [](qint64, qint64) {}, [this](const SearchableSet& set) { engine.add(set); });
        require(result.state == IndexingResult::State::Complete);
    }
    void add(SearchSource& source, const char* name, const QByteArray& text) const
    {
        const QString file = scratch.write(QLatin1StringView(name), "<p>" + text);
        source.addTopic(file, {}, QString::fromLatin1(name), 0);
        source.addKeyword(file, {}, QString::fromUtf8(text.first(9)));
    }

    Scratch scratch;
    SearchEngine engine;
};

void requireOrdered(const std::vector<TextRange>& ranges, qsizetype size)
{
    qsizetype end = 0;
    for (const auto& range : ranges) {
        require(range.start >= end && range.length > 0 && range.start + range.length <= size);
        end = range.start + range.length;
    }
}

} // namespace

/// A query as typed: never an error, marks always within their texts.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static Searched searched;
    const QString query = QString::fromUtf8(inputBytes(data, size));
    for (const bool isTyping : {false, true}) {
        const auto answer = searched.engine.search({query, {}, 10, isTyping}, {});
        require(answer.has_value());
        for (const auto& hit : answer->hits) {
            requireOrdered(hit.marks, hit.snippet.size());
        }
        requireOrdered(matchRanges(query, query, QStringLiteral("en"), isTyping), query.size());
    }
    return 0;
}
