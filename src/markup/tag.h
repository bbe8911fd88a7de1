// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The elements of HTML that mean something to somebody here; all others are Unknown. Text is no element;
/// elements of drawings and formulas have tags of their own, as their names mean something else.
enum class Tag : uint8_t {
    Text,
    Unknown,
    Foreign,         ///< in a drawing or a formula
    ForeignText,     ///< its text is text of the page
    ForeignDocument, ///< all in it is a part of the page
    ForeignNote,     ///< explains a formula
    Math,
    Svg,
    A,
    Abbr,
    Acronym,
    Address,
    Applet,
    Area,
    Article,
    Aside,
    Audio,
    B,
    Base,
    Basefont,
    Bdi,
    Bdo,
    Bgsound,
    Big,
    Blockquote,
    Body,
    Br,
    Button,
    Canvas,
    Caption,
    Center,
    Cite,
    Code,
    Col,
    Colgroup,
    Data,
    Datalist,
    Dd,
    Del,
    Details,
    Dfn,
    Dialog,
    Dir,
    Div,
    Dl,
    Dt,
    Em,
    Embed,
    Fieldset,
    Figcaption,
    Figure,
    Font,
    Footer,
    Form,
    Frame,
    Frameset,
    H1,
    H2,
    H3,
    H4,
    H5,
    H6,
    Head,
    Header,
    Hgroup,
    Hr,
    Html,
    I,
    Iframe,
    Image,
    Img,
    Input,
    Ins,
    Kbd,
    Keygen,
    Label,
    Legend,
    Li,
    Link,
    Listing,
    Main,
    Map,
    Mark,
    Marquee,
    Menu,
    Meta,
    Meter,
    Nav,
    Nobr,
    Noembed,
    Noframes,
    Noscript,
    Object,
    Ol,
    Optgroup,
    Option,
    Output,
    P,
    Param,
    Picture,
    Plaintext,
    Pre,
    Progress,
    Q,
    Rb,
    Rp,
    Rt,
    Rtc,
    Ruby,
    S,
    Samp,
    Script,
    Search,
    Section,
    Select,
    Slot,
    Small,
    Source,
    Span,
    Strike,
    Strong,
    Style,
    Sub,
    Summary,
    Sup,
    Table,
    Tbody,
    Td,
    Template,
    Textarea,
    Tfoot,
    Th,
    Thead,
    Time,
    Title,
    Tr,
    Track,
    Tt,
    U,
    Ul,
    Var,
    Video,
    Wbr,
    Xmp,
};
inline constexpr size_t TagCount = size_t(Tag::Xmp) + 1;

/// Whether it is of a drawing or a formula.
[[nodiscard]] constexpr bool isForeignTag(Tag tag)
{
    return tag >= Tag::Foreign && tag <= Tag::Svg;
}

/// The tag of a name in lower case.
[[nodiscard]] Tag tagOf(std::string_view name);
/// Empty for tags that stand for several names.
[[nodiscard]] std::string_view tagName(Tag tag);

/// What the rules for reading HTML say of an element.
enum class Trait : uint16_t {
    Special = 1,     ///< ends the search for what an end tag ends
    Scope = 2,       ///< hides what is open around it
    ListScope = 4,   ///< hides items of lists, as Scope does
    TableScope = 8,  ///< hides parts of tables
    Format = 16,     ///< goes on in the next block when it was not ended
    ImpliedEnd = 32, ///< ends with what it is in
    Heading = 64,
    TablePart = 128, ///< text directly in it belongs before the table
    RowGroup = 256,  ///< what the rows of a table are in
    Cell = 512,
    Block = 1024, ///< ends a paragraph
};
[[nodiscard]] bool has(Tag tag, Trait trait);
