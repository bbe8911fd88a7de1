// SPDX-License-Identifier: MIT
#pragma once

#include "sources/pagefiles.h"
#include "styles/stylesheet.h"

#include <QCache>
#include <QString>

#include <memory>
#include <mutex>

class HtmlTree;
class PageStyles;

/// The style sheets of files, which many pages share: each is read once, and again when it has changed. May
/// be used by several threads.
class StyleSheets {
public:
    /// Empty when the file cannot be read.
    [[nodiscard]] std::shared_ptr<const StyleSheet> sheet(const QString& file);

private:
    static constexpr qsizetype LargestSum = 16'000'000; ///< bytes of files

    struct Kept {
        std::optional<PageFileState> state;
        std::shared_ptr<const StyleSheet> sheet;
    };

    std::mutex m_mutex;
    QCache<QString, Kept> m_sheets{LargestSum};
};

/// Adds what a page says of its looks: its style elements, and the sheets that it names, or that these
/// import, in files of this machine. Without `files` only its own. Relative names start from `base`.
void addStyleSheets(PageStyles& styles, const HtmlTree& tree, const QString& base, StyleSheets* files);
