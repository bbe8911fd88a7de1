// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/database.h"

#include <cstdint>
#include <stop_token>
#include <string>
#include <vector>

/// What ranking needs to know of a page; as many as there are numbers of pages.
struct PageFacts {
    uint32_t words = 0;
    uint32_t headingWords = 0;
    uint32_t keywordWords = 0;
    uint32_t copies = 0; ///< number shared by the pages with this text; 0 when there is no other one
    uint8_t titleWords = 0;
    uint8_t linkShare = 0; ///< percentage of the text that stands in links
    uint8_t language = 0;  ///< position in AllFacts::languages
    bool isLive = false;   ///< otherwise the page is gone
};

struct AllFacts {
    std::vector<PageFacts> pages; ///< by number
    struct Language {
        std::string name; ///< empty when it is not known
        int64_t pages = 0;
    };
    std::vector<Language> languages{1}; ///< the unknown one first
    int64_t live = 0;
    double meanWords = 1; ///< of a page
    double meanHeadingWords = 1;
    double meanKeywordWords = 1;
};

/// A phrase of an expression, in the order in which they stand there.
struct PhraseRole {
    int clause;             ///< -1: excluded
    double weight;          ///< of what is found
    bool isLiteral = false; ///< signs, or a name with signs
};

struct Candidate {
    double score;
    uint32_t page;
};

/// How pages are weighed.
struct RankingRules {
    double leastCoverage = 0; ///< of the weight of all clauses, that a page must have
    int language = -1; ///< position of the reader's among those of the pages, which others stand behind
};

/// How much a word says that so many of all pages have.
[[nodiscard]] double rarity(int64_t found, int64_t all);

/// Collects the pages that an expression finds, with scores: words that few pages have count more, as do
/// those in titles, keywords and headings, those that come often for the length of the page, and those that
/// stand beside each other.
class Ranking {
public:
    /// Adds the function collect() to a connection; the ranking must outlive it.
    bool attach(Database& database);
    /// Before a statement that uses collect().
    void begin(const AllFacts& facts, std::vector<PhraseRole> roles, RankingRules rules,
               std::stop_token stop);
    [[nodiscard]] std::vector<Candidate>& candidates() { return m_candidates; }
    /// What the score of a page is multiplied by for its language.
    [[nodiscard]] double languageFactor(const PageFacts& facts) const;

private:
    friend struct Collect;

    const AllFacts* m_facts = nullptr;
    std::vector<PhraseRole> m_roles;
    RankingRules m_rules;
    double m_allWeight = 0; ///< of the clauses
    std::stop_token m_stop;
    std::vector<Candidate> m_candidates;
    std::vector<double> m_weights;               ///< of the clauses
    std::vector<bool> m_isFound;                 ///< which clauses a page has
    std::vector<double> m_inTitle;               ///< weights of what its title has of them
    std::vector<std::vector<uint64_t>> m_places; ///< of the phrases of each clause in a page
};
