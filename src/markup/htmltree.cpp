// SPDX-License-Identifier: MIT
#include "markup/htmltree.h"

#include "markup/entities.h"

#include <libxml/HTMLparser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <array>
#include <mutex>

namespace {

constexpr size_t BlockSize = 65536; // bytes

std::string_view view(const xmlChar* text)
{
    return text == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(text));
}

bool isHeadElement(std::string_view name)
{
    static constexpr std::array<std::string_view, 11> names{
        "head", "title", "meta", "link", "base", "style", "script", "object", "noscript", "body", "frameset"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Elements without an end that the parser does not know to have none.
bool isNewVoidElement(std::string_view name)
{
    static constexpr std::array<std::string_view, 4> names{"wbr", "source", "track", "keygen"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// The parser's own preparation on first use takes no care of other threads.
void initializeParser()
{
    static std::once_flag once;
    std::call_once(once, xmlInitParser);
}

struct FreeParser {
    void operator()(htmlParserCtxt* parser) const { htmlFreeParserCtxt(parser); }
};

} // namespace

/// What the parser calls; its context is the tree.
struct HtmlTree::Handlers {
    static void startElement(void* tree, const xmlChar* name, const xmlChar** attributes)
    {
        static_cast<HtmlTree*>(tree)->startElement(view(name), attributes);
    }
    static void endElement(void* tree, const xmlChar* name)
    {
        static_cast<HtmlTree*>(tree)->endElement(view(name));
    }
    static void characters(void* tree, const xmlChar* text, int size)
    {
        static_cast<HtmlTree*>(tree)->addText({reinterpret_cast<const char*>(text), size_t(size)});
    }
};

HtmlTree::HtmlTree(const QString& html)
{
    initializeParser();
    QByteArray utf8 = withoutNewEntities(html.toUtf8());
    std::replace(utf8.begin(), utf8.end(), '\0', ' ');
    xmlSAXHandler handlers = {};
    handlers.startElement = Handlers::startElement;
    handlers.endElement = Handlers::endElement;
    handlers.characters = Handlers::characters;
    handlers.ignorableWhitespace = Handlers::characters;
    handlers.cdataBlock = Handlers::characters;
    const std::unique_ptr<htmlParserCtxt, FreeParser> parser(
        htmlCreateMemoryParserCtxt(utf8.constData(), int(utf8.size())));
    if (parser == nullptr) {
        return; // the page is empty
    }
    *parser->sax = handlers;
    parser->userData = this;
    htmlCtxtUseOptions(parser.get(), HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                                         HTML_PARSE_NONET | HTML_PARSE_IGNORE_ENC | XML_PARSE_HUGE);
    xmlSwitchEncoding(parser.get(), XML_CHAR_ENCODING_UTF8);
    htmlParseDocument(parser.get());
}

HtmlNode* HtmlTree::first(std::string_view name) const
{
    auto* node = m_root;
    while (node != nullptr && node != m_body && !isElement(*node, name)) {
        node = nextNode(node, m_root);
    }
    return node != nullptr && isElement(*node, name) ? node : nullptr;
}

void HtmlTree::startElement(std::string_view name, const unsigned char** attributes)
{
    // The parser does not know all elements that cannot stand in the head.
    if (m_open != nullptr && isElement(*m_open, "head") && !isHeadElement(name)) {
        openBody();
    }
    if (m_body != nullptr && name == "body" && m_open == m_body) {
        return;
    }
    auto& node = addNode();
    node.name = store(name);
    HtmlAttribute* last = nullptr;
    for (; attributes != nullptr && *attributes != nullptr; attributes += 2) {
        auto& added = m_attributes.emplace_back();
        added.name = store(view(attributes[0]));
        added.value = store(view(attributes[1]));
        (last == nullptr ? node.attributes : last->next) = &added;
        last = &added;
    }
    if (m_root == nullptr) {
        m_root = &node;
    } else if (m_body == nullptr && node.parent == m_root && name == "body") {
        m_body = &node;
    }
    if (!isNewVoidElement(name)) {
        m_open = &node;
    }
}

void HtmlTree::openBody()
{
    m_open = m_body == nullptr ? m_root : m_body;
    if (m_body == nullptr) {
        startElement("body", nullptr);
    }
}

void HtmlTree::endElement(std::string_view name)
{
    auto* node = m_open;
    while (node != nullptr && !isElement(*node, name)) {
        node = node->parent;
    }
    // What comes behind the end of the body belongs to it.
    if (node != nullptr && node != m_root && node != m_body) {
        m_open = node->parent;
    }
}

/// The parser cuts text at entities; pieces that follow each other become one.
void HtmlTree::addText(std::string_view text)
{
    if (m_open == nullptr || text.empty()) {
        return;
    }
    auto* last = m_open->lastChild;
    const bool isContinued = last != nullptr && isText(*last) && last->content.end() == m_free;
    const auto added = store(text);
    if (isContinued && last->content.end() == added.begin()) {
        last->content = {last->content.data(), last->content.size() + added.size()};
    } else {
        addNode().content = added;
    }
}

HtmlNode& HtmlTree::addNode()
{
    auto& node = m_nodes.emplace_back();
    node.parent = m_open;
    if (m_open == nullptr) {
        return node;
    }
    node.previous = m_open->lastChild;
    (node.previous == nullptr ? m_open->firstChild : node.previous->next) = &node;
    m_open->lastChild = &node;
    return node;
}

std::string_view HtmlTree::store(std::string_view text)
{
    if (text.size() > m_freeSize) {
        m_freeSize = std::max(BlockSize, text.size());
        m_blocks.emplace_back(new char[m_freeSize]);
        m_free = m_blocks.back().get();
    }
    char* const begin = m_free;
    std::copy(text.begin(), text.end(), begin);
    m_free += text.size();
    m_freeSize -= text.size();
    return {begin, text.size()};
}

bool hasAttribute(const HtmlNode& node, std::string_view name)
{
    const auto* found = node.attributes;
    while (found != nullptr && found->name != name) {
        found = found->next;
    }
    return found != nullptr;
}

std::string_view attribute(const HtmlNode& node, std::string_view name)
{
    const auto* found = node.attributes;
    while (found != nullptr && found->name != name) {
        found = found->next;
    }
    return found == nullptr ? std::string_view() : found->value;
}

bool equalsLower(std::string_view text, std::string_view lower)
{
    return std::equal(text.begin(), text.end(), lower.begin(), lower.end(),
                      [](char a, char b) { return (a >= 'A' && a <= 'Z' ? char(a - 'A' + 'a') : a) == b; });
}
