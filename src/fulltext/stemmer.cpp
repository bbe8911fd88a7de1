// SPDX-License-Identifier: MIT
#include "fulltext/stemmer.h"

#include <algorithm>
#include <array>

#include <libstemmer.h>

namespace {

constexpr size_t LongestStemmed = 64; // bytes
constexpr std::array<std::string_view, 9> OtherWritings{"ar", "el", "hi", "hy", "ne", "ru", "sr", "ta", "yi"};

bool isLatinLetter(char c)
{
    return c >= 'a' && c <= 'z';
}

bool isLaterByte(char c)
{
    return static_cast<unsigned char>(c) >= 0x80;
}

} // namespace

std::string baseLanguage(std::string_view language)
{
    std::string base(language.substr(0, language.find_first_of("-_.@")));
    std::transform(base.begin(), base.end(), base.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return base;
}

Stemmer::Stemmer(std::string_view language)
    : m_stemmer(language.empty() ? nullptr : sb_stemmer_new(baseLanguage(language).c_str(), nullptr))
{
    const auto base = baseLanguage(language);
    m_isLatin = std::find(OtherWritings.begin(), OtherWritings.end(), base) == OtherWritings.end();
}

void Stemmer::Free::operator()(sb_stemmer* stemmer) const
{
    sb_stemmer_delete(stemmer);
}

std::string_view Stemmer::stem(std::string_view word) const
{
    const bool isPlain = word.size() > 2 && word.size() < LongestStemmed &&
                         std::all_of(word.begin(), word.end(), m_isLatin ? isLatinLetter : isLaterByte);
    const auto* stem = isPlain && m_stemmer != nullptr
                           ? sb_stemmer_stem(m_stemmer.get(), reinterpret_cast<const sb_symbol*>(word.data()),
                                             int(word.size()))
                           : nullptr;
    return stem == nullptr ? word
                           : std::string_view(reinterpret_cast<const char*>(stem),
                                              size_t(sb_stemmer_length(m_stemmer.get())));
}

bool Stemmer::isInflected(const std::string& word) const
{
    if (!hasForms() || word.size() <= 2) {
        return false;
    }
    const std::string own(stem(word));
    return own != word || !m_isLatin || stem(word + "s") == own || stem(word + "e") == own ||
           stem(word + "en") == own;
}
