// SPDX-License-Identifier: MIT
#include "pages/styledwriter.h"

#include "markup/htmltree.h"
#include "markup/tags.h"

#include <algorithm>

namespace {

constexpr float LeastCellPadding = 6; // pixels, as is the next
constexpr float UsualGap = 8;
constexpr size_t TextBeside = 60; // letters that a picture needs to float beside them
constexpr float SmallInHeading = 0.75F;
constexpr int LargePictureWidth = 200; // pixels

bool isTableMarkup(std::string_view markup)
{
    return markup.find("</table>") != std::string_view::npos;
}

} // namespace

void StyledWriter::writePage(const HtmlNode& body, const HtmlNode& content)
{
    putMarkup("<html><body>");
    m_measure.emplace(body, content);
    m_colors.palette = context().colors;
    m_colors.pageGround = m_measure->ground;
    m_colors.pageText = m_measure->text;
    auto& page = m_frames.emplace_back();
    page.ground = m_measure->ground;
    page.shownGround = m_colors.palette.base;
    writeContent(body, content);
}

const ComputedStyle& StyledWriter::styleOf(const HtmlNode& element) const
{
    return *notesOf(element).style;
}

bool StyledWriter::isInTable() const
{
    const auto found = std::find_if(m_frames.rbegin(), m_frames.rend(), [](const Frame& open) {
        return open.isTable || open.isTableFlat || open.hasTable || open.isArranged;
    });
    return found != m_frames.rend() && found->isTable && !isVerbatim();
}

bool StyledWriter::enter(const HtmlNode& element)
{
    const auto& notes = notesOf(element);
    if (notes.element == Element::Ignored || notes.isHidden || notes.isFurniture) {
        for (const auto* node = &element; node != nullptr; node = nextNode(node, &element)) {
            keepAnchors(*node);
        }
        return false;
    }
    const auto* place = m_arrangements.empty() ? nullptr : m_arrangements.back().take(element);
    Frame next = frame();
    next.element = &element;
    next.isTable = next.isTableFlat = next.isList = next.isArranged = next.isOwnCell = next.hasTable = false;
    next.ownAround = 0;
    next.item = place;
    if (place != nullptr) {
        beginPlace(element, *place, next);
    }
    if (putSpecial(element)) {
        if (next.item) {
            endPlace(*next.item);
        }
        return false;
    }
    m_frames.push_back(next);
    m_counters.enter(*notes.style);
    if (!isVerbatim() && !isTooDeep() && m_openTables < DeepestTable) {
        if (Arrangement arrangement(element, m_measure->letters * 7 / 10); !arrangement.isEmpty()) {
            m_arrangements.push_back(std::move(arrangement));
            frame().isArranged = true;
        }
    }
    openElement(element, notes);
    frame().shown = shownWithin(frame().shown, lastMarkup());
    frame().around = m_around.size();
    if (isDissolved(notes)) {
        frame().around = size_t(-1); // what begins in it belongs to the element around it
    }
    putPart(element, notes.style->before);
    return true;
}

/// What was begun for the parts of an element ends before it.
void StyledWriter::leaving(const HtmlNode& element)
{
    while (m_around.size() > frame().around) {
        closeLast();
    }
    putPart(element, styleOf(element).after);
    if (notesOf(element).element == Element::Quotation) {
        putText("”");
    }
}

void StyledWriter::left(const HtmlNode& element)
{
    m_counters.leave();
    const Frame last = m_frames.back();
    m_frames.pop_back();
    if (last.isArranged) {
        m_arrangements.pop_back();
    }
    m_openTables -= last.hasTable ? 1 : 0;
    for (size_t i = 0; i < last.ownAround; ++i) {
        closeLast();
    }
    if (last.item) {
        endPlace(*last.item);
    }
    if (m_listing == &element) {
        m_listing = nullptr;
    } else if (m_listing != nullptr && element.parent == m_listing) {
        breakLine();
    }
}

void StyledWriter::around(std::string_view markup, std::string end, bool isContainer, std::string again)
{
    m_openTables += isTableMarkup(end) ? 1 : 0;
    PageOutput::End outer{std::move(end), true};
    outer.isContainer = isContainer;
    outer.again = std::move(again);
    openAround(markup, outer);
    m_around.push_back(std::move(outer));
}

