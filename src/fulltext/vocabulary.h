// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/database.h"
#include "fulltext/stemmer.h"

#include <chrono>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

/// The words that the pages of a help set have.
class Vocabulary {
public:
    explicit Vocabulary(Database& database) : m_database(database) {}

    /// After the database has changed. The languages are those whose word forms count.
    void renew(const std::vector<std::string>& languages);

    /// The forms of a word that are there.
    struct Forms {
        std::vector<std::string> words;
        int64_t pages = 0; ///< at least; of the most usual one
    };
    [[nodiscard]] const Forms& forms(const std::string& word);
    [[nodiscard]] bool hasForms(const std::string& word) { return !forms(word).words.empty(); }
    /// Words of the same origin, whose stem begins with that of the word or begins it: "installation" of
    /// "installer".
    [[nodiscard]] const std::vector<std::string>& relatives(const std::string& word);
    /// Whether this very word is there.
    [[nodiscard]] bool has(const std::string& word);
    /// On how many pages the most usual of the words is that begin like this one.
    [[nodiscard]] int64_t beginnings(const std::string& word);

    struct Spelling {
        std::string word;
        int distance = 0;
        int64_t pages = 0;
    };
    /// The most usual of the words that are nearest to one that is not there; nothing when none is near.
    [[nodiscard]] std::optional<Spelling> nearest(const std::string& word,
                                                  std::chrono::steady_clock::time_point end);

private:
    bool addForms(const std::string& word, const Stemmer& stemmer, Forms& forms);
    bool addWord(const std::string& word, Forms& forms);

    Database& m_database;
    std::vector<Stemmer> m_stemmers;
    std::unordered_map<std::string, Forms> m_forms;
    std::unordered_map<std::string, std::vector<std::string>> m_relatives;
    std::unordered_map<std::string, int64_t> m_beginnings;
    Forms m_unfinished; ///< of the word asked for last, if reading it failed
};
