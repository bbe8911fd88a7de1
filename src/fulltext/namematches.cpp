// SPDX-License-Identifier: MIT
#include "fulltext/namematches.h"

#include "fulltext/entryname.h"

#include <numeric>

namespace {

constexpr double BonusOfName = 8;
constexpr double BonusOfWord = 4; // times its weight, as if it stood in a short title
constexpr double Certain = 0.55;
constexpr double PartOfQuery = 0.3;       // where only the last part of a qualified name is the same
constexpr double LettersOfLiteral = 0.25; // where the signs are not the same
constexpr size_t MostMatches = 500;

double strengthOf(int64_t kind, const PageFacts& page)
{
    // "mutex" is rather "std::mutex" than "std::mutex::mutex".
    const double brevity = 1.0 / (1 + 0.08 * page.titleWords);
    switch (kind) {
    case IndexFile::TitleName:
        return 0.85 + 0.15 * brevity;
    case IndexFile::TitlePart:
        return 0.6 + 0.3 * brevity;
    case IndexFile::KeywordLiteral:
        return 0.8;
    case IndexFile::KeywordMember:
        return 0.7;
    case IndexFile::KeywordPart:
        return 0.35;
    case IndexFile::Initials:
        return 0.65;
    default:
        return 0.5 + 0.1 * brevity;
    }
}

} // namespace

NameMatches::NameMatches(Database& database, const SearchQuery& query, const std::vector<double>& weights,
                         const AllFacts& facts)
{
    const EntryName name = readEntryName(query.name());
    if (name.whole.empty() && name.literal.empty()) {
        return;
    }
    m_allWeight = std::accumulate(weights.begin(), weights.end(), 0.0);
    if (!name.literal.empty()) {
        add(name.literal, 1, database, facts);
    }
    if (query.isLiteral()) {
        add(name.last, LettersOfLiteral, database, facts);
        return;
    }
    add(name.whole, 1, database, facts);
    if (name.head != name.whole) {
        add(name.head, 0.9, database, facts);
    }
    if (name.parts > 1) {
        for (const auto& member : name.members) {
            add(member, 1, database, facts);
        }
        add(name.last, PartOfQuery, database, facts);
    }
}

void NameMatches::add(const std::string& name, double strength, Database& database, const AllFacts& facts)
{
    auto rows = database.prepare("SELECT page, anchor, kind FROM names WHERE key = ? LIMIT 2000");
    rows.bind(1, IndexFile::keyOf(name));
    while (rows.step() && m_matches.size() < MostMatches) {
        const auto page = size_t(rows.number(0));
        if (page >= facts.pages.size() || !facts.pages[page].isLive) {
            continue;
        }
        const double found = strength * strengthOf(rows.number(2), facts.pages[page]);
        auto& match = m_matches[uint32_t(page)];
        if (found > match.strength) {
            match = {found, std::string(rows.text(1))};
        }
    }
}

double NameMatches::raised(double score, const Match& match) const
{
    return score * (1 + match.strength) + (BonusOfName + BonusOfWord * m_allWeight) * match.strength;
}

bool NameMatches::Match::isCertain() const
{
    return strength >= Certain;
}

const NameMatches::Match* NameMatches::find(uint32_t page) const
{
    const auto found = m_matches.find(page);
    return found == m_matches.end() ? nullptr : &found->second;
}
