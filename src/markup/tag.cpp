// SPDX-License-Identifier: MIT
#include "markup/tag.h"

#include <array>
#include <initializer_list>
#include <unordered_map>

namespace {

constexpr std::array<std::string_view, TagCount> Names{
    "",           "",           "",         "",         "",          "",        "math",     "svg",
    "a",          "abbr",       "acronym",  "address",  "applet",    "area",    "article",  "aside",
    "audio",      "b",          "base",     "basefont", "bdi",       "bdo",     "bgsound",  "big",
    "blockquote", "body",       "br",       "button",   "canvas",    "caption", "center",   "cite",
    "code",       "col",        "colgroup", "data",     "datalist",  "dd",      "del",      "details",
    "dfn",        "dialog",     "dir",      "div",      "dl",        "dt",      "em",       "embed",
    "fieldset",   "figcaption", "figure",   "font",     "footer",    "form",    "frame",    "frameset",
    "h1",         "h2",         "h3",       "h4",       "h5",        "h6",      "head",     "header",
    "hgroup",     "hr",         "html",     "i",        "iframe",    "image",   "img",      "input",
    "ins",        "kbd",        "keygen",   "label",    "legend",    "li",      "link",     "listing",
    "main",       "map",        "mark",     "marquee",  "menu",      "meta",    "meter",    "nav",
    "nobr",       "noembed",    "noframes", "noscript", "object",    "ol",      "optgroup", "option",
    "output",     "p",          "param",    "picture",  "plaintext", "pre",     "progress", "q",
    "rb",         "rp",         "rt",       "rtc",      "ruby",      "s",       "samp",     "script",
    "search",     "section",    "select",   "slot",     "small",     "source",  "span",     "strike",
    "strong",     "style",      "sub",      "summary",  "sup",       "table",   "tbody",    "td",
    "template",   "textarea",   "tfoot",    "th",       "thead",     "time",    "title",    "tr",
    "track",      "tt",         "u",        "ul",       "var",       "video",   "wbr",      "xmp"};
static_assert(Names.back() == "xmp" && Names[size_t(Tag::Section)] == "section");

using Traits = std::array<uint16_t, TagCount>;

constexpr void add(Traits& traits, Trait trait, std::initializer_list<Tag> tags)
{
    for (const Tag tag : tags) {
        traits[size_t(tag)] |= uint16_t(trait);
    }
}

constexpr Traits makeTraits()
{
    using enum Tag;
    Traits traits{};
    add(traits, Trait::Special, {Address,    Applet,   Area,     Article,     Aside,
                                 Base,       Basefont, Bgsound,  Blockquote,  Body,
                                 Br,         Button,   Caption,  Center,      Col,
                                 Colgroup,   Dd,       Details,  Dir,         Div,
                                 Dl,         Dt,       Embed,    Fieldset,    Figcaption,
                                 Figure,     Footer,   Form,     Frame,       Frameset,
                                 H1,         H2,       H3,       H4,          H5,
                                 H6,         Head,     Header,   Hgroup,      Hr,
                                 Html,       Iframe,   Img,      Input,       Keygen,
                                 Li,         Link,     Listing,  Main,        Marquee,
                                 Menu,       Meta,     Nav,      Noembed,     Noframes,
                                 Noscript,   Object,   Ol,       P,           Param,
                                 Plaintext,  Pre,      Script,   Search,      Section,
                                 Select,     Source,   Style,    Summary,     Table,
                                 Tbody,      Td,       Template, Textarea,    Tfoot,
                                 Th,         Thead,    Title,    Tr,          Track,
                                 Ul,         Wbr,      Xmp,      ForeignText, ForeignDocument,
                                 ForeignNote});
    add(traits, Trait::Scope,
        {Applet, Caption, Html, Table, Td, Th, Marquee, Object, Template, ForeignText, ForeignDocument,
         ForeignNote});
    add(traits, Trait::ListScope, {Ol, Ul});
    add(traits, Trait::TableScope, {Html, Table, Template});
    add(traits, Trait::Format, {A, B, Big, Code, Em, Font, I, Nobr, S, Small, Strike, Strong, Tt, U});
    add(traits, Trait::ImpliedEnd, {Dd, Dt, Li, Optgroup, Option, P, Rb, Rp, Rt, Rtc});
    add(traits, Trait::Heading, {H1, H2, H3, H4, H5, H6});
    add(traits, Trait::TablePart, {Table, Tbody, Template, Tfoot, Thead, Tr});
    add(traits, Trait::RowGroup, {Tbody, Tfoot, Thead});
    add(traits, Trait::Cell, {Td, Th});
    add(traits, Trait::Block,
        {Address, Article,  Aside,      Blockquote, Center,  Details, Dialog, Dir,  Div,
         Dl,      Fieldset, Figcaption, Figure,     Footer,  Header,  Hgroup, Main, Menu,
         Nav,     Ol,       P,          Search,     Section, Summary, Ul});
    return traits;
}

} // namespace

Tag tagOf(std::string_view name)
{
    static const auto tags = [] {
        std::unordered_map<std::string_view, Tag> byName;
        for (size_t i = 0; i < Names.size(); ++i) {
            if (!Names[i].empty()) {
                byName.emplace(Names[i], Tag(i));
            }
        }
        return byName;
    }();
    const auto found = tags.find(name);
    return found == tags.end() ? Tag::Unknown : found->second;
}

std::string_view tagName(Tag tag)
{
    return Names[size_t(tag)];
}

bool has(Tag tag, Trait trait)
{
    static constexpr Traits traits = makeTraits();
    return (traits[size_t(tag)] & uint16_t(trait)) != 0;
}