void StyledWriter::closeLast()
{
    m_openTables -= isTableMarkup(m_around.back().markup) ? 1 : 0;
    closeAround(m_around.back());
    m_around.pop_back();
}

/// A part that stands in a cell looks as its cell does.
void StyledWriter::beginPlace(const HtmlNode& node, const ArrangedItem& item, Frame& next)
{
    const auto& arrangement = m_arrangements.back();
    if (item.beginsTable) {
        const std::string markup =
            startTag("table", std::string(R"( cellspacing="0")") +
                                  (arrangement.isWide() || arrangement.isLong() ? R"( width="100%")" : "") +
                                  std::string(PageOutput::TableMargins));
        around(markup, "</table>", false, arrangement.isLong() ? markup : std::string());
    }
    if (item.beginsRow) {
        around("<tr>", "</tr>");
    }
    for (int i = 0; i < item.emptyBefore; ++i) {
        putMarkup("<td></td>");
    }
    if (!item.beginsCell) {
        return;
    }
    const ComputedStyle plain;
    const auto* style = isElement(node) ? &styleOf(node) : &plain;
    std::optional<Rgb> ground;
    if (isElement(node)) {
        ground = groundOfCell(node);
    }
    next.isOwnCell = item.endsCell && isElement(node);
    if (ground) {
        next.ground = *ground;
        next.shownGround = m_colors.ground(*ground);
    }
    next.flow = {};
    const bool isDrawn = ground || style->hasBorder();
    const float gap = item.beginsRow ? 0 : std::max(item.gap, UsualGap);
    std::string look = BoxLook::cell({next.isOwnCell ? style : &plain,
                                      ground ? std::optional(next.shownGround) : std::nullopt,
                                      isDrawn ? LeastCellPadding : gap},
                                     m_colors);
    if (item.span > 1) {
        look += attributeText("colspan", std::to_string(item.span));
    }
    if (!item.width.empty()) {
        look += attributeText("width", item.width);
    }
    if (item.isAtRight) {
        look += attributeText("align", "right");
        next.flow.align = TextAlign::Right;
    }
    const bool isList = arrangement.isListInColumns();
    around(startTag("td", look) + (isList ? "<ul>" : ""), std::string(isList ? "</ul>" : "") + "</td>",
           !isList);
}

void StyledWriter::endPlace(const ArrangedItem& item)
{
    const int ends = (item.endsCell ? 1 : 0) + (item.endsRow ? 1 : 0) + (item.endsTable ? 1 : 0);
    for (int i = 0; i < ends && !m_around.empty(); ++i) {
        closeLast();
    }
}

/// The ground of a cell, or of the row, the group or the table that it stands in, where it is another than
/// behind that.
std::optional<Rgb> StyledWriter::groundOfCell(const HtmlNode& cell) const
{
    constexpr int outer = 3;
    const Rgb behind = m_frames.back().ground;
    const auto* node = &cell;
    for (int i = 0; i <= outer && node != nullptr; ++i, node = node->parent) {
        const auto& style = styleOf(*node);
        const bool isPart = i == 0 || style.display == DisplayKind::Row ||
                            style.display == DisplayKind::RowGroup || style.display == DisplayKind::Contents;
        const bool isTable = style.display == DisplayKind::Table && i > 0;
        if (!isPart && !isTable) {
            break;
        }
        if (style.ground) {
            return *style.ground == behind ? std::nullopt : style.ground;
        }
        if (isTable) {
            break;
        }
    }
    return std::nullopt;
}

