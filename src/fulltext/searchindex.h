// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/database.h"
#include "fulltext/ranking.h"
#include "fulltext/searchquery.h"
#include "fulltext/stemmer.h"

#include <chrono>
#include <optional>
#include <stop_token>
#include <string>
#include <unordered_map>
#include <vector>

/// A help set's database, to be searched in. For one thread; others may change the database meanwhile.
class SearchIndex {
public:
    explicit SearchIndex(const QByteArray& name);
    [[nodiscard]] bool isOpen() const { return m_database != nullptr; }
    /// Whether what was read makes no sense; what was found is not all there is.
    [[nodiscard]] bool isDamaged() const { return m_database != nullptr && m_database->sawDamage(); }
    /// Lets all that follows end early, with less than there is, when a stop is asked for.
    void setStop(const std::stop_token& stop);

    struct Found {
        int64_t total = 0;           ///< pages, copies counted once
        std::vector<Candidate> best; ///< best first, without copies
        std::unordered_map<uint32_t, std::string>
            anchors; ///< of pages with a place that is called like the query
    };
    /// How many pages have the terms of a query, in their order there; and all pages, as the last number.
    [[nodiscard]] std::vector<int64_t> count(const SearchQuery& query);
    /// `weights` are those of the terms, in their order there. Nothing when a stop was asked for or the
    /// database is damaged.
    [[nodiscard]] std::optional<Found> search(const SearchQuery& query, const std::vector<double>& weights,
                                              size_t limit);

    struct Page {
        QString file;
        QString title; ///< its own
        int64_t hash = 0;
        bool isEnglish = false;
    };
    [[nodiscard]] Page page(uint32_t number);

    struct Spelling {
        std::string word;
        int distance = 0;
        int64_t pages = 0;
    };
    /// The most usual of the words that are nearest to one that is not there; nothing when none is near.
    [[nodiscard]] std::optional<Spelling> nearestWord(const std::string& word,
                                                      std::chrono::steady_clock::time_point end);
    /// Whether a word, in any of its forms, is on some page.
    [[nodiscard]] bool hasWord(const std::string& word) { return !forms(word).words.empty(); }

private:
    /// The forms of a word that are there.
    struct Forms {
        std::vector<std::string> words;
        int64_t pages = 0; ///< at least; of the most usual one
    };
    const Forms& forms(const std::string& word);
    void refresh();
    class Expression;
    void addTerm(const QueryTerm& term, double weight, Expression& expression);
    void preferExactNames(const SearchQuery& query, Found& found);
    void sortOut(Found& found, size_t limit);

    std::stop_token m_stop;
    Ranking m_ranking; ///< before the database, which calls it
    std::unique_ptr<Database> m_database;
    AllFacts m_facts;
    int64_t m_version = -1; ///< of the database's content
    Stemmer m_stemmer;
    std::unordered_map<std::string, Forms> m_forms;
    Forms m_unfinished; ///< of the word asked for last, if reading it failed
};
