// SPDX-License-Identifier: MIT
#pragma once

#include "sources/folderfiles.h"
#include "sources/source.h"

#include <QCoreApplication>

/// A folder of HTML pages. Its tree and keywords come from what the generator left, else from the lists of
/// links of its contents page, else from folders and titles. Every page has a row.
class HtmlFolderSource : public Source {
    Q_DECLARE_TR_FUNCTIONS(HtmlFolderSource)

public:
    explicit HtmlFolderSource(const QString& folder);

    [[nodiscard]] static QString title(const QString& folder);
    [[nodiscard]] ContentsOutline readContents(const std::stop_token& stop) override;
    void readKeywords(KeywordSink& sink, const std::stop_token& stop) override;

private:
    QString m_folder; ///< without "/" at its end
    QString m_title;
    std::vector<FolderRow> m_rows; ///< those behind the first one
    std::optional<FolderFiles> m_files;
};
