// SPDX-License-Identifier: MIT
#pragma once

#include "pages/arrangement.h"
#include "pages/boxlook.h"
#include "pages/elementnotes.h"
#include "pages/pagemeasure.h"
#include "pages/pagewriter.h"
#include "pages/shownstyle.h"
#include "styles/counters.h"

#include <optional>

/// Writes a surveyed page as its style sheets want it, as far as rich text can, in the viewer's own calm
/// typography: sizes by rank, colours that can be read, boxes and columns where the page has them.
class StyledWriter : public PageWriter {
public:
    using PageWriter::PageWriter;

    /// Writes `content`, which is in `body`. All anchors of the body stay.
    void writePage(const HtmlNode& body, const HtmlNode& content);

private:
    /// An open element.
    struct Frame {
        const HtmlNode* element = nullptr;
        ShownStyle shown;
        BoxLook::Flow flow;
        Rgb ground = 0xFFFFFF;           ///< behind it, as the page has it
        Rgb shownGround = 0xFFFFFF;      ///< the same, as it is shown
        std::optional<Rgb> inlineGround; ///< behind the text of an inline element, as it is shown
        bool isTable = false;            ///< of HTML, whose rows and cells are written as such
        bool isTableFlat = false;        ///< its rows and cells are paragraphs
        bool isList = false;             ///< whose items have marks
        bool isArranged = false;         ///< has an arrangement, the last one
        bool isInBox = false;            ///< that the page draws
        bool hasTable = false;           ///< is written as a table, or in one
        size_t ownAround = 0;            ///< how much was begun around it, but for its place
        bool isOwnCell = false;          ///< its box is the cell that it stands in
        float headingSize = 0;           ///< of the font of the heading that it is in, as the sheets want it
        size_t around = 0;               ///< how much is open around its content
        const ArrangedItem* item = nullptr; ///< its place
    };

    bool enter(const HtmlNode& element) override;
    void leaving(const HtmlNode& element) override;
    void left(const HtmlNode& element) override;
    void text(const HtmlNode& node) override;
    [[nodiscard]] std::string attributesOf(const HtmlNode& element) const override;
    [[nodiscard]] bool isSetApart(const HtmlNode& picture) const override;

    void openElement(const HtmlNode& element, const ElementNotes& notes);
    void openInline(const HtmlNode& element, const ElementNotes& notes);
    void openInlineTag(const HtmlNode& element, const ComputedStyle& style);
    void openBlockElement(const HtmlNode& element, const ElementNotes& notes);
    void openPlainBlock(const HtmlNode& element, const ElementNotes& notes);
    void openBox(const ElementNotes& notes);
    void openNote(const ElementNotes& notes, std::string_view name);
    void openTitle(const HtmlNode& element, const ElementNotes& notes);
    void openListing(const HtmlNode& element, const ElementNotes& notes);
    void openListElement(const HtmlNode& element, const ElementNotes& notes);
    void openTableElement(const HtmlNode& element, const ElementNotes& notes);
    void openCell(const HtmlNode& element, const ElementNotes& notes);
    void beginFloat(const ElementNotes& notes);

    void beginPlace(const HtmlNode& node, const ArrangedItem& item, Frame& next);
    void endPlace(const ArrangedItem& item);
    /// Begins something around what comes next: an outer part of the layout.
    void around(std::string_view markup, std::string end, bool isContainer = false, std::string again = {});
    void closeLast();
    void putPart(const HtmlNode& element, const ComputedStyle* part);
    void putStyled(const ComputedStyle& style, bool isInLink, std::string_view content);
    [[nodiscard]] std::optional<Rgb> groundOfCell(const HtmlNode& cell) const;
    /// Whether an element is as if only its content were there.
    [[nodiscard]] static bool isDissolved(const ElementNotes& notes);
    [[nodiscard]] bool isBoxWanted(const ElementNotes& notes, const ComputedStyle& style) const;
    [[nodiscard]] ComputedStyle groundedStyle(const HtmlNode& code) const;
    [[nodiscard]] bool isWrapper(const ElementNotes& notes) const;
    [[nodiscard]] float indentOf(const ElementNotes& notes) const;
    /// Attributes of a block of text.
    [[nodiscard]] std::string blockOf(const ElementNotes& notes, std::string_view more = {});
    [[nodiscard]] const ComputedStyle& styleOf(const HtmlNode& element) const;
    [[nodiscard]] Frame& frame() { return m_frames.back(); }
    [[nodiscard]] const Frame& frame() const { return m_frames.back(); }
    [[nodiscard]] const Frame& frameAround() const { return m_frames[m_frames.size() - 2]; }
    [[nodiscard]] bool isInTable() const;

    std::optional<PageMeasure> m_measure;
    ShownColors m_colors;
    Counters m_counters;
    std::vector<Frame> m_frames;
    std::vector<Arrangement> m_arrangements; ///< of the open elements
    std::vector<PageOutput::End> m_around;   ///< what is open around elements
    size_t m_openTables = 0;
    const HtmlNode* m_listing = nullptr; ///< code whose lines are elements
};
