// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

/// A word as it is indexed and looked for: without letter case and accents.
struct Word {
    uint32_t begin; ///< in the text, bytes
    uint32_t end;
    uint32_t position;    ///< parts of a name follow each other; its first part stands where the name stands
    uint32_t foldedBegin; ///< see Words::folded()
    uint16_t foldedSize;
    bool isPart;      ///< of a name that is a word itself
    bool isBeginning; ///< the last character of a run without blanks, such as Chinese; stands for itself
    bool isLiteral;   ///< signs, or a name with its signs, beside the name itself: "->>", "%s", "println!"
};

/// Cuts text into words. Names of programs are found whole and by their parts ("setEncoding", "std::vector",
/// "os.path"), with the signs that belong to them ("C++", "operator=", "--install"), and once more with signs
/// that only sometimes do ("%s", "@property"); signs that stand apart are words ("->>"); languages written
/// without blanks become pairs of characters. Keeps its memory from text to text.
class Words {
public:
    /// Forgets the words of the text before. `text` is UTF-8 of at most 2 GiB and must outlive what is read.
    /// When a stop is asked for, the rest is left out.
    void read(std::string_view text, const std::stop_token& stop = {});

    [[nodiscard]] const std::vector<Word>& all() const { return m_words; }
    [[nodiscard]] std::string_view folded(const Word& word) const
    {
        return std::string_view(m_folded).substr(word.foldedBegin, word.foldedSize);
    }
    /// Number of positions.
    [[nodiscard]] uint32_t positions() const { return m_position; }

private:
    struct Character {
        char32_t code;
        uint32_t end; ///< bytes, where the next one begins
    };
    [[nodiscard]] Character characterAt(size_t at) const;
    [[nodiscard]] size_t endOfName(size_t begin) const;
    [[nodiscard]] size_t endOfSigns(size_t begin, size_t end) const;
    [[nodiscard]] size_t optionDashes(size_t begin) const;
    [[nodiscard]] size_t endOfDense(size_t begin) const;
    size_t readSigns(size_t begin);
    size_t readSigned(size_t begin, size_t nameBegin);
    void addTrailingSigns(size_t begin, size_t end);
    void addLiteral(size_t begin, size_t end);
    size_t readPlain(size_t begin);
    size_t readName(size_t begin, size_t nameBegin);
    size_t readPairs(size_t begin);
    void addSegments(size_t begin, size_t end, bool isAdded);
    void addParts(size_t begin, size_t end);
    void add(size_t begin, size_t end, bool isPart, bool isNext);
    void fold(size_t begin, size_t end);

    std::string_view m_text;
    std::string m_folded;
    std::vector<Word> m_words;
    uint32_t m_position = 0;
};
