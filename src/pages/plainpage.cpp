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
#include <utility>
#include <vector>

namespace {

constexpr size_t LongestSectionTitle = 200; // bytes
constexpr int TermLevel = 7;
constexpr int AnchorsAround = 2; // elements around a heading whose anchor may be meant for it

/// Writes the text of elements. What is in no word does not matter: rules, quotes, the strokes of formulas.
class TextWriter {
public:
    TextWriter(PlainPage& page, bool isReading, PlainParts parts)
        : m_page(page), m_isReading(isReading), m_hasSections(parts == PlainParts::TextAndSections)
    {
    }

    void write(const HtmlNode& top)
    {
        walk(
            top, [this](const HtmlNode& node) { return isText(node) ? addText(node) : enter(node); },
            [this](const HtmlNode& node) { leave(node); });
        std::stable_sort(m_page.sections.begin(), m_page.sections.end(),
                         [](const auto& a, const auto& b) { return a.begin < b.begin; });
    }

private:
    bool addText(const HtmlNode& node)
    {
        if (m_links > 0 && m_hasSections) {
            m_page.links.push_back({m_page.text.size(), m_page.text.size() + node.content.size()});
        }
        m_page.text += node.content;
        m_page.linkText += m_links > 0 ? node.content.size() : 0;
        if (!m_anchor.empty() && node.content.find_first_not_of(" \t\r\n") != std::string_view::npos) {
            m_anchor.clear();
        }
        return false;
    }

    /// What is next belongs to the element that links lead to.
    void noteAnchor(const HtmlNode& node)
    {
        auto anchor = attribute(node, "id");
        if (anchor.empty() && isElement(node, "a")) {
            anchor = attribute(node, "name");
        }
        if (!anchor.empty()) {
            m_anchor = anchor;
            if (!m_open.empty() && m_open.back().anchor.empty()) {
                m_open.back().anchor = m_anchor;
            }
        }
    }

    /// What a term is about is explained below it, as with a heading.
    static bool isHeadline(const ElementNotes& notes)
    {
        return notes.element == Element::Heading ||
               (notes.element == Element::Term && notes.text > notes.linkText);
    }

    static bool opensSection(const HtmlNode& node, const ElementNotes& notes)
    {
        return notes.element == Element::Heading ||
               (notes.element == Element::Term && !attribute(node, "id").empty());
    }

    void openSection(const HtmlNode& node, const ElementNotes& notes)
    {
        if (!opensSection(node, notes)) {
            return;
        }
        std::string anchor = m_anchor;
        const auto* around = node.parent;
        const auto* inner = &node;
        for (int i = 0; i < AnchorsAround && anchor.empty() && around != nullptr;
             ++i, around = around->parent) {
            const bool isMeant = isElement(*around, "section") || around->firstChild == inner;
            anchor = isMeant ? attribute(*around, "id") : std::string_view();
            inner = around;
        }
        m_open.push_back({m_page.text.size(), 0, levelOf(node, notes), {}, std::move(anchor)});
    }

    void closeSection()
    {
        PlainSection section = std::move(m_open.back());
        m_open.pop_back();
        section.textBegin = m_page.text.size();
        const size_t length = std::min(section.textBegin - section.begin, LongestSectionTitle);
        section.title = m_page.text.substr(section.begin, length);
        m_page.sections.push_back(std::move(section));
    }

    /// False when there is nothing to read in it, or it has been read.
    bool enter(const HtmlNode& node)
    {
        const auto& notes = notesOf(node);
        const bool isLeftOut = m_isReading && (notes.isHidden || notes.isFurniture);
        if (isLeftOut || isMute(node, notes) || putSpecial(node, notes.element)) {
            return false;
        }
        if (isSetApart(node, notes)) {
            breakLine();
        } else if (notes.element == Element::Transparent) {
            putStroke(node);
        }
        m_links += notes.element == Element::Link ? 1 : 0;
        if (isHeadline(notes) && m_headlines++ == 0) {
            m_headline = m_page.text.size();
        }
        if (m_hasSections) {
            noteAnchor(node);
            openSection(node, notes);
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
        m_links -= notes.element == Element::Link ? 1 : 0;
        if (m_hasSections && opensSection(node, notes)) {
            closeSection();
        }
        // The outermost one writes what is in it.
        if (isHeadline(notes) && --m_headlines == 0) {
            m_page.headings.append(m_page.text, m_headline).append("\n");
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

    static int levelOf(const HtmlNode& node, const ElementNotes& notes)
    {
        const bool isNumbered = notes.element == Element::Heading && node.name.size() == 2 &&
                                node.name[1] >= '1' && node.name[1] <= '6';
        return isNumbered ? node.name[1] - '0' : TermLevel;
    }

    PlainPage& m_page;
    bool m_isReading;
    bool m_hasSections;
    int m_links = 0;                  ///< that are open
    std::string m_anchor;             ///< of what begins here
    std::vector<PlainSection> m_open; ///< headings and terms, from the outermost
    int m_headlines = 0;              ///< that are open
    size_t m_headline = 0;            ///< where the outermost of them begins
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

/// Where all of the page leads its readers, with what belongs to the web site.
std::vector<std::string> targetsOf(const HtmlTree& tree)
{
    std::vector<std::string> targets;
    for (const auto* node = tree.root(); node != nullptr; node = nextNode(node, tree.root())) {
        const bool isLink = isElement(*node, "a") || isElement(*node, "area");
        const bool isFrame = isElement(*node, "frame") || isElement(*node, "iframe");
        if (isLink || isFrame) {
            targets.emplace_back(attribute(*node, isLink ? "href" : "src"));
        }
    }
    return targets;
}

} // namespace

PlainPage readPlainPage(QString html, const PageContext& context, PlainParts parts)
{
    const auto size = size_t(html.size());
    const HtmlTree tree(std::move(html));
    PlainPage page;
    if (tree.root() == nullptr) {
        return page;
    }
    const auto language = attribute(*tree.root(), "lang");
    page.language = language.empty() ? attribute(*tree.root(), "xml:lang") : language;
    page.title = titleOf(tree);
    page.text.reserve(size);
    PageStyles styles({}, StyleExtent::Sight);
    page.base = readPageHead(tree, context.file).base;
    addStyleSheets(styles, tree, page.base, context.styleSheets);
    const PageSurvey survey(*tree.root(), styles);
    if (parts == PlainParts::TextAndTargets) {
        page.targets = targetsOf(tree);
    }
    const bool isReading = survey.isWebPage() && tree.first("frameset") == nullptr;
    const HtmlNode* body = tree.first("body");
    const HtmlNode& all = body == nullptr ? *tree.root() : *body;
    TextWriter(page, isReading, parts).write(isReading ? *findMainContent(all).element : all);
    return page;
}
