// SPDX-License-Identifier: MIT
#pragma once

#include "markup/htmlstore.h"

#include <QByteArray>
#include <QString>

/// The elements of a page, as a web browser without scripts sees them.
class HtmlTree {
public:
    explicit HtmlTree(QString html);
    HtmlTree(const HtmlTree&) = delete;
    HtmlTree& operator=(const HtmlTree&) = delete;

    /// The html element; null when there is nothing in the page.
    [[nodiscard]] HtmlNode* root() const { return m_root; }
    /// The body, or the first element of this name before it; null when there is none.
    [[nodiscard]] HtmlNode* first(std::string_view name) const;

private:
    QByteArray m_source; ///< most texts are parts of it
    HtmlStore m_store;
    HtmlNode* m_root = nullptr;
};
