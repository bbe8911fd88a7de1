// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sb_stemmer;

/// Finds what the forms of a word have in common in one language: "manager", "managing" and "managed" become
/// "manag". Not for several threads at once.
class Stemmer {
public:
    /// The language as pages declare it, such as "de" or "de-AT"; one without a stemmer leaves words as they
    /// are.
    explicit Stemmer(std::string_view language);
    /// Of a folded word; names and numbers stay as they are. Valid until the next call.
    [[nodiscard]] std::string_view stem(std::string_view word) const;
    /// Whether the language has forms that are known.
    [[nodiscard]] bool hasForms() const { return m_stemmer != nullptr; }
    /// Whether the word may have other forms.
    [[nodiscard]] bool isInflected(const std::string& word) const;

private:
    struct Free {
        void operator()(sb_stemmer* stemmer) const;
    };
    std::unique_ptr<sb_stemmer, Free> m_stemmer;
    bool m_isLatin = false; ///< the language is written in Latin letters
};

/// The language without its country: "pt" of "pt-BR", in lower case.
[[nodiscard]] std::string baseLanguage(std::string_view language);
