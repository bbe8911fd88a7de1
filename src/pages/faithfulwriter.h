// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagewriter.h"

/// Writes a page as its author wrote it, but for what rich text would get wrong: scripts are left out,
/// pictures that cannot be shown are replaced by their text.
class FaithfulWriter : public PageWriter {
public:
    using PageWriter::PageWriter;

    void writePage(const HtmlNode& root);

private:
    bool enter(const HtmlNode& element) override;
    void left(const HtmlNode& element) override;
    void text(const HtmlNode& node) override;
    [[nodiscard]] std::string attributesOf(const HtmlNode& element) const override;

    void openElement(const HtmlNode& element);
    void putEmpty(const HtmlNode& element);
    void putFrames(const HtmlNode& frameset);
    void putStyle(const HtmlNode& element);
    void putStyleSheet(const HtmlNode& element);

    size_t m_tables = 0; ///< that are open
};
