// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagecontext.h"
#include "pages/pageoutput.h"
#include "pages/preparedpage.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct HtmlNode;

/// Writes the elements of a page as HTML for rich text, together with the plain text, the links and the
/// headings. Does what all presentations share; subclasses say how the other elements look.
class PageWriter {
public:
    /// Both must outlive the writer; `page` has its title and its base and gets the rest.
    PageWriter(const PageContext& context, PreparedPage& page)
        : m_context(context), m_page(page), m_output(context.isWhole)
    {
    }
    PageWriter(const PageWriter&) = delete;
    PageWriter& operator=(const PageWriter&) = delete;
    virtual ~PageWriter() = default;

    /// Writes an element with all that is in it.
    void write(const HtmlNode& element);
    /// Lets the anchors of an element lead to what is written next.
    void keepAnchors(const HtmlNode& element);
    /// Writes `content`, and of all else in `body` the anchors; then ends the page.
    void writeContent(const HtmlNode& body, const HtmlNode& content);
    /// Ends the page; call it last.
    void finish() { m_output.finish(m_page); }

protected:
    /// Begins an element with open(). False when there is nothing to write of it; otherwise its content comes
    /// next.
    virtual bool enter(const HtmlNode& element) = 0;
    /// Whether a picture gets lines of its own.
    [[nodiscard]] virtual bool isSetApart(const HtmlNode& /*picture*/) const { return false; }
    /// Width of a picture in pixels, as the page asks for it or as it is; 0 when it cannot be shown.
    [[nodiscard]] int widthOf(const HtmlNode& picture) const;
    /// An element is about to be ended.
    virtual void leaving(const HtmlNode& /*element*/) {}
    /// An element that was begun has been ended.
    virtual void left(const HtmlNode& /*element*/) {}
    virtual void text(const HtmlNode& node) = 0;
    /// What the presentation keeps of the attributes of a link or a picture, such as ` width="3"`; neither
    /// targets nor names.
    [[nodiscard]] virtual std::string attributesOf(const HtmlNode& element) const = 0;

    /// How an element that was begun ends.
    struct End : PageOutput::End {
        size_t link = 0;      ///< number of the link that it is, from 1
        size_t heading = 0;   ///< number of the heading that it is, from 1
        size_t textBegin = 0; ///< where its plain text begins
    };
    /// Writes `markup` and remembers how it ends.
    void open(std::string_view markup, std::string end) { open(markup, End{{std::move(end)}}); }
    void openBlock(std::string_view markup, std::string end) { open(markup, End{{std::move(end), true}}); }
    void openVerbatim(std::string_view markup, std::string end)
    {
        open(markup, End{{std::move(end), true, true}});
    }
    /// Begins a block whose text is put into paragraphs of its own where it stands beside other blocks.
    void openContainer(std::string_view markup, std::string end, std::string paragraph = "<div>")
    {
        End container{{std::move(end), true, false, true}};
        container.paragraph = std::move(paragraph);
        open(markup, std::move(container));
    }
    /// Begins something around an element, which ends after it: outer parts of the layout.
    void openAround(std::string_view markup, PageOutput::End& end) { m_output.open(markup, end); }
    void closeAround(const PageOutput::End& end) { m_output.close(end); }
    /// Begins a list, of which a long one can be divided.
    void openList(const std::string& markup, std::string end)
    {
        open(markup, End{{std::move(end), true, false, false, markup}});
    }
    /// Begins a table, of which a long one can be divided between its rows; `attributes` such as `
    /// border="1"`.
    void openTable(const HtmlNode& table, const std::string& attributes);
    /// Begins rows of a table that stand together.
    void openRows(const std::string& markup, std::string end);
    /// What a cell of a table that can be divided has to say of its width.
    [[nodiscard]] std::string cellWidth(const HtmlNode& cell);
    void openLink(const HtmlNode& element);
    /// `markup` is what begins the block, such as "<h1>".
    void openHeading(int level, std::string_view markup, std::string end);
    /// For elements that only have content, formulas among them.
    void openTransparent(const HtmlNode& element);

    [[nodiscard]] bool isVerbatim() const { return m_output.isVerbatim(); }
    [[nodiscard]] bool isLineEmpty() const { return m_output.isLineEmpty(); }
    /// Tables in each other; rich text takes a multiple of the time for each more.
    static constexpr size_t DeepestTable = 8;
    /// Whether so many elements are open that no more should be.
    [[nodiscard]] bool isTooDeep() const { return m_ends.size() > DeepestElement; }
    void putMarkup(std::string_view markup) { m_output.putMarkup(markup); }
    /// The page cannot be divided from here on.
    void keepWhole() { m_output.keepWhole(); }
    void putText(std::string_view text) { m_output.putText(text); }
    /// Text in an inline element, `tags` such as "<tt><span>".
    void putText(std::string_view text, std::string_view tags, std::string ends);
    /// What the element that was begun last was begun with.
    [[nodiscard]] std::string_view lastMarkup() const { return m_lastMarkup; }
    /// The same, with blanks as they are written.
    void putWritten(std::string_view text) { m_output.putWritten(text); }
    void breakLine() { m_output.breakLine(); }
    /// Where one paragraph ends and another begins.
    void breakBlock() { m_output.breakBlock(); }
    void putEmptyBlock(std::string_view markup) { m_output.putEmptyBlock(markup); }

    [[nodiscard]] const PageContext& context() const { return m_context; }

    /// Writes an element that looks the same in all presentations; false for others.
    bool putSpecial(const HtmlNode& element);

private:
    static constexpr size_t DeepestElement = 200;

    const PageContext& m_context;

    void open(std::string_view markup, End end);
    void openNothing()
    {
        m_lastMarkup.clear();
        m_ends.emplace_back();
    }
    [[nodiscard]] bool visit(const HtmlNode& node);
    void leave(const HtmlNode& element);
    void close();
    void putPicture(const HtmlNode& element);
    void putAlternative(std::string_view text);
    void putFrame(const HtmlNode& element);
    void putArea(const HtmlNode& element);
    void putApart(std::string_view text);
    void putLink(std::string_view href, std::string_view text);
    [[nodiscard]] QString localFile(std::string_view name) const;

    /// The table that is open and can be divided.
    struct LongTable {
        const HtmlNode* table = nullptr;
        std::vector<int> percents;          ///< of its columns
        const HtmlNode* firstRow = nullptr; ///< of the part that is written
        size_t part = 0;
    };

    PreparedPage& m_page;
    PageOutput m_output;
    std::vector<End> m_ends;
    std::string m_lastMarkup;
    LongTable m_longTable;
    int m_openLinks = 0;
};
