// SPDX-License-Identifier: MIT
#include "jump/fuzzypattern.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <limits>
#include <span>

namespace {

constexpr qsizetype LongestWord = 64;  // letters that are looked at
constexpr qsizetype LongestText = 256; // characters of a text that are looked at
constexpr int AtStart = 12;            // what a letter counts there
constexpr int AtWord = 9;
constexpr int AtHump = 8;
constexpr int InRun = 7; // behind the letter before it
constexpr int SameCase = 1;
constexpr int GapStart = 3; // what letters left out cost
constexpr int GapLetter = 1;
constexpr int LongestLead = 6; // letters left out at the beginning that cost something
constexpr int Never = std::numeric_limits<int>::min() / 2;

constexpr char16_t FirstUnfolded = 0x2000; // letters behind it have neither case nor accents, but for a few

std::array<char16_t, FirstUnfolded> makeFolded()
{
    std::array<char16_t, FirstUnfolded> folded{};
    for (char16_t c = 0; c < FirstUnfolded; ++c) {
        const QChar letter(c);
        const QString parts = letter.isLetter() ? letter.decomposition() : QString();
        const bool isAccented = parts.size() > 1 && parts.at(0).isLetter() && parts.at(1).isMark();
        folded[c] = (isAccented ? parts.at(0) : letter).toCaseFolded().unicode();
    }
    return folded;
}

char16_t fold(QChar c)
{
    static const auto folded = makeFolded();
    const char16_t code = c.unicode();
    return code < FirstUnfolded ? folded[code] : QChar::toCaseFolded(char32_t(code)) & 0xFFFF;
}

QString fold(QStringView text)
{
    QString folded(text.size(), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), folded.begin(), [](QChar c) { return QChar(fold(c)); });
    return folded;
}

/// What a letter counts for its place in the text, whatever stands before it in the pattern.
int placeValue(QStringView text, qsizetype i)
{
    if (i == 0) {
        return AtStart;
    }
    const QChar before = text.at(i - 1);
    const QChar here = text.at(i);
    if (!before.isLetterOrNumber()) {
        return AtWord;
    }
    const bool isHump = here.isUpper() && !before.isUpper();
    const bool isLastCapital = here.isUpper() && i + 1 < text.size() && text.at(i + 1).isLower();
    return isHump || isLastCapital || here.isDigit() != before.isDigit() ? AtHump : 0;
}

bool hasLetters(QStringView text, const QString& folded)
{
    qsizetype next = 0;
    for (const QChar c : text) {
        if (fold(c) == folded.at(next).unicode() && ++next == folded.size()) {
            return true;
        }
    }
    return false;
}

/// The best way to find a word's letters in a text.
class Alignment {
public:
    Alignment(QStringView text, const QString& folded)
        : m_text(text.first(std::min(text.size(), LongestText))), m_size(size_t(m_text.size())),
          m_letters(size_t(folded.size())), m_best(m_letters * m_size, Never)
    {
        for (size_t i = 0; i < m_letters; ++i) {
            addLetter(i, folded.at(qsizetype(i)));
        }
    }

    /// None when the letters are not there.
    [[nodiscard]] std::optional<int> score() const
    {
        const auto last = row(m_letters - 1);
        const int best = last.empty() ? Never : *std::max_element(last.begin(), last.end());
        return best < Never / 2 ? std::nullopt : std::optional(best);
    }

    [[nodiscard]] std::vector<int> places() const
    {
        std::vector<int> places(m_letters);
        size_t end = m_size;
        bool isRun = false;
        for (size_t i = m_letters; i-- > 0;) {
            const size_t place = isRun ? end - 1 : bestPlace(i, end);
            places[i] = int(place);
            isRun = i > 0 && place > 0 && row(i)[place] == row(i - 1)[place - 1] + runValue(place);
            end = place;
        }
        return places;
    }

private:
    [[nodiscard]] std::span<const int> row(size_t letter) const
    {
        return std::span(m_best).subspan(letter * m_size, m_size);
    }
    /// Of a letter behind which there is a gap up to `end`, or no further letter.
    [[nodiscard]] size_t bestPlace(size_t letter, size_t end) const
    {
        const bool isLast = letter + 1 == m_letters;
        const auto values = row(letter);
        size_t place = 0;
        int best = Never;
        for (size_t j = 0; j + (isLast ? 0 : 1) < end; ++j) {
            const int value = values[j] - (isLast ? 0 : gap(end - j));
            if (value > best) {
                best = value;
                place = j;
            }
        }
        return place;
    }
    /// What it costs that the letter before stands this far before one.
    [[nodiscard]] static int gap(size_t distance) { return GapStart + GapLetter * int(distance); }
    [[nodiscard]] int runValue(size_t place) const
    {
        return std::max(InRun, placeValue(m_text, qsizetype(place)));
    }

