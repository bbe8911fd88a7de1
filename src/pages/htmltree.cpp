// SPDX-License-Identifier: MIT
#include "pages/htmltree.h"

#include <libxml/HTMLparser.h>

#include <algorithm>

namespace {

std::string_view view(const xmlChar* text)
{
    return text == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(text));
}

const xmlAttr* findAttribute(const xmlNode& node, const char* name)
{
    const xmlAttr* found = node.properties;
    while (found != nullptr && view(found->name) != name) {
        found = found->next;
    }
    return found;
}

} // namespace

HtmlTree::HtmlTree(const QString& html)
{
    QByteArray utf8 = html.toUtf8();
    utf8.replace('\0', ' ');
    constexpr int options =
        HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET | XML_PARSE_HUGE;
    m_document.reset(htmlReadMemory(utf8.constData(), int(utf8.size()), nullptr, "UTF-8", options));
}

xmlNode* HtmlTree::root() const
{
    return m_document == nullptr ? nullptr : xmlDocGetRootElement(m_document.get());
}

xmlNode* HtmlTree::first(std::string_view name) const
{
    auto* node = root();
    while (node != nullptr && !isElement(*node, name)) {
        node = nextNode(node, root());
    }
    return node;
}

bool isElement(const xmlNode& node, std::string_view name)
{
    return isElement(node) && nameOf(node) == name;
}

std::string_view nameOf(const xmlNode& node)
{
    return isElement(node) ? view(node.name) : std::string_view();
}

std::string_view contentOf(const xmlNode& node)
{
    return isElement(node) ? std::string_view() : view(node.content);
}

bool hasAttribute(const xmlNode& node, const char* name)
{
    return isElement(node) && findAttribute(node, name) != nullptr;
}

std::string_view attribute(const xmlNode& node, const char* name)
{
    const auto* found = isElement(node) ? findAttribute(node, name) : nullptr;
    return found == nullptr || found->children == nullptr ? std::string_view()
                                                          : view(found->children->content);
}

const xmlNode* nextNode(const xmlNode* node, const xmlNode* top, bool isDeep)
{
    if (isDeep && isElement(*node) && node->children != nullptr) {
        return node->children;
    }
    while (node != top && node->next == nullptr) {
        node = node->parent;
    }
    return node == top ? nullptr : node->next;
}

xmlNode* nextNode(xmlNode* node, const xmlNode* top, bool isDeep)
{
    return const_cast<xmlNode*>(nextNode(static_cast<const xmlNode*>(node), top, isDeep));
}

bool isBlank(std::string_view text)
{
    return text.find_first_not_of(" \t\n\r\f") == std::string_view::npos;
}

bool equalsLower(std::string_view text, std::string_view lower)
{
    return std::equal(text.begin(), text.end(), lower.begin(), lower.end(),
                      [](char a, char b) { return (a >= 'A' && a <= 'Z' ? char(a - 'A' + 'a') : a) == b; });
}
