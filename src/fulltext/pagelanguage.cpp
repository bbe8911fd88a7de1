// SPDX-License-Identifier: MIT
#include "fulltext/pagelanguage.h"

#include "fulltext/stemmer.h"

#include <algorithm>
#include <array>

namespace {

constexpr size_t GuessedWords = 1000;
constexpr size_t LeastShare = 30; // one of so many words is a usual one of the language

/// A language's most usual words, such as no other language has so often; folded.
struct UsualWords {
    std::string_view language;
    std::array<std::string_view, 10> words;
};

constexpr std::array<UsualWords, 9> Languages{{
    {"en", {"the", "of", "to", "and", "is", "for", "that", "this", "with", "are"}},
    {"de", {"der", "die", "das", "und", "ist", "ein", "eine", "nicht", "mit", "sie"}},
    {"fr", {"le", "la", "les", "des", "est", "une", "dans", "pour", "que", "vous"}},
    {"es", {"el", "los", "las", "una", "del", "para", "por", "que", "con", "es"}},
    {"it", {"il", "di", "che", "una", "per", "non", "della", "sono", "gli", "con"}},
    {"pt", {"os", "uma", "para", "nao", "com", "do", "da", "em", "que", "ao"}},
    {"nl", {"het", "een", "van", "en", "niet", "zijn", "voor", "dat", "wordt", "de"}},
    {"sv", {"och", "att", "som", "inte", "ett", "den", "for", "till", "av", "med"}},
    {"ru", {"и", "в", "на", "не", "что", "для", "по", "это", "или", "как"}},
}};

/// By the writing: kana for Japanese, Korean syllables, Thai letters, else Chinese.
std::string denseLanguage(std::string_view word)
{
    const auto starts = [&](std::string_view first, std::string_view last) {
        return word.substr(0, first.size()) >= first && word.substr(0, last.size()) <= last;
    };
    return starts("\xE3\x81", "\xE3\x83\xBF") ? "ja" : starts("\xEA\xB0", "\xED\x9E\xBF") ? "ko" : "";
}

} // namespace

std::string pageLanguage(std::string_view declared, const Words& words)
{
    if (!declared.empty()) {
        return baseLanguage(declared);
    }
    const size_t looked = std::min(words.all().size(), GuessedWords);
    std::array<size_t, Languages.size()> found{};
    size_t dense = 0;
    size_t cyrillic = 0;
    for (size_t i = 0; i < looked; ++i) {
        const auto word = words.folded(words.all()[i]);
        for (size_t language = 0; language < Languages.size(); ++language) {
            const auto& usual = Languages[language].words;
            found[language] += std::find(usual.begin(), usual.end(), word) != usual.end() ? 1 : 0;
        }
        auto byWriting = denseLanguage(word);
        if (byWriting == "ko") {
            return byWriting;
        }
        dense += byWriting.empty() ? 0 : 1;
        cyrillic += word.front() == '\xD0' || word.front() == '\xD1' ? 1 : 0;
    }
    if (dense * 10 > looked) {
        return "ja";
    }
    // Russian lets go of its small words in headings and menus, and has its writing nearly for itself.
    if (cyrillic * 2 > looked) {
        return "ru";
    }
    auto* best = std::max_element(found.begin(), found.end());
    const bool isEnough = *best * LeastShare >= looked && *best > 0;
    const size_t most = *best;
    const auto others = std::count_if(found.begin(), found.end(), [&](size_t n) { return n * 3 > most * 2; });
    return isEnough && others == 1 ? std::string(Languages[size_t(best - found.begin())].language)
                                   : std::string();
}
