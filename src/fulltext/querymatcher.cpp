// SPDX-License-Identifier: MIT
#include "fulltext/querymatcher.h"

/// A word with signs is looked for both ways: only one of them is in the text.
QueryMatcher::QueryMatcher(const SearchQuery& query, std::string_view language) : m_stemmer(language)
{
    for (size_t i = 0; i < query.clauses.size(); ++i) {
        const auto& clause = query.clauses[i];
        if (clause.isExcluded) {
            continue;
        }
        ++m_clauses;
        for (const auto& term : clause.terms) {
            addTerm(term, int(i));
        }
        for (const auto& term : clause.literals) {
            addTerm(term, int(i));
        }
    }
}

void QueryMatcher::addTerm(const QueryTerm& term, int clause)
{
    auto& added = m_terms.emplace_back();
    added.clause = clause;
    const bool hasForms = m_stemmer.hasForms() && !term.isExact && term.words.size() == 1;
    for (const auto& word : term.words) {
        const bool isPrefix = term.isPrefix && &word == &term.words.back();
        added.patterns.push_back({word, hasForms ? std::string(m_stemmer.stem(word)) : "", isPrefix});
    }
    added.steps.resize(added.patterns.size());
}

std::vector<QueryMatcher::Match> QueryMatcher::matches(const Words& words)
{
    for (auto& term : m_terms) {
        term.steps.assign(term.patterns.size(), {});
    }
    std::vector<Match> found;
    for (const auto& word : words.all()) {
        const auto folded = words.folded(word);
        for (auto& term : m_terms) {
            if (proceed(term, word, folded)) {
                found.push_back({term.steps.back().begin, word.end, term.clause});
            }
        }
    }
    return found;
}

/// Whether the term ends with the word.
bool QueryMatcher::proceed(Term& term, const Word& word, std::string_view folded)
{
    bool isComplete = false;
    for (size_t i = term.patterns.size(); i-- > 0;) {
        const bool isDue =
            i == 0 || (term.steps[i - 1].isFound && term.steps[i - 1].position + 1 == word.position);
        if (isDue && fits(term.patterns[i], folded)) {
            term.steps[i] = {word.position, i == 0 ? word.begin : term.steps[i - 1].begin, true};
            isComplete = isComplete || i + 1 == term.patterns.size();
        }
    }
    return isComplete;
}

bool QueryMatcher::fits(const Pattern& pattern, std::string_view word)
{
    if (word == pattern.word || (pattern.isPrefix && word.starts_with(pattern.word))) {
        return true;
    }
    return !pattern.stem.empty() && word[0] == pattern.stem[0] && m_stemmer.stem(word) == pattern.stem;
}
