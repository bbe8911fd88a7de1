// SPDX-License-Identifier: MIT
// How StyledWriter begins elements, by what they are.
#include "pages/styledwriter.h"

#include "markup/htmltree.h"
#include "markup/tags.h"
#include "pages/boxcontent.h"
#include "pages/readinglook.h"

#include <algorithm>

namespace {

constexpr size_t LargestBox = 6000; // letters; what is larger is no box to the eye
constexpr float BoxPadding = 8;     // pixels, at least
constexpr float BoxIndent = 24;     // pixels

size_t lettersIn(const ElementNotes& notes)
{
    return notes.text + notes.linkText;
}

bool hasNoMargins(const ComputedStyle& style)
{
    return style.margin[size_t(Side::Top)] <= 0 && style.margin[size_t(Side::Bottom)] <= 0;
}

} // namespace

bool StyledWriter::isWrapper(const ElementNotes& notes) const
{
    return lettersIn(notes) * 10 >= m_measure->letters * 7;
}

bool StyledWriter::isBoxWanted(const ElementNotes& notes, const ComputedStyle& style) const
{
    return !isVerbatim() && m_openTables < DeepestTable && !frame().isOwnCell && notes.hasContent() &&
           !isWrapper(notes) && lettersIn(notes) <= LargestBox && BoxLook::isDrawn(style, frame().ground);
}

float StyledWriter::indentOf(const ElementNotes& notes) const
{
    return frame().isOwnCell || isWrapper(notes) ? 0 : BoxLook::indentOf(*notes.style);
}

std::string StyledWriter::blockOf(const ElementNotes& notes, std::string_view more)
{
    std::string look = BoxLook::block(*notes.style, frame().flow, indentOf(notes), more);
    frame().flow = {notes.style->align, notes.style->isRightToLeft};
    return look;
}

bool StyledWriter::isDissolved(const ElementNotes& notes)
{
    const auto display = notes.style->display;
    return display == DisplayKind::Contents || display == DisplayKind::RowGroup ||
           (notes.element != Element::Row && display == DisplayKind::Row);
}

void StyledWriter::openElement(const HtmlNode& element, const ElementNotes& notes)
{
    const auto& style = *notes.style;
    if (isTooDeep() || (isDissolved(notes) && !isVerbatim())) {
        openTransparent(element);
        return;
    }
    if (isVerbatim()) {
        if (!style.isInline() && notes.element != Element::Link && !isLineEmpty()) {
            breakLine();
        }
        openInline(element, notes);
        return;
    }
    switch (notes.element) {
    case Element::Heading:
    case Element::Summary:
        openTitle(element, notes);
        break;
    case Element::Rule:
        openBlock("<hr>", {});
        break;
    case Element::List:
        openListElement(element, notes);
        break;
    case Element::Table:
        openTableElement(element, notes);
        break;
    case Element::Row:
        isInTable() ? openBlock("<tr>", "</tr>") : openTransparent(element);
        break;
    case Element::Cell:
        openCell(element, notes);
        break;
    default:
        (style.isInline() && !isFloatingAside(element)) || isFloatingInLine(element)
            ? openInline(element, notes)
            : openBlockElement(element, notes);
    }
}

/// A box that text stands beside.
void StyledWriter::beginFloat(const ElementNotes& notes)
{
    if (notes.element == Element::Table || notes.element == Element::Picture ||
        m_openTables >= DeepestTable) {
        return;
    }
    const auto& style = *notes.style;
    const bool isLeft = style.floating == Floating::Left;
    std::string look = attributeText("class", "beside") +
                       attributeText("style", isLeft ? "float:left" : "float:right") + R"( cellspacing="0")";
    if (const auto width = BoxLook::widthText(style.width); !width.empty()) {
        look += attributeText("width", width);
    }
    const std::string gap = std::string("padding-") + (isLeft ? "right" : "left") + ":12px";
    around(startTag("table", look) + "<tr>" + startTag("td", attributeText("style", gap)),
           "</td></tr></table>", true);
    ++frame().ownAround;
    frame().flow = {};
}