    void addLetter(size_t letter, QChar folded)
    {
        int before = Never; // the best for the letters before this one, less the gap up to here
        for (size_t j = 0; j < m_size; ++j) {
            if (letter > 0 && j > 1) {
                before = std::max(before - GapLetter, row(letter - 1)[j - 2] - gap(2));
            }
            if (fold(m_text.at(qsizetype(j))) != folded.unicode()) {
                continue;
            }
            const int own = placeValue(m_text, qsizetype(j));
            int best = letter == 0 ? own - GapLetter * std::min(int(j), LongestLead) : before + own;
            if (letter > 0 && j > 0) {
                best = std::max(best, row(letter - 1)[j - 1] + runValue(j));
            }
            m_best[letter * m_size + j] = best;
        }
    }

    QStringView m_text;
    size_t m_size;
    size_t m_letters;
    std::vector<int> m_best; ///< for each letter and each place of it
};

} // namespace

FuzzyPattern::FuzzyPattern(const QString& query)
{
    const QString typed = query.simplified();
    m_folded = fold(typed);
    m_hasUpperCase = std::any_of(typed.begin(), typed.end(), [](QChar c) { return c.isUpper(); });
    for (const auto& word : typed.split(u' ', Qt::SkipEmptyParts)) {
        m_words.push_back({fold(word.first(std::min(word.size(), LongestWord))), word});
    }
}

bool FuzzyPattern::matches(QStringView text) const
{
    return std::all_of(m_words.begin(), m_words.end(),
                       [text](const Word& word) { return hasLetters(text, word.folded); });
}

FuzzyPattern::Kind FuzzyPattern::kindOf(QStringView text) const
{
    if (text.size() < m_folded.size() ||
        !std::equal(m_folded.begin(), m_folded.end(), text.begin(),
                    [](QChar a, QChar b) { return a.unicode() == fold(b); })) {
        return Kind::Letters;
    }
    return text.size() == m_folded.size() ? Kind::Whole : Kind::Beginning;
}

std::optional<FuzzyPattern::Rank> FuzzyPattern::rank(QStringView text) const
{
    Rank rank{kindOf(text), 0};
    for (const auto& word : m_words) {
        const Alignment alignment(text, word.folded);
        const auto score = alignment.score();
        if (!score) {
            return std::nullopt;
        }
        rank.score += *score;
        if (m_hasUpperCase || rank.kind == Kind::Whole) {
            const auto places = alignment.places();
            for (size_t i = 0; i < places.size(); ++i) {
                rank.score += text.at(places[i]) == word.typed.at(qsizetype(i)) ? SameCase : 0;
            }
        }
    }
    return rank;
}

std::vector<int> FuzzyPattern::letters(QStringView text) const
{
    std::vector<int> letters;
    for (const auto& word : m_words) {
        const Alignment alignment(text, word.folded);
        if (alignment.score()) {
            const auto places = alignment.places();
            letters.insert(letters.end(), places.begin(), places.end());
        }
    }
    std::sort(letters.begin(), letters.end());
    letters.erase(std::unique(letters.begin(), letters.end()), letters.end());
    return letters;
}

bool FuzzyPattern::narrows(const FuzzyPattern& other) const
{
    return m_words.size() >= other.m_words.size() &&
           std::equal(
               other.m_words.begin(), other.m_words.end(), m_words.begin(),
               [](const Word& before, const Word& now) { return hasLetters(now.folded, before.folded); });
}
