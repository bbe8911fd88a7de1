// SPDX-License-Identifier: MIT
#include "scratch.h"

#include "markup/htmltree.h"
#include "styles/pagestyles.h"

/// The bytes of a style sheet, and the looks that it gives to a page.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const HtmlTree tree(QStringLiteral(
        "<html><body><div id=a class='b c'><p title=x>t<i>u</i><a href=v>w</a></div><ul><li>1<li>2"));
    PageStyles styles({});
    styles.add(
        std::make_shared<const StyleSheet>(readStyleSheet({reinterpret_cast<const char*>(data), size})));
    for (const HtmlNode* node = tree.root(); node != nullptr; node = nextNode(node, tree.root())) {
        if (isElement(*node)) {
            const auto& style = styles.compute(*node, nullptr);
            require(!style.color || *style.color <= 0xFFFFFF);
        }
    }
    return 0;
}
