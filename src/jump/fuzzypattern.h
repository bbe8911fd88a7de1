// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

/// What somebody types of a name: its letters in order, but not all of them; several words in any order.
/// Letter case and accents do not matter, beyond deciding between names that match alike.
class FuzzyPattern {
public:
    enum class Kind { Letters, Beginning, Whole };
    /// How well a text matches; the greater, the better. First its kind counts, then where the letters stand:
    /// at beginnings of words, at humps, behind signs, in unbroken runs.
    struct Rank {
        Kind kind = Kind::Letters;
        int score = 0;

        bool operator==(const Rank&) const = default;
        bool operator<(const Rank& other) const
        {
            return kind != other.kind ? kind < other.kind : score < other.score;
        }
    };

    FuzzyPattern() = default;
    explicit FuzzyPattern(const QString& query);

    [[nodiscard]] bool isEmpty() const { return m_words.empty(); }
    /// Whether the text has the letters of all words. Much faster than rank().
    [[nodiscard]] bool matches(QStringView text) const;
    [[nodiscard]] Kind kindOf(QStringView text) const;
    /// None when it does not match.
    [[nodiscard]] std::optional<Rank> rank(QStringView text) const;
    /// Where the letters stand that rank() counts, in order.
    [[nodiscard]] std::vector<int> letters(QStringView text) const;
    /// Whether everything that this matches is matched by the other one, too.
    [[nodiscard]] bool narrows(const FuzzyPattern& other) const;

private:
    struct Word {
        QString folded;
        QString typed;
    };

    QString m_folded; ///< the words with one blank between them
    std::vector<Word> m_words;
    bool m_hasUpperCase = false;
};