void StyledWriter::openBlockElement(const HtmlNode& element, const ElementNotes& notes)
{
    const auto note = ReadingLook::noteClass(notes.role);
    const bool isSilent = !notes.style->saysGround && !notes.style->saysBorder;
    if (!frame().item && isFloatingBox(element)) {
        beginFloat(notes);
    }
    if (notes.role == Role::CodeBlock) {
        m_listing = &element;
        openListing(element, notes);
    } else if (notes.element == Element::Preformatted || notes.style->whiteSpace == WhiteSpace::Kept) {
        openListing(element, notes);
    } else if (isBoxWanted(notes, *notes.style)) {
        openBox(notes);
    } else if (!note.empty() && isSilent && notes.hasContent() && m_openTables < DeepestTable &&
               !frame().isInBox) {
        openNote(notes, note);
    } else if (notes.element == Element::Link) {
        around(startTag("div", blockOf(notes)), "</div>");
        ++frame().ownAround;
        openLink(element);
    } else {
        openPlainBlock(element, notes);
    }
}

void StyledWriter::openPlainBlock(const HtmlNode& element, const ElementNotes& notes)
{
    const auto& style = *notes.style;
    if (!notes.hasContent() && style.before == nullptr && style.after == nullptr) {
        openTransparent(element);
    } else if (notes.element == Element::Item && frameAround().isList) {
        openBlock("<li>", "</li>");
        frame().flow = frameAround().flow;
    } else if (notes.element == Element::Paragraph) {
        const std::string look = hasNoMargins(style) ? attributeText("class", "last") : std::string();
        openBlock(startTag("p", look + blockOf(notes)), "</p>");
    } else if (notes.element == Element::Term) {
        openBlock(startTag("div", attributeText("class", "term") + blockOf(notes)), "</div>");
    } else {
        const bool isWhole = isWrapper(notes) || frame().isOwnCell;
        const std::string look = blockOf(notes, isWhole ? std::string() : BoxLook::distances(style));
        if (look.empty()) {
            openContainer({}, {});
        } else if (holdsBlocks(element)) {
            openContainer(startTag("div", look), "</div>");
        } else {
            openBlock(startTag("div", look), "</div>");
        }
    }
}

void StyledWriter::openBox(const ElementNotes& notes)
{
    const auto& style = *notes.style;
    std::string look = R"( cellspacing="0")";
    const auto width = style.floating == Floating::None ? BoxLook::widthText(style.width) : std::string();
    look += attributeText("width", width.empty() ? "100%" : width);
    const float indent = std::clamp(style.margin[size_t(Side::Left)], 0.F, BoxIndent);
    if (indent >= 1) {
        look += attributeText("style", "margin-left:" + std::to_string(int(indent)) + "px");
    }
    auto& open = frame();
    std::optional<Rgb> ground;
    if (style.ground && *style.ground != open.ground) {
        open.ground = *style.ground;
        open.shownGround = m_colors.ground(*style.ground);
        ground = open.shownGround;
    }
    ++m_openTables;
    open.hasTable = open.isInBox = true;
    open.flow = {};
    const std::string start = startTag("table", look) + "<tr>" +
                              startTag("td", BoxLook::cell({&style, ground, BoxPadding}, m_colors));
    open.isOwnCell = true;
    if (notes.element == Element::Paragraph) {
        openBlock(start + startTag("p", attributeText("class", "last") + blockOf(notes)),
                  "</p>" + std::string(ReadingLook::BoxEnd));
    } else {
        const std::string paragraph = startTag("div", BoxLook::block(style, {}, 0));
        openContainer(start, std::string(ReadingLook::BoxEnd), paragraph);
    }
}

void StyledWriter::openNote(const ElementNotes& notes, std::string_view name)
{
    ++m_openTables;
    frame().hasTable = frame().isInBox = true;
    frame().flow = {};
    const bool isParagraph = notes.element == Element::Paragraph;
    const std::string start = ReadingLook::boxStart(name);
    isParagraph ? openBlock(start + R"(<p class="last">)", "</p>" + std::string(ReadingLook::BoxEnd))
                : openContainer(start, std::string(ReadingLook::BoxEnd));
}

/// The style of code, with the ground of what all of it stands in.
ComputedStyle StyledWriter::groundedStyle(const HtmlNode& code) const
{
    ComputedStyle style = styleOf(code);
    const auto* inner = code.firstChild;
    const bool isOnly = inner != nullptr && inner->next == nullptr && isElement(*inner, "code");
    if (isOnly && !style.ground && notesOf(*inner).style != nullptr) {
        style.ground = styleOf(*inner).ground;
    }
    return style;
}

