// SPDX-License-Identifier: MIT
#pragma once

#include "markup/formattingelements.h"
#include "markup/htmlscanner.h"
#include "markup/htmlstore.h"
#include "markup/openelements.h"

#include <vector>

/// Where a page is, which decides what a token means.
enum class Mode : uint8_t {
    Initial,
    BeforeHtml,
    BeforeHead,
    InHead,
    InHeadNoscript,
    AfterHead,
    InBody,
    Text,
    InTable,
    InCaption,
    InColumnGroup,
    InTableBody,
    InRow,
    InCell,
    InSelect,
    InSelectInTable,
    InTemplate,
    InFrameset,
    AfterFrameset,
};

/// The tree of a page while it grows: what is open, and how elements and texts are put where they belong.
class Construction {
public:
    Construction(HtmlScanner& scanner, HtmlStore& store) : m_scanner(scanner), m_store(store) {}
    Construction(const Construction&) = delete;
    Construction& operator=(const Construction&) = delete;

    OpenElements open;
    FormattingElements formatting;
    std::vector<Mode> templateModes;
    HtmlNode* root = nullptr;
    HtmlNode* head = nullptr;
    HtmlNode* form = nullptr; ///< the one that is open
    Mode mode = Mode::Initial;
    Mode modeAfterText = Mode::Initial;
    bool allowsFrames = true;  ///< nothing but blanks has been met so far
    bool isFostering = false;  ///< what is put into a table belongs before it
    bool skipsLineEnd = false; ///< the line end that comes next is not meant

    HtmlNode& insertElement(const HtmlToken& token);
    HtmlNode& insertElement(Tag tag);
    HtmlNode& insertForeign(const HtmlToken& token, bool isFormula);
    /// An element without content.
    void insertEmpty(const HtmlToken& token);
    void insertText(std::string_view text);
    /// An element whose content is no markup.
    void insertWithText(const HtmlToken& token, HtmlScanner::Content content);
    void makeRoot(const HtmlToken* token);
    /// Adds the attributes that an element does not have.
    void merge(HtmlNode& element, const HtmlAttribute* attributes);

    void closeParagraph();
    /// Ends a paragraph if one is open.
    void endParagraph();
    void closeCell();
    /// Begins anew the formatting elements that a block has ended.
    void reconstruct();
    /// Ends a formatting element wherever it stands, and begins it anew where it has to go on. False when
    /// there is none.
    bool adopt(Tag tag);
    /// Finds the mode from what is open.
    void resetMode();
    HtmlScanner& scanner() { return m_scanner; }
    void remove(HtmlNode& node);

private:
    struct Place {
        HtmlNode* parent;
        HtmlNode* before; ///< null for the end
    };

    static constexpr size_t MostCopies = 100'000; ///< of formatting elements

    [[nodiscard]] Place place(HtmlNode& target) const;
    [[nodiscard]] Place fosterPlace() const;
    HtmlNode& makeElement(Tag tag, std::string_view name, const HtmlAttribute* attributes);
    static void put(HtmlNode& node, const Place& place);
    HtmlNode& copyOf(const HtmlNode& element);
    void adoptAround(HtmlNode& element, size_t index, size_t furthest);
    HtmlNode& moveUp(size_t index, size_t furthest, size_t& bookmark);
    [[nodiscard]] Mode modeIn(size_t index) const;

    HtmlScanner& m_scanner;
    HtmlStore& m_store;
    size_t m_copies = 0;
};
