// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/searchquery.h"
#include "fulltext/stemmer.h"
#include "fulltext/words.h"

#include <string>
#include <string_view>
#include <vector>

/// Finds the words and phrases of a query in texts, by the rules of the index.
class QueryMatcher {
public:
    /// The forms of a word in the language count as the same.
    QueryMatcher(const SearchQuery& query, std::string_view language);

    /// Number of clauses that can be found.
    [[nodiscard]] int clauses() const { return m_clauses; }

    struct Match {
        uint32_t begin; ///< in the text, bytes
        uint32_t end;
        int clause; ///< number of the clause
    };
    /// In the order in which they end; they may overlap.
    [[nodiscard]] std::vector<Match> matches(const Words& words);

private:
    struct Pattern {
        std::string word;
        std::string stem; ///< empty when only the word itself counts
        bool isPrefix;
    };
    /// How far a term has been found, for each of its words.
    struct Step {
        uint32_t position = 0;
        uint32_t begin = 0;
        bool isFound = false;
    };
    struct Term {
        std::vector<Pattern> patterns;
        std::vector<Step> steps;
        int clause;
    };
    [[nodiscard]] bool fits(const Pattern& pattern, std::string_view word);
    bool proceed(Term& term, const Word& word, std::string_view folded);

    void addTerm(const QueryTerm& term, int clause);

    Stemmer m_stemmer;
    std::vector<Term> m_terms;
    int m_clauses = 0;
};
