// SPDX-License-Identifier: MIT
#include "fulltext/stemmer.h"

#include <algorithm>

#include <libstemmer.h>

Stemmer::Stemmer() : m_stemmer(sb_stemmer_new("english", nullptr))
{
}

void Stemmer::Free::operator()(sb_stemmer* stemmer) const
{
    sb_stemmer_delete(stemmer);
}

std::string_view Stemmer::stem(std::string_view word)
{
    const bool isPlain =
        word.size() > 2 && std::all_of(word.begin(), word.end(), [](char c) { return c >= 'a' && c <= 'z'; });
    const auto* stem = isPlain && m_stemmer != nullptr
                           ? sb_stemmer_stem(m_stemmer.get(), reinterpret_cast<const sb_symbol*>(word.data()),
                                             int(word.size()))
                           : nullptr;
    return stem == nullptr ? word
                           : std::string_view(reinterpret_cast<const char*>(stem),
                                              size_t(sb_stemmer_length(m_stemmer.get())));
}
