// SPDX-License-Identifier: MIT
#include "fulltext/namematches.h"

#include "fulltext/entryname.h"

#include <numeric>

namespace {

constexpr double BonusOfName = 8;
constexpr double BonusOfWord = 4; // times its weight, as if it stood in a short title
constexpr double Certain = 0.55;
constexpr double PartOfQuery = 0.3;      // where only the last part of a qualified name is the same
constexpr double LettersOfLiteral = 0.4; // where the signs are not the same
constexpr size_t MostMatches = 500;
constexpr int MostSplits = 4;

bool isLive(int64_t page, const AllFacts& facts)
{
    return page >= 0 && size_t(page) < facts.pages.size() && facts.pages[size_t(page)].isLive;
}

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
    case IndexFile::FileName:
        return 0.3;
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
        for (const auto& owner : name.owners) {
            add(owner + name.last, 1, database, facts);
            addMembers(owner, name.last, database, facts);
        }
        add(name.last, PartOfQuery, database, facts);
    }
    addSplit(query.name(), database, facts);
}

/// "HashMap computeIfAbsent": each blank may stand between a page's name and that of a place in it.
void NameMatches::addSplit(const QString& text, Database& database, const AllFacts& facts)
{
    int splits = 0;
    for (qsizetype at = text.indexOf(u' '); at >= 0 && splits < MostSplits; at = text.indexOf(u' ', at + 1)) {
        const auto owner = squeezed(QStringView(text).first(at));
        const auto last = squeezed(QStringView(text).sliced(at));
        if (!owner.empty() && !last.empty()) {
            addMembers(owner, last, database, facts);
        }
        ++splits;
    }
}

void NameMatches::add(const std::string& name, double strength, Database& database, const AllFacts& facts)
{
    auto rows = database.prepare("SELECT page, anchor, kind FROM names WHERE key = ? LIMIT 2000");
    rows.bind(1, IndexFile::keyOf(name));
    while (rows.step()) {
        const auto page = rows.number(0);
        if (isLive(page, facts)) {
            const double found = strength * strengthOf(rows.number(2), facts.pages[size_t(page)]);
            // Pages that are called like a sign's letters, as "#[derive]", need not have the sign.
            const bool isTitle = strength == LettersOfLiteral && rows.number(2) <= IndexFile::TitlePart;
            add(uint32_t(page), {found, std::string(rows.text(1)), found >= Certain || isTitle});
        }
    }
}

/// Places in pages that are called like the owner, or whose anchors say what they belong to.
void NameMatches::addMembers(const std::string& owner, const std::string& name, Database& database,
                             const AllFacts& facts)
{
    auto rows = database.prepare(
        "SELECT page, anchor, page IN (SELECT page FROM names WHERE key = ?2 AND kind <= ?5) AS owned "
        "FROM names WHERE key = ?1 AND kind BETWEEN ?3 AND ?4 ORDER BY owned DESC LIMIT 2000");
    rows.bind(1, IndexFile::keyOf(name)).bind(2, IndexFile::keyOf(owner));
    rows.bind(3, int64_t(IndexFile::KeywordName)).bind(4, int64_t(IndexFile::KeywordPart));
    rows.bind(5, int64_t(IndexFile::TitlePart));
    const auto member = owner + name;
    while (rows.step()) {
        const auto page = rows.number(0);
        if (isLive(page, facts) && (rows.number(2) != 0 || saysOwner(rows.text(1), member))) {
            const double found = strengthOf(IndexFile::KeywordMember, facts.pages[size_t(page)]);
            add(uint32_t(page), {found, std::string(rows.text(1)), true});
        }
    }
}

void NameMatches::add(uint32_t page, const Match& found)
{
    if (m_matches.size() >= MostMatches && !m_matches.contains(page)) {
        return;
    }
    auto& match = m_matches[page];
    if (found.strength > match.strength) {
        match = found;
    }
}

double NameMatches::raised(double score, const Match& match) const
{
    return score * (1 + match.strength) + (BonusOfName + BonusOfWord * m_allWeight) * match.strength;
}

const NameMatches::Match* NameMatches::find(uint32_t page) const
{
    const auto found = m_matches.find(page);
    return found == m_matches.end() ? nullptr : &found->second;
}