void StyledWriter::text(const HtmlNode& node)
{
    auto content = node.content;
    const auto& parent = *node.parent;
    // Between the lines of a listing stand line ends of the file, not of the code.
    if (m_listing != nullptr && &parent == m_listing && isBlank(content)) {
        return;
    }
    const bool isInPre = isVerbatim() && notesOf(parent).element == Element::Preformatted;
    if (isInPre && node.previous == nullptr && !content.empty() && content.front() == '\n') {
        content.remove_prefix(1);
    }
    if (isInPre && node.next == nullptr) {
        content = content.substr(0, content.find_last_not_of(" \t\r\n") + 1);
    }
    const auto* place = m_arrangements.empty() ? nullptr : m_arrangements.back().take(node);
    if (place != nullptr) {
        Frame unused = frame();
        beginPlace(node, *place, unused);
        putStyled(styleOf(parent), notesOf(parent).isInLink, content);
        endPlace(*place);
        return;
    }
    // Rich text drops the text of a row that is in none of its cells.
    const bool isStray = isInTable() && !isBlank(content) && notesOf(parent).element == Element::Row;
    putMarkup(isStray ? "<td>" : "");
    putStyled(styleOf(parent), notesOf(parent).isInLink, content);
    putMarkup(isStray ? "</td>" : "");
}

void StyledWriter::putStyled(const ComputedStyle& style, bool isInLink, std::string_view content)
{
    if (isBlank(content) && style.content.empty()) {
        putText(content);
        return;
    }
    const auto& open = frame();
    const Rgb ground = open.inlineGround.value_or(open.shownGround);
    WantedLook wanted;
    wanted.style = &style;
    wanted.isInLink = isInLink;
    wanted.color = isInLink ? m_colors.linkInk(style, ground, open.headingSize > 0)
                            : m_colors.ink(style, ground, isVerbatim());
    wanted.ground = open.inlineGround;
    wanted.keepsPitch = m_measure->isFixedPitch;
    if (open.headingSize > 0) {
        wanted.size = style.fontSize < open.headingSize * SmallInHeading ? "medium" : "";
    } else if (const float ratio = style.fontSize / m_measure->bodySize; !style.isFixedPitch || ratio > 1) {
        wanted.size = sizeName(ratio);
    }
    const std::string tags = styleTags(open.shown, wanted);
    if (tags.empty()) {
        putText(content);
    } else {
        putText(content, tags, styleEnds(tags));
    }
}

/// What a sheet puts before or behind the content of an element. Numbers of code lines are not what the code
/// says.
void StyledWriter::putPart(const HtmlNode& element, const ComputedStyle* part)
{
    if (part == nullptr) {
        return;
    }
    m_counters.enter(*part);
    const std::string text = m_counters.text(part->content, element);
    m_counters.leave();
    const bool isNumber = part->content.find("counter") != std::string::npos;
    const Element kind = notesOf(element).element;
    const bool isStructure = kind == Element::Table || kind == Element::Row || kind == Element::List;
    if (text.empty() || (isVerbatim() && isNumber) || isStructure) {
        return;
    }
    putStyled(*part, notesOf(element).isInLink, text);
}

std::string StyledWriter::attributesOf(const HtmlNode& element) const
{
    const auto& style = styleOf(element);
    if (notesOf(element).element != Element::Picture) {
        return style.isUnderlined ? std::string() : attributeText("class", "plain");
    }
    std::string look;
    const auto isPixels = [](const StyleLength& length) {
        return length.unit == StyleLength::Unit::Pixels && length.value >= 1;
    };
    if (isPixels(style.width)) {
        look += attributeText("width", BoxLook::widthText(style.width));
    } else if (isPixels(style.maxWidth) && float(widthOf(element)) > style.maxWidth.value) {
        look += attributeText("width", BoxLook::widthText(style.maxWidth));
    }
    const auto height = attribute(element, "height");
    if (!height.empty() && height.find('%') == std::string_view::npos && isPixels(style.width)) {
        look += attributeText("height", height);
    }
    if (style.floating != Floating::None && element.parent != nullptr &&
        notesOf(*element.parent).text >= TextBeside) {
        look += attributeText("style", style.floating == Floating::Left ? "float:left" : "float:right");
    } else if (style.verticalAlign == VerticalAlign::Middle) {
        look += attributeText("style", "vertical-align:middle");
    }
    return look;
}

/// Pictures stand beside each other, but beside no text when they are large.
bool StyledWriter::isSetApart(const HtmlNode& picture) const
{
    const auto* parent = picture.parent;
    return widthOf(picture) >= LargePictureWidth && styleOf(picture).floating == Floating::None &&
           (parent == nullptr || notesOf(*parent).text > 0);
}