void StyledWriter::openListing(const HtmlNode& element, const ElementNotes& notes)
{
    const auto style = groundedStyle(element);
    const bool isCode = notes.element == Element::Preformatted || notes.role == Role::CodeBlock;
    const bool isPlain = style.whiteSpace != WhiteSpace::Kept && style.whiteSpace != WhiteSpace::NoWrap &&
                         notes.role != Role::CodeBlock;
    if (!notes.hasContent()) {
        openTransparent(element);
        return;
    }
    const std::string start = style.isFixedPitch ? "<pre>" : R"(<div style="white-space:pre-wrap">)";
    const std::string end = style.isFixedPitch ? "</pre>" : "</div>";
    const bool isSilent = !style.saysGround && !style.saysBorder && !frame().isInBox && isCode;
    const bool isDrawn = isBoxWanted(notes, style);
    if ((!isDrawn && !isSilent) || m_openTables >= DeepestTable || isPlain) {
        const std::string look = blockOf(notes);
        const bool isBare = look.empty() || isPlain;
        const std::string outer = isBare ? std::string() : startTag("div", look);
        isPlain ? openBlock(startTag("div", look), "</div>")
                : openVerbatim(outer + start, end + (isBare ? "" : "</div>"));
        return;
    }
    ++m_openTables;
    frame().hasTable = frame().isInBox = true;
    frame().flow = {};
    if (isDrawn) {
        std::optional<Rgb> ground;
        if (style.ground && *style.ground != frame().ground) {
            frame().ground = *style.ground;
            frame().shownGround = m_colors.ground(*style.ground);
            ground = frame().shownGround;
        }
        openVerbatim(startTag("table", R"( width="100%" cellspacing="0")") + "<tr>" +
                         startTag("td", BoxLook::cell({&style, ground, BoxPadding}, m_colors)) + start,
                     end + std::string(ReadingLook::BoxEnd));
    } else {
        openVerbatim(ReadingLook::boxStart("code") + start, end + std::string(ReadingLook::BoxEnd));
    }
}

/// Headings stand out by their rank, but for those that are code.
void StyledWriter::openTitle(const HtmlNode& element, const ElementNotes& notes)
{
    if (!notes.hasContent()) {
        openTransparent(element);
        return;
    }
    if (notes.element == Element::Summary) {
        openBlock(startTag("p", attributeText("class", "title") + blockOf(notes)), "</p>");
        frame().shown.keepsWeight = frame().shown.isBold = true;
        return;
    }
    const auto& style = *notes.style;
    const int level = element.name[1] - '0';
    const std::string_view size = m_measure->headingSize(level, style);
    frame().headingSize = style.fontSize;
    frame().shown.keepsWeight = size == "large" && !style.isBold;
    const bool isOwnCell = std::exchange(frame().isOwnCell, frame().isOwnCell || style.padding[3] > 0);
    const std::string look = attributeText("class", size) + blockOf(notes);
    frame().isOwnCell = isOwnCell;
    openHeading(level, startTag(element.name, look), endTag(element.name));
}

void StyledWriter::openInline(const HtmlNode& element, const ElementNotes& notes)
{
    const auto& style = *notes.style;
    if (!isVerbatim() && style.ground && *style.ground != frame().ground) {
        frame().inlineGround = m_colors.ground(*style.ground);
    }
    const bool isApart =
        style.display == DisplayKind::InlineBlock || style.floating != Floating::None ||
        (style.isInline() && style.display == DisplayKind::Inline && notes.element == Element::Item);
    if (isApart && !isVerbatim()) {
        putText(" ");
    }
    if (notes.element == Element::Link) {
        openLink(element);
    } else if (notes.element == Element::Inline) {
        openInlineTag(element, style);
    } else {
        openTransparent(element);
        if (notes.element == Element::Quotation) {
            putText("“");
        }
    }
}

/// The tags that say what text is, where the sheets let them look so.
void StyledWriter::openInlineTag(const HtmlNode& element, const ComputedStyle& style)
{
    const auto name = element.name;
    const bool isRaised = (name == "sub" && style.verticalAlign == VerticalAlign::Sub) ||
                          (name == "sup" && style.verticalAlign == VerticalAlign::Super);
    const auto within = shownWithin(frame().shown, startTag(name));
    const bool isSo = within.isBold == style.isBold && within.isItalic == style.isItalic &&
                      within.isUnderlined == style.isUnderlined && within.isStruckOut == style.isStruckOut &&
                      within.isRaised == frame().shown.isRaised && name != "small" && name != "big";
    isRaised || isSo ? open(startTag(name), endTag(name)) : openTransparent(element);
}
