// SPDX-License-Identifier: MIT
#include "markup/htmltree.h"

#include "markup/construction.h"
#include "markup/insertionmodes.h"

#include <algorithm>
#include <utility>

namespace {

/// The bytes of a page, with one kind of line ends and without zeroes.
QByteArray sourceOf(QString html)
{
    QByteArray source = std::move(html).toUtf8();
    if (source.contains('\r')) {
        source.replace("\r\n", "\n");
        source.replace('\r', '\n');
    }
    if (source.contains('\0')) {
        source.removeIf([](char c) { return c == '\0'; });
    }
    source.squeeze(); // the toolkit makes room for three bytes a character
    return source;
}

bool isBlankText(const QByteArray& text)
{
    return isBlank(std::string_view(text.constData(), size_t(text.size())));
}

/// Lets a token do to the tree what it does.
void add(Construction& tree, HtmlToken token)
{
    using namespace InsertionModes;
    if (token.isText() && tree.skipsLineEnd && token.text.front() == '\n') {
        token.text.remove_prefix(1);
    }
    tree.skipsLineEnd = false;
    if (token.isText() && token.text.empty()) {
        return;
    }
    Step result = Step::Again;
    while (result == Step::Again) {
        result = isForeign(tree, token) ? inForeignContent(tree, token) : step(tree, token);
    }
}

} // namespace

HtmlTree::HtmlTree(QString html) : m_source(sourceOf(std::move(html)))
{
    if (isBlankText(m_source)) {
        return;
    }
    HtmlScanner scanner(m_source.data(), size_t(m_source.size()), m_store);
    Construction tree(scanner, m_store);
    bool isEnd = false;
    while (!isEnd) {
        scanner.setKnowsSections(!tree.open.isEmpty() && isForeignTag(tree.open.current().tag));
        const HtmlToken token = scanner.next();
        isEnd = token.kind == HtmlToken::Kind::PageEnd;
        add(tree, token);
    }
    m_root = tree.root;
}

HtmlNode* HtmlTree::first(std::string_view name) const
{
    auto* node = m_root;
    while (node != nullptr && !isElement(*node, Tag::Body) && !isElement(*node, name)) {
        node = nextNode(node, m_root);
    }
    return node != nullptr && isElement(*node, name) ? node : nullptr;
}
