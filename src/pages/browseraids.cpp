// SPDX-License-Identifier: MIT
#include "pages/browseraids.h"

#include "markup/htmltree.h"
#include "markup/tags.h"
#include "pages/elementnotes.h"
#include "styles/computedstyle.h"

#include <QChar>
#include <QString>

#include <array>
#include <charconv>
#include <string>

namespace {

constexpr size_t NameOfBook = 60; // bytes: the name of a book between the links to its pages

const HtmlNode* nextElement(const HtmlNode& element)
{
    const auto* next = element.next;
    while (next != nullptr && !isElement(*next)) {
        next = next->next;
    }
    return next;
}

/// The text in an element, as far as it is short.
std::string shortText(const HtmlNode& element, size_t longest)
{
    constexpr int most = 64; // nodes
    std::string text;
    int looked = 0;
    for (const auto* node = &element; node != nullptr && text.size() <= longest && ++looked <= most;
         node = nextNode(node, &element)) {
        text += isText(*node) ? node->content : std::string_view();
    }
    return text;
}

bool isTitleLike(const HtmlNode& element)
{
    switch (notesOf(element).element) {
    case Element::Term:
    case Element::Caption:
    case Element::TableCaption:
        return true;
    default:
        return false;
    }
}

bool isPermalink(const HtmlNode& link, const ElementNotes& notes)
{
    constexpr size_t longest = 16; // bytes, with the blanks around it
    constexpr size_t longestSign = 4;
    if (notes.element != Element::Link || notes.linkText > longestSign ||
        attribute(link, "href").substr(0, 1) != "#") {
        return false;
    }
    const auto sign = QString::fromStdString(shortText(link, longest)).trimmed();
    const bool isAtTitle = notes.isInHeading || isTitleLike(*link.parent);
    if (sign.isEmpty()) {
        const bool isDrawn = notes.style != nullptr && notes.style->before != nullptr;
        return isAtTitle && (isDrawn || notes.hasPicture);
    }
    static const QString usual = QStringLiteral("#¶§");
    return (isAtTitle && !notes.hasPicture && !sign.front().isLetterOrNumber()) ||
           (sign.size() == 1 && usual.contains(sign));
}

/// Whether the texts in an element are nothing but numbers, each one more than that before it. What holds
/// others of its kind is no column.
bool countsUp(const HtmlNode& element)
{
    constexpr int least = 3;
    int count = 0;
    int last = 0;
    for (const auto* node = &element; node != nullptr; node = nextNode(node, &element)) {
        if (node != &element && isElement(*node, element.tag)) {
            return false;
        }
        const auto text = isText(*node) ? node->content : std::string_view();
        for (size_t at = nextNonBlank(text, 0); at < text.size(); at = nextNonBlank(text, at)) {
            int number = 0;
            const auto* begin = text.data() + at;
            const auto [end, error] = std::from_chars(begin, text.data() + text.size(), number);
            if (error != std::errc() || (count > 0 && number != last + 1)) {
                return false;
            }
            last = number;
            ++count;
            at += size_t(end - begin);
        }
    }
    return count >= least;
}

bool holdsListing(const HtmlNode& element)
{
    constexpr int most = 8; // elements that are looked at
    int count = 0;
    const auto* node = &element;
    while (node != nullptr && ++count <= most && !isElement(*node, Tag::Pre)) {
        node = nextNode(node, &element);
    }
    return node != nullptr && count <= most;
}

bool isColumnOfNumbers(const HtmlNode& element)
{
    if (element.tag != Tag::Pre && element.tag != Tag::Td) {
        return false;
    }
    const auto* next = nextElement(element);
    return next != nullptr && holdsListing(*next) && countsUp(element);
}

bool isWayToOtherPages(const ElementNotes& notes, const Surroundings& around)
{
    const bool isOfLinks = notes.siteLinks > 1 && notes.siteLinks * 2 >= notes.links;
    const bool isBesidePage =
        notes.hasHeadingBefore || around.hasHeadingBehind || notes.textBefore > NameOfBook;
    return notes.isStructure() && isOfLinks && isBesidePage && !notes.hasHeading &&
           notes.text <= std::max(NameOfBook, notes.linkText);
}

} // namespace

bool leadsThroughSite(const HtmlNode& link)
{
    static constexpr std::array<std::string_view, 7> ways{"prev",  "previous", "next", "up",
                                                          "start", "home",     "top"};
    return hasAttribute(link, "accesskey") ||
           anyWord(attribute(link, "rel"), [](std::string_view way) { return isOneOf(way, ways); });
}

bool isBrowserAid(const HtmlNode& element, const ElementNotes& notes, const Surroundings& around)
{
    return isPermalink(element, notes) || isColumnOfNumbers(element) || isWayToOtherPages(notes, around);
}
