// SPDX-License-Identifier: MIT
#pragma once

struct HtmlNode;

/// What an element is for, by its name, where that alone decides.
enum class Element {
    Transparent, ///< of no meaning here; its content counts
    Ignored,     ///< has nothing to read
    Block,
    Paragraph,
    Heading,
    Inline, ///< rich text shows it by itself
    Code,
    Keys,
    Quotation,
    Preformatted,
    List,
    Item,
    Terms,
    Term,
    Description,
    Table,
    TableCaption,
    Row,
    Cell,
    Caption,
    Quote,
    Link,
    Picture,
    Break,
    Rule,
    Summary,
    Frame,
    Field,
    Choice,
    Area,
    Drawing,
};

[[nodiscard]] Element elementOf(const HtmlNode& node);

/// Whether it stands in a line of text, which goes on behind it, where no style sheet says otherwise.
[[nodiscard]] bool isInlineElement(Element element);

/// What the known generators, and common habit, mean by an element's classes.
enum class Role {
    None,
    Furniture,         ///< belongs to the web site, not to the page
    ProbableFurniture, ///< the same, when it holds links and little else
    Footer,            ///< the same, even when it holds a line of text
    Hidden,            ///< there for scripts or for screen readers only
    MainContent,
    Document, ///< a generated document, which may stand beside furniture
    Note,
    Tip,
    Warning,
    Danger,
    Aside,
    Title, ///< of a note, a table, an example
    Caption,
    Figure,
    CodeBlock,
    Signature,
    SignatureName,
    Remark,
    Keys,
    UserInterface,
    DataTable,
    Keyword, ///< of a programming language, as the ones below
    String,
    Comment,
};

/// The first role that the classes of an element name; another one goes before Note and Document.
[[nodiscard]] Role roleOf(const HtmlNode& node);
