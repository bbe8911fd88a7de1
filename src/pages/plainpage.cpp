// SPDX-License-Identifier: MIT
#include "pages/plainpage.h"

#include "markup/htmltree.h"
#include "pages/elementtext.h"
#include "pages/maincontent.h"
#include "pages/pagehead.h"
#include "pages/pagesheets.h"
#include "pages/pagesurvey.h"
#include "styles/pagestyles.h"

#include <algorithm>
#include <vector>

namespace {

/// Writes the text of elements. What is in no word does not matter: rules, quotes, the strokes of formulas.
class TextWriter {
public:
    TextWriter(PlainPage& page, bool isReading) : m_page(page), m_isReading(isReading) {}

    void write(const HtmlNode& top)
    {
        walk(
            top, [this](const HtmlNode& node) { return isText(node) ? addText(node) : enter(node); },
            [this](const HtmlNode& node) { leave(node); });
    }

private:
    bool addText(const HtmlNode& node)
    {
        m_page.text += node.content;
        return false;
    }

    /// False when there is nothing to read in it, or it has been read.
    bool enter(const HtmlNode& node)
    {
        const auto& notes = notesOf(node);
        const bool isLeftOut = m_isReading && (notes.isHidden || notes.isFurniture);
        if (isLeftOut || isMute(node, notes) || putSpecial(node, notes.element)) {
            return false;
        }
        if (notes.element == Element::Heading) {
            m_headings.push_back(m_page.text.size());
        }
        if (isSetApart(node, notes)) {
            breakLine();
        } else if (notes.element == Element::Transparent) {
            putStroke(node);
        }
        return true;
    }

    /// What divides the parts of a formula.
    void putStroke(const HtmlNode& node)
    {
        const auto* previous = node.previous;
        while (previous != nullptr && !isElement(*previous)) {
            previous = previous->previous;
        }
        const bool isInFraction = node.parent != nullptr && isElement(*node.parent, "mfrac");
        if (previous != nullptr && (isInFraction || isElement(node, "mtd"))) {
            m_page.text += isInFraction ? '/' : ' ';
        }
    }

    void leave(const HtmlNode& node)
    {
        const auto& notes = notesOf(node);
        if (notes.element == Element::Heading) {
            m_page.headings.append(m_page.text, m_headings.back()).append("\n");
            m_headings.pop_back();
        }
        if (isSetApart(node, notes) || isLineOfListing(node)) {
            breakLine();
        }
    }

    [[nodiscard]] bool isMute(const HtmlNode& node, const ElementNotes& notes) const
    {
        // A page may be written so that all that there is stands in its head.
        return notes.element == Element::Ignored && (m_isReading || !isElement(node, "head"));
    }

    [[nodiscard]] static bool isSetApart(const HtmlNode& node, const ElementNotes& notes)
    {
        const bool isInline = isInlineElement(notes.element) && !isElement(node, "mtr");
        return !isInline || (notes.style != nullptr && !notes.style->isInline());
    }

    [[nodiscard]] bool isLineOfListing(const HtmlNode& node) const
    {
        return m_isReading && node.parent != nullptr && notesOf(*node.parent).role == Role::CodeBlock;
    }

    bool putSpecial(const HtmlNode& node, Element element)
    {
        switch (element) {
        case Element::Picture:
            putApart(attribute(node, "alt"));
            return true;
        case Element::Frame:
            putApart(frameText(node));
            return true;
        case Element::Field:
            putApart(fieldText(node));
            return true;
        case Element::Choice:
            putApart(choiceText(node));
            return true;
        case Element::Area: {
            const auto text = attribute(node, "alt");
            putApart(text.empty() ? attribute(node, "title") : text);
            return true;
        }
        case Element::Drawing:
            putApart(drawingText(node));
            return true;
        case Element::Break:
            breakLine();
            return true;
        default:
            return false;
        }
    }

    void putApart(std::string_view text) { m_page.text.append(" ").append(text).append(" "); }

    void breakLine()
    {
        if (!m_page.text.empty() && m_page.text.back() != '\n') {
            m_page.text += '\n';
        }
    }

    PlainPage& m_page;
    bool m_isReading;
    std::vector<size_t> m_headings; ///< where those that are open begin
};

std::string titleOf(const HtmlTree& tree)
{
    std::string title;
    if (const auto* element = tree.first("title")) {
        for (const auto* node = element; node != nullptr; node = nextNode(node, element)) {
            title += node->content;
        }
    }
    return title;
}

} // namespace

PlainPage readPlainPage(const QString& html, const PageContext& context)
{
    const HtmlTree tree(html);
    PlainPage page;
    if (tree.root() == nullptr) {
        return page;
    }
    const auto language = attribute(*tree.root(), "lang");
    page.language = language.empty() ? attribute(*tree.root(), "xml:lang") : language;
    page.title = titleOf(tree);
    page.text.reserve(size_t(html.size()));
    PageStyles styles({}, StyleExtent::Sight);
    addStyleSheets(styles, tree, readPageHead(tree, context.file).base, context.styleSheets);
    const PageSurvey survey(*tree.root(), styles);
    const bool isReading = survey.isWebPage() && tree.first("frameset") == nullptr;
    const HtmlNode* body = tree.first("body");
    const HtmlNode& all = body == nullptr ? *tree.root() : *body;
    TextWriter(page, isReading).write(isReading ? *findMainContent(all).element : all);
    return page;
}
