// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/database.h"
#include "fulltext/ranking.h"
#include "fulltext/searchexpression.h"
#include "fulltext/searchquery.h"
#include "fulltext/vocabulary.h"

#include <QStringList>

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

    /// What pages are wanted.
    struct Wanted {
        SearchQuery query;
        std::vector<double> weights; ///< of the terms, in their order in the query
        double leastCoverage = 1;    ///< less than 1: words of little weight may be missing on a page
        QStringList languages;       ///< that the reader prefers, the best first
        size_t limit = 0;
    };
    struct Found {
        int64_t total = 0;           ///< pages, copies counted once
        std::vector<Candidate> best; ///< best first, without copies
        std::unordered_map<uint32_t, std::string>
            anchors; ///< of pages with a place that is called like the query
    };
    /// How many pages have the terms of a query, in their order there; and all pages, as the last number.
    [[nodiscard]] std::vector<int64_t> count(const SearchQuery& query);
    /// Nothing when a stop was asked for or the database is damaged.
    [[nodiscard]] std::optional<Found> search(const Wanted& wanted);

    struct Page {
        QString file;
        QString title; ///< its own
        int64_t hash = 0;
        std::string language; ///< such as "de"; empty when it is not known
    };
    [[nodiscard]] Page page(uint32_t number);
    /// The pages with the same text as this one, itself left out.
    [[nodiscard]] std::vector<uint32_t> copiesOf(uint32_t number);

    /// The words that are there.
    [[nodiscard]] Vocabulary& vocabulary()
    {
        refresh();
        return *m_vocabulary;
    }

private:
    void refresh();
    void addPage(const Statement& row);
    [[nodiscard]] std::vector<std::string> usualLanguages() const;
    [[nodiscard]] int languageFor(const QStringList& preferred) const;
    void addTerm(const QueryTerm& term, double weight, SearchExpression& expression);
    [[nodiscard]] SearchExpression expressionFor(const Wanted& wanted);
    void preferNames(const Wanted& wanted, Found& found);
    void sortOut(Found& found, size_t limit);

    std::stop_token m_stop;
    Ranking m_ranking; ///< before the database, which calls it
    std::unique_ptr<Database> m_database;
    std::optional<Vocabulary> m_vocabulary;
    AllFacts m_facts;
    std::unordered_map<int64_t, uint32_t> m_firstWithHash;
    int64_t m_version = -1; ///< of the database's content
};
