// SPDX-License-Identifier: MIT
#include "pages/readinglook.h"

#include "markup/htmltree.h"
#include "markup/tags.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

constexpr int WidestSpan = 1000;         // columns or rows
constexpr int HighestNumber = 1'000'000; // of a list's item

/// A number as a page writes it, from 1 to `most`.
int numberOf(const HtmlNode& element, const char* name, int most)
{
    const auto text = attribute(element, name);
    int number = 1;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return std::clamp(number, 1, most);
}

std::string_view alignmentOf(const HtmlNode& element)
{
    static constexpr std::array<std::string_view, 4> known{"center", "right", "left", "justify"};
    for (const auto name : known) {
        if (equalsLower(attribute(element, "align"), name)) {
            return name;
        }
    }
    return isElement(element, "center") ? known[0] : std::string_view();
}

bool hasHeadCell(const HtmlNode& table)
{
    const auto* node = nextNode(&table, &table);
    while (node != nullptr && !isElement(*node, "th")) {
        node = nextNode(node, &table);
    }
    return node != nullptr;
}

} // namespace

std::string_view ReadingLook::noteClass(Role role)
{
    switch (role) {
    case Role::Note:
        return "note";
    case Role::Tip:
        return "tip";
    case Role::Warning:
        return "warning";
    case Role::Danger:
        return "danger";
    case Role::Aside:
        return "quote";
    default:
        return {};
    }
}

std::string ReadingLook::boxStart(std::string_view className)
{
    const std::string look = attributeText("class", className);
    return startTag("table", look + R"( width="100%" cellspacing="0")") + "<tr>" + startTag("td", look);
}

std::string ReadingLook::block(const HtmlNode& element, std::string_view className)
{
    std::string look = className.empty() ? std::string() : attributeText("class", className);
    if (const auto alignment = alignmentOf(element); !alignment.empty()) {
        look += attributeText("align", alignment);
    }
    if (equalsLower(attribute(element, "dir"), "rtl")) {
        look += attributeText("dir", "rtl");
    }
    return look;
}

std::string ReadingLook::heading(const HtmlNode& element)
{
    return block(element, element.tag == Tag::H1 ? "larger" : element.tag == Tag::H2 ? "large" : "usual");
}

std::string ReadingLook::listStart(const HtmlNode& list)
{
    const int start = numberOf(list, "start", HighestNumber);
    return start > 1 ? attributeText("start", std::to_string(start)) : std::string();
}

std::string ReadingLook::numberedList(const HtmlNode& list)
{
    std::string look = listStart(list);
    const auto type = attribute(list, "type");
    if (type == "a" || type == "A" || type == "i" || type == "I") {
        look += attributeText("type", type);
    }
    return look;
}

std::string ReadingLook::table(const HtmlNode& table, bool isData)
{
    std::string look = isData ? R"( class="data" border="1" cellspacing="0" cellpadding="5")"
                              : R"( cellspacing="0" cellpadding="2")";
    if (attribute(table, "width") == "100%") {
        look += attributeText("width", "100%");
    }
    return look;
}

std::string ReadingLook::cell(const HtmlNode& cell)
{
    return block(cell) + spans(cell);
}

std::string ReadingLook::spans(const HtmlNode& cell)
{
    std::string look;
    for (const auto* span : {"colspan", "rowspan"}) {
        if (const int count = numberOf(cell, span, WidestSpan); count > 1) {
            look += attributeText(span, std::to_string(count));
        }
    }
    return look;
}

std::string ReadingLook::picture(const HtmlNode& picture)
{
    std::string look;
    for (const auto* name : {"width", "height"}) {
        const auto value = attribute(picture, name);
        if (!value.empty() && value.find('%') == std::string_view::npos) {
            look += attributeText(name, value);
        }
    }
    return look;
}

bool ReadingLook::isDataTable(const HtmlNode& table)
{
    const auto border = attribute(table, "border");
    const bool isFramed = !border.empty() && border != "0";
    const auto role = attribute(table, "role");
    return role != "presentation" && role != "none" &&
           (isFramed || roleOf(table) == Role::DataTable || hasHeadCell(table));
}
