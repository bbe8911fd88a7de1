// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagewriter.h"

/// Writes a page as its author wrote it, but for what rich text would get wrong: scripts are left out,
/// pictures that cannot be shown are replaced by their text.
class FaithfulWriter : public PageWriter {
public:
    using PageWriter::PageWriter;

    void writePage(const xmlNode& root);

private:
    bool enter(const xmlNode& element) override;
    void text(const xmlNode& node) override;
    [[nodiscard]] std::string attributesOf(const xmlNode& element) const override;

    void openElement(const xmlNode& element);
    void putFrames(const xmlNode& frameset);
    void putStyle(const xmlNode& element);
    void putStyleSheet(const xmlNode& element);
};
