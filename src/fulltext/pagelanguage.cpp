// SPDX-License-Identifier: MIT
#include "fulltext/pagelanguage.h"

#include "fulltext/stemmer.h"

#include <QLocale>

#include <algorithm>
#include <array>

namespace {

constexpr size_t GuessedWords = 1000;
constexpr int MostDirectories = 4; // above a page, that may be called after its language
constexpr size_t LeastShare = 30;  // one of so many words is a usual one of the language

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

/// "de-DE", "pt_BR"; without a region only languages of many pages, as "is" and "to" are names, too.
bool isLanguageTag(std::string_view name)
{
    const auto isLetter = [](char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; };
    const bool isShaped = (name.size() == 2 || (name.size() == 5 && (name[2] == '-' || name[2] == '_') &&
                                                isLetter(name[3]) && isLetter(name[4]))) &&
                          isLetter(name[0]) && isLetter(name[1]);
    if (!isShaped) {
        return false;
    }
    const auto base = baseLanguage(name);
    const bool isUsual = base == "ja" || base == "ko" || base == "zh" ||
                         std::any_of(Languages.begin(), Languages.end(),
                                     [&](const UsualWords& known) { return known.language == base; });
    return isUsual || (name.size() == 5 &&
                       QLocale::codeToLanguage(QString::fromStdString(base)) != QLocale::AnyLanguage);
}

/// Of "ch01.ja.html", else of "ja-JP/ch01.html" and what is below.
std::string languageOfPath(std::string_view path)
{
    const size_t slash = path.rfind('/');
    const auto file = path.substr(slash == std::string_view::npos ? 0 : slash + 1);
    const size_t last = file.rfind('.');
    const size_t before = last == std::string_view::npos || last == 0 ? last : file.rfind('.', last - 1);
    if (before != std::string_view::npos && isLanguageTag(file.substr(before + 1, last - before - 1))) {
        return baseLanguage(file.substr(before + 1, last - before - 1));
    }
    size_t end = slash;
    for (int depth = 0; depth < MostDirectories && end != std::string_view::npos && end > 0; ++depth) {
        const size_t begin = path.rfind('/', end - 1);
        const auto directory = path.substr(begin == std::string_view::npos ? 0 : begin + 1,
                                           end - (begin == std::string_view::npos ? 0 : begin + 1));
        if (isLanguageTag(directory)) {
            return baseLanguage(directory);
        }
        end = begin;
    }
    return {};
}

} // namespace

std::string pageLanguage(std::string_view declared, std::string_view path, const Words& words)
{
    if (!declared.empty()) {
        return baseLanguage(declared);
    }
    if (auto named = languageOfPath(path); !named.empty()) {
        return named;
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
