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
    std::vector<QueryTerm> terms; ///< never empty
    bool isExcluded = false;
    QString text; ///< as typed

    bool operator==(const QueryClause&) const = default;
};

/// What a query means: words mean all of them; "…" is a phrase, -word excludes, word* is a beginning, OR
/// stands between alternatives.
struct SearchQuery {
    std::vector<QueryClause> clauses; ///< at least one of them does not exclude, or there is none

    /// The same query as text.
    [[nodiscard]] QString text() const;
    /// The folded words when the query is nothing but words, else empty; for names that are just that.
    [[nodiscard]] std::string name() const;
};

/// Understands every text. When `isTyping`, the last word counts as a beginning unless a blank follows it.
[[nodiscard]] SearchQuery parseQuery(const QString& text, bool isTyping);

/// The folded words of a text, separated by blanks, as SearchQuery::name() gives them.
[[nodiscard]] std::string foldedName(QStringView text);
