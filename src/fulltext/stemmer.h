// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

struct sb_stemmer;

/// Finds what the forms of an English word have in common: "manager", "managing" and "managed" become
/// "manag". Not for several threads at once.
class Stemmer {
public:
    Stemmer();
    /// Of a folded word; names, numbers and words of other writings stay as they are. Valid until the next
    /// call.
    [[nodiscard]] std::string_view stem(std::string_view word);

private:
    struct Free {
        void operator()(sb_stemmer* stemmer) const;
    };
    std::unique_ptr<sb_stemmer, Free> m_stemmer;
};
