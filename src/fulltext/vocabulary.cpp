// SPDX-License-Identifier: MIT
#include "fulltext/vocabulary.h"

#include "fulltext/editdistance.h"

#include <QString>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

constexpr size_t MostForms = 24;
constexpr size_t LeastBeginning = 3;  // bytes; less begins too many words
constexpr int MostBeginnings = 2000;  // words that are looked at
constexpr qsizetype LeastRelated = 4; // characters of a stem that says where a word comes from
constexpr qsizetype MostEnding = 4;   // characters that one stem has more than the other

/// The first text that does not begin with this one.
std::string behind(const std::string& text)
{
    return text + "\xFF";
}

/// Without its last character.
std::string shortened(std::string text)
{
    while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0U) == 0x80) {
        text.pop_back();
    }
    if (!text.empty()) {
        text.pop_back();
    }
    return text;
}

size_t firstCharacter(const std::string& text)
{
    size_t end = 1;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) {
        ++end;
    }
    return end;
}

} // namespace

void Vocabulary::renew(const std::vector<std::string>& languages)
{
    m_forms.clear();
    m_relatives.clear();
    m_beginnings.clear();
    m_stemmers.clear();
    for (const auto& language : languages) {
        if (Stemmer stemmer(language); stemmer.hasForms()) {
            m_stemmers.push_back(std::move(stemmer));
        }
    }
}

/// Both give false when the database could not be read to the end.
bool Vocabulary::addWord(const std::string& word, Forms& forms)
{
    auto row = m_database.prepare("SELECT doc FROM vocabulary WHERE term = ?");
    row.bind(1, word);
    if (row.step()) {
        forms.words.push_back(word);
        forms.pages = row.number(0);
    }
    return row.ok();
}

/// The forms of a word begin alike, but for an "i" that stands for "y" and the like.
bool Vocabulary::addForms(const std::string& word, const Stemmer& stemmer, Forms& forms)
{
    const std::string stem(stemmer.stem(word));
    const std::string least = word.substr(0, std::max<size_t>(firstCharacter(word), 2));
    const std::string begin =
        std::max(shortened(stem), least, [](const auto& a, const auto& b) { return a.size() < b.size(); });
    auto rows = m_database.prepare("SELECT term, doc FROM vocabulary WHERE term >= ? AND term < ?");
    const std::string end = behind(begin);
    rows.bind(1, begin).bind(2, end);
    while (rows.step()) {
        const auto term = rows.text(0);
        const bool isForm = stemmer.stem(term) == stem && forms.words.size() < MostForms;
        if (isForm && std::find(forms.words.begin(), forms.words.end(), term) == forms.words.end()) {
            forms.words.emplace_back(term);
            forms.pages = std::max(forms.pages, rows.number(1));
        }
    }
    return rows.ok();
}

const Vocabulary::Forms& Vocabulary::forms(const std::string& word)
{
    const auto known = m_forms.find(word);
    if (known != m_forms.end()) {
        return known->second;
    }
    Forms forms;
    bool isRead = addWord(word, forms);
    for (const auto& stemmer : m_stemmers) {
        isRead = isRead && (!stemmer.isInflected(word) || addForms(word, stemmer, forms));
    }
    if (!isRead) {
        // Not to be remembered; what there is will do for a search that has been given up.
        m_unfinished = std::move(forms);
        return m_unfinished;
    }
    return m_forms.emplace(word, std::move(forms)).first->second;
}

const std::vector<std::string>& Vocabulary::relatives(const std::string& word)
{
    const auto known = m_relatives.find(word);
    if (known != m_relatives.end()) {
        return known->second;
    }
    auto& related = m_relatives[word];
    for (const auto& stemmer : m_stemmers) {
        const auto stem = QString::fromStdString(std::string(stemmer.stem(word)));
        if (stem.size() < LeastRelated) {
            continue;
        }
        const auto begin = stem.first(std::max(LeastRelated, stem.size() - MostEnding)).toStdString();
        const auto end = behind(begin);
        auto rows = m_database.prepare("SELECT term FROM vocabulary WHERE term >= ? AND term < ?");
        rows.bind(1, begin).bind(2, end);
        for (int i = 0; i < MostBeginnings && related.size() < MostForms && rows.step(); ++i) {
            const auto other = QString::fromStdString(std::string(stemmer.stem(rows.text(0))));
            const auto more = std::abs(other.size() - stem.size());
            const bool isRelated = other.size() >= LeastRelated && more > 0 && more <= MostEnding &&
                                   (other.startsWith(stem) || stem.startsWith(other));
            if (isRelated && std::find(related.begin(), related.end(), rows.text(0)) == related.end()) {
                related.emplace_back(rows.text(0));
            }
        }
    }
    return related;
}

bool Vocabulary::has(const std::string& word)
{
    const auto& words = forms(word).words;
    return std::find(words.begin(), words.end(), word) != words.end();
}

int64_t Vocabulary::beginnings(const std::string& word)
{
    if (word.size() < LeastBeginning) {
        return 0;
    }
    const auto known = m_beginnings.find(word);
    if (known != m_beginnings.end()) {
        return known->second;
    }
    auto rows = m_database.prepare("SELECT doc FROM vocabulary WHERE term >= ? AND term < ?");
    const std::string end = behind(word);
    rows.bind(1, word).bind(2, end);
    int64_t most = 0;
    for (int i = 0; i < MostBeginnings && rows.step(); ++i) {
        most = std::max(most, rows.number(0));
    }
    if (rows.ok()) {
        m_beginnings.emplace(word, most);
    }
    return most;
}

std::optional<Vocabulary::Spelling> Vocabulary::nearest(const std::string& word,
                                                        std::chrono::steady_clock::time_point end)
{
    const int mostEdits = word.size() < 3 ? 0 : word.size() < 6 ? 1 : 2;
    std::optional<Spelling> best;
    // Few mistype the first letter, or it changed places with the second one.
    for (const size_t first : {size_t(0), size_t(1)}) {
        if (mostEdits == 0 || (first == 1 && word[1] == word[0])) {
            break;
        }
        const std::string begin(1, word[first]);
        const std::string rangeEnd = behind(begin);
        auto rows = m_database.prepare("SELECT term, doc FROM vocabulary WHERE term >= ? AND term < ?");
        rows.bind(1, begin).bind(2, rangeEnd);
        while (std::chrono::steady_clock::now() < end && rows.step()) {
            const auto term = rows.text(0);
            const int distance = editDistance(word, term, mostEdits);
            if (distance > 0 && distance <= mostEdits &&
                (!best || distance < best->distance ||
                 (distance == best->distance && rows.number(1) > best->pages))) {
                best = Spelling{std::string(term), distance, rows.number(1)};
            }
        }
    }
    return best;
}
