// SPDX-License-Identifier: MIT
#include "scratch.h"

#include "markup/htmltree.h"
#include "styles/counters.h"
#include "styles/pagestyles.h"

/// The bytes of a style sheet, the looks that it gives to a page, and the text that it adds.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const HtmlTree tree(QStringLiteral(
        "<html><body><div id=a class='b c'><p title=x>t<i>u</i><a href=v>w</a></div><ul><li>1<li>2</ul>"
        "<table border=1><tr><td align=right>3"));
    constexpr float wide = 200'000;
    PageStyles styles({});
    Counters counters;
    styles.add(
        std::make_shared<const StyleSheet>(readStyleSheet({reinterpret_cast<const char*>(data), size})));
    std::vector<const ComputedStyle*> open;
    walk(
        *tree.root(),
        [&](const HtmlNode& node) {
            if (!isElement(node)) {
                return false;
            }
            const auto& style = styles.compute(node, open.empty() ? nullptr : open.back());
            require(!style.color || *style.color <= 0xFFFFFF);
            require(style.margin[0] <= wide && style.padding[0] >= 0 && style.fontSize > 0);
            counters.enter(style);
            if (style.before != nullptr) {
                require(counters.text(style.before->content, node).size() < 10'000);
            }
            open.push_back(&style);
            return true;
        },
        [&](const HtmlNode& /*node*/) {
            counters.leave();
            open.pop_back();
        });
    return 0;
}
