// SPDX-License-Identifier: MIT
#pragma once

#include "pages/preparedpage.h"

#include <QHash>
#include <QList>
#include <QStringList>
#include <QTextDocument>
#include <QTextFrame>

class QTextTable;

/// Writes what a page view shows as plain text: tables as columns, lists with marks, headings underlined. No
/// word of the document is left out or added but for marks, numbers of links and the lines below headings.
class DocumentText {
public:
    /// `links` are those that the document's own link targets stand for; null when links get no numbers.
    explicit DocumentText(const std::vector<PageLink>* links) : m_links(links) {}

    /// Lines of at most `width` columns where words allow, each with its end.
    [[nodiscard]] QString write(const QTextDocument& document, int width);

private:
    /// Lines, and whether the paragraphs at their ends keep their distance from others.
    struct Lines {
        QStringList lines;
        bool needsSpaceBefore = false;
        bool needsSpaceAfter = false;
        bool isItem = false; ///< of a list
    };

    [[nodiscard]] QStringList linesOf(QTextFrame::iterator from, const QTextFrame::iterator& end, int width);
    [[nodiscard]] Lines linesOf(const QTextBlock& block, int width);
    [[nodiscard]] Lines linesOf(const QTextTable& table, int width);
    [[nodiscard]] const QList<int>& naturalWidths(const QTextTable& table);
    [[nodiscard]] QStringList linesOfRow(const QTextTable& table, int row, const QList<int>& widths);
    [[nodiscard]] QString textOf(const QTextBlock& block);
    [[nodiscard]] QString numberOf(const QString& href);
    static void add(QStringList& lines, const Lines& added, Lines& last);

    const std::vector<PageLink>* m_links;
    QStringList m_targets; ///< of the numbers, from 1
    QHash<QString, qsizetype> m_numbers;
    QHash<const QTextTable*, QList<int>> m_widths; ///< of the columns when there is room enough
};
