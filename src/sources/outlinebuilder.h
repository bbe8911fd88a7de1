// SPDX-License-Identifier: MIT
#pragma once

#include "formats/contentsoutline.h"

/// Makes an outline row by row.
class OutlineBuilder {
public:
    static constexpr size_t MaximumRows = 1'000'000;
    static constexpr int MaximumLevel = 200;

    /// `file` is what names the pages, which are relative to `directory`, a path that ends with "/".
    OutlineBuilder(const QString& file, const QString& directory);

    /// Of the help set; before its rows.
    void setTitle(const QString& title);
    /// Adds the next row, `level` steps below the top, at most one below the row before. An empty page is
    /// none. False when there are too many.
    bool add(int level, QStringView title, QStringView page, int line = 0);
    void note(Problem::Severity severity, const QString& message, int line = 0);
    [[nodiscard]] bool isEmpty() const { return m_outline.entries.empty(); }
    [[nodiscard]] const std::vector<OutlineEntry>& rows() const { return m_outline.entries; }

    [[nodiscard]] ContentsOutline take();

private:
    [[nodiscard]] QStringView keep(QStringView text);

    ContentsOutline m_outline;
    std::vector<int> m_path; ///< rows from the top to the last one
};
