// SPDX-License-Identifier: MIT
#pragma once

#include "pages/textlimit.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct PreparedPage;

/// What is written of a page: HTML for rich text and the same as plain text, both UTF-8. Puts blanks, line
/// ends, anchors and paragraphs where they belong, and finds where a long page can be divided.
class PageOutput {
public:
    /// All of a page, or only what can be laid out in reasonable time.
    explicit PageOutput(bool isWhole) : m_limit(isWhole) {}

    /// How often the page was divided.
    [[nodiscard]] size_t joints() const { return m_joints.size(); }
    /// Whether no more text is taken.
    [[nodiscard]] bool isFull() const { return m_limit.isReached(); }
    [[nodiscard]] size_t textLength() const { return m_text.size(); }
    /// The plain text from a position on.
    [[nodiscard]] std::string_view textFrom(size_t begin) const
    {
        return std::string_view(m_text).substr(begin);
    }

    /// What the tag of a table that can be divided says of its look. There is no margin between its parts.
    static constexpr std::string_view TableMargins = R"( style="margin-top:4px;margin-bottom:8px")";

    /// How an element that was begun ends.
    struct End {
        std::string markup;
        bool isBlock = false;
        bool isVerbatim = false;
        bool isContainer = false; ///< text in it needs a paragraph, which `paragraph` begins
        std::string again = {};   ///< begins it anew where the page is divided in it; empty if it cannot be
        bool isBare = true;       ///< looks the same when it ends early and does not begin anew
        std::string paragraph = "<div>";
    };
    /// Begins an element with `markup`; `end` is for close().
    void open(std::string_view markup, End& end);
    void close(const End& end);

    [[nodiscard]] bool isVerbatim() const { return m_verbatim > 0; }
    [[nodiscard]] bool isLineEmpty() const { return m_isLineEmpty; }

    void putMarkup(std::string_view markup) { m_html += markup; }
    /// Text with one blank for a run of them, unless it is verbatim.
    void putText(std::string_view text);
    /// The same, with blanks as they are written.
    void putWritten(std::string_view text);
    /// The blank or the line end that is due.
    void putSpace();
    /// A rule, or what else stands between blocks and holds nothing.
    void putEmptyBlock(std::string_view markup);
    /// A picture; one that is set apart gets a line of its own.
    void putPicture(std::string_view markup, bool isApart);
    /// Lets a name lead to what is written next.
    void addAnchor(std::string_view name);
    void putAnchors();

    void breakLine();
    /// Where one paragraph ends and another begins.
    void breakBlock();
    /// A paragraph for text that stands between blocks, where there is none.
    void beginParagraph(std::string_view markup = {});
    /// The page cannot be divided from here on.
    void keepWhole() { ++m_openFormats; }

    /// Ends the page and hands over what was written.
    void finish(PreparedPage& page);

private:
    /// An open element that can be divided.
    struct Divisible {
        std::string again;
        std::string end;
        size_t begin; ///< in `m_html`
    };

    void putBreak();
    void endParagraph();
    void divide();
    [[nodiscard]] bool isDivisibleHere() const;
    [[nodiscard]] bool isInDivisibleTable() const;
    void putWords(std::string_view text, bool isForHtml);
    void addJoint();

    TextLimit m_limit;
    std::string m_html;
    std::string m_text;
    std::vector<std::string> m_anchors; ///< that wait for what they lead to
    std::vector<size_t> m_joints;       ///< positions in `m_html`
    std::vector<Divisible> m_divisible; ///< the open ones
    std::vector<std::string>
        m_blocks;       ///< what begins paragraphs in the open blocks; empty for those that are no containers
    int m_verbatim = 0; ///< open elements of that kind
    int m_openTables = 0;
    int m_openFormats = 0;          ///< open elements that cannot end early
    bool m_isParagraphOpen = false; ///< one of the output's own, in a container
    bool m_isSpaceWanted = false;   ///< a blank is due before the next text
    bool m_isBreakDue = false;      ///< a line end is due before the next text
    bool m_isLineEmpty = true;
    std::optional<size_t> m_blockEnd; ///< in `m_html`, while neither text nor a picture has followed
    bool m_isTextLast = false;        ///< followed by nothing but ends of elements
};
