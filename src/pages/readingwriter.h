// SPDX-License-Identifier: MIT
#pragma once

#include "pages/elementnotes.h"
#include "pages/pagewriter.h"

/// Writes a surveyed page without style sheets by the viewer's own rules. Its looks are those of the classes
/// that it uses.
class ReadingWriter : public PageWriter {
public:
    using PageWriter::PageWriter;

    /// Writes `content`, which is in `body`. All anchors of the body stay.
    void writePage(const HtmlNode& body, const HtmlNode& content);

private:
    bool enter(const HtmlNode& element) override;
    [[nodiscard]] bool isSetApart(const HtmlNode& picture) const override;
    [[nodiscard]] bool hasPictureApart(const HtmlNode& element) const;
    [[nodiscard]] std::string_view paragraphClass(const HtmlNode& paragraph, const ElementNotes& notes) const;
    void left(const HtmlNode& element) override;
    void text(const HtmlNode& node) override;
    [[nodiscard]] std::string attributesOf(const HtmlNode& element) const override;

    void openElement(const HtmlNode& element, const ElementNotes& notes);
    void openDivision(const HtmlNode& element, const ElementNotes& notes);
    void openBox(const HtmlNode& element, std::string_view name, std::string_view inner,
                 std::string innerEnd);
    void openParagraph(const HtmlNode& element, const ElementNotes& notes);
    void openTitle(const HtmlNode& element, const ElementNotes& notes);
    void openInline(const HtmlNode& element, const ElementNotes& notes);
    void openCode(const HtmlNode& element, const ElementNotes& notes);
    void openListing(const HtmlNode& element);
    void openTable(const HtmlNode& element, const ElementNotes& notes);
    void openCell(const HtmlNode& element);

    /// A table of the page, or one of the viewer's own around a note or code.
    struct Table {
        const HtmlNode* element;
        std::string_view box; ///< what it is around, such as "note"; empty for a table of the page
        bool isFlat = false;  ///< written as paragraphs, because it is too deep or empty
    };
    /// Whether rows and cells are to be written as such.
    [[nodiscard]] bool isInTable() const;
    [[nodiscard]] std::string_view box() const;

    std::vector<Table> m_tables;           ///< those that are open, the innermost last
    const HtmlNode* m_signature = nullptr; ///< of a function and the like
    const HtmlNode* m_listing = nullptr;   ///< code whose lines are elements
};
