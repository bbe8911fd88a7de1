// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagesurvey.h"
#include "pages/pagewriter.h"

/// Writes a surveyed page by the viewer's own rules. Its looks are those of the classes that it uses; what
/// the page itself says about looks is left out.
class ReadingWriter : public PageWriter {
public:
    using PageWriter::PageWriter;

    /// Writes `content`, which is in `body`. All anchors of the body stay.
    void writePage(const xmlNode& body, const xmlNode& content);

private:
    /// Rich text makes a line of text as high as a picture that does not fit into it any more.
    static constexpr int LargePicture = 200; // pixels

    bool enter(const xmlNode& element) override;
    [[nodiscard]] bool isSetApart(int width) const override { return width >= LargePicture; }
    void left(const xmlNode& element) override;
    void text(const xmlNode& node) override;
    [[nodiscard]] std::string attributesOf(const xmlNode& element) const override;

    void openElement(const xmlNode& element, const ElementNotes& notes);
    void openDivision(const xmlNode& element, const ElementNotes& notes);
    void openBox(const xmlNode& element, std::string_view name, std::string_view inner, std::string innerEnd);
    void openParagraph(const xmlNode& element, const ElementNotes& notes);
    void openTitle(const xmlNode& element, const ElementNotes& notes);
    void openInline(const xmlNode& element, const ElementNotes& notes);
    void openCode(const xmlNode& element, const ElementNotes& notes);
    void openListing(const xmlNode& element);
    void openList(const xmlNode& element);
    void openTable(const xmlNode& element, const ElementNotes& notes);
    void openCell(const xmlNode& element);

    /// A table of the page, or one of the viewer's own around a note or code.
    struct Table {
        const xmlNode* element;
        std::string_view box; ///< what it is around, such as "note"; empty for a table of the page
        bool isData = false;
    };
    [[nodiscard]] bool isInData() const { return !m_tables.empty() && m_tables.back().isData; }
    [[nodiscard]] std::string_view box() const;

    std::vector<Table> m_tables;          ///< those that are open, the innermost last
    const xmlNode* m_signature = nullptr; ///< of a function and the like
    const xmlNode* m_listing = nullptr;   ///< code whose lines are elements
};
