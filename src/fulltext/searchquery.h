// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <string>
#include <vector>

/// Words that stand behind each other.
struct QueryTerm {
    std::vector<std::string> words; ///< folded, never empty
    bool isExact = false;           ///< only these very forms of the words
    bool isPrefix = false;          ///< the last word may go on

    bool operator==(const QueryTerm&) const = default;
};

/// One of the terms must be on a page, or none when the clause excludes.
struct QueryClause {
    std::vector<QueryTerm> terms;    ///< empty only when there are literals
    std::vector<QueryTerm> literals; ///< what is meant instead where some page has one: "-l", "%s", "->>"
    bool isExcluded = false;
    bool isPlain = false;   ///< a word as it is, in no quotes and without alternatives
    bool isLiteral = false; ///< its literals were meant and are its terms
    QString text;           ///< as typed

    bool operator==(const QueryClause&) const = default;
};

/// What a query means: words mean all of them; "…" is a phrase, -word excludes, word* is a beginning, OR
/// stands between alternatives. Words with signs are ambiguous until somebody looks whether pages have them.
struct SearchQuery {
    std::vector<QueryClause> clauses; ///< at least one of them does not exclude, or there is none

    /// The same query as text.
    [[nodiscard]] QString text() const;
    /// What the query is the name of, if it is: its words, without options, when it is nothing but words.
    [[nodiscard]] QString name() const;
    /// Whether signs of a word, other than an option's dashes, are meant.
    [[nodiscard]] bool isLiteral() const;
    /// Whether words may be missing on a page that has the rarer ones.
    [[nodiscard]] bool isPlain() const;
};

/// Understands every text. When `isTyping`, the last word counts as a beginning unless a blank follows it.
[[nodiscard]] SearchQuery parseQuery(const QString& text, bool isTyping);
