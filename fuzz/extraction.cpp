// SPDX-License-Identifier: MIT
#include "scratch.h"

#include "fulltext/querymatcher.h"
#include "fulltext/snippet.h"
#include "fulltext/words.h"
#include "markup/pagedecoding.h"
#include "pages/plainpage.h"

/// The bytes of a page, from decoding to its words and to a snippet.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString html = decodePage(inputBytes(data, size));
    const PlainPage page = readPlainPage(html, {}, PlainParts::TextAndSections);
    require(page.text.size() < 4096 + size_t(html.size()) * 8);
    Words words;
    for (const auto& text : {page.text, page.headings, page.title, html.toStdString()}) {
        words.read(text);
        uint32_t position = 0;
        for (const auto& word : words.all()) {
            require(word.begin < word.end && word.end <= text.size() && word.foldedSize > 0);
            require(word.position == position || word.position == position + 1);
            for (const char c : words.folded(word)) {
                require(static_cast<unsigned char>(c) > ' ');
            }
            position = word.position;
        }
    }
    QueryMatcher matcher(parseQuery(QStringLiteral("a* the \"b c\" OR d"), true), "en");
    const auto snippet = makeSnippet(page, matcher);
    require(snippet.text.size() < 400 && !snippet.text.contains(QLatin1Char('\n')));
    return 0;
}
