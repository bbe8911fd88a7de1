// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QString>
#include <QStringList>

#include <vector>

/// A part of a text, in UTF-16 code units.
struct TextRange {
    qsizetype start = 0;
    qsizetype length = 0;

    bool operator==(const TextRange&) const = default;
};

/// What somebody wants to know.
struct SearchRequest {
    QString query;             ///< as typed
    QStringList contentsFiles; ///< absolute paths of those to look in; all when empty
    int limit = 50;            ///< hits wanted at most
    /// Whether the last word is still being typed, so that it stands for all words that begin like it.
    bool isTyping = true;
    /// Languages that the reader prefers, such as "de-AT", the best first; where a help set has pages in
    /// several, those in others come behind.
    QStringList languages = {};
};

/// A page that was found. All texts are plain text, whatever characters they have.
struct SearchHit {
    QString page;  ///< absolute path, with the anchor of the place that is called like the query or has the
                   ///< snippet
    QString file;  ///< the same without the anchor
    QString title; ///< as the contents call the page, else the page itself; never empty
    QString contentsFile;         ///< absolute path, as it was given
    QString helpSet;              ///< title of the help set
    QStringList path;             ///< titles of the books that the page stands in, the outermost first
    QStringList section;          ///< headings that the snippet stands under, the outermost first
    QStringList copies;           ///< pages with the same text, absolute paths
    QString snippet;              ///< a piece of the page's text in one line; empty when there is none (yet)
    std::vector<TextRange> marks; ///< the words found in the snippet, in order
    double score = 0;             ///< the higher, the better
    QString language;             ///< of the page, such as "de"; null when it is not known
};

/// What was found, best first.
struct SearchAnswer {
    QString query;    ///< of the request
    qint64 total = 0; ///< pages that the query finds
    /// When it finds none: a query near to it that does, with fewer words or another spelling; null for none.
    QString nearest;
    qint64 nearestTotal = 0; ///< pages that `nearest` finds
    /// The query as it was read where it may mean two things: "-l" in quotes is an option; null when there is
    /// nothing to say.
    QString reading;
    QStringList options;         ///< words with a dash that were taken for options and exclude nothing
    QStringList excluded;        ///< words that pages must not have
    std::vector<SearchHit> hits; ///< of `nearest`, if that is not null
    double milliseconds = 0;     ///< that the search took
    /// Otherwise snippets are missing, and the same answer follows with all of them.
    bool isComplete = true;

    /// What the hits are for; the words to mark on a page.
    [[nodiscard]] const QString& shownQuery() const { return nearest.isNull() ? query : nearest; }
};

Q_DECLARE_METATYPE(SearchAnswer)
