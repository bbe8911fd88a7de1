// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/ranking.h"

#include <string>
#include <string_view>
#include <vector>

/// Puts clauses together as the database wants them: those that must be there, those that may, and those that
/// must not.
class SearchExpression {
public:
    enum class Kind {
        Required,    ///< on each page
        Alternative, ///< one of these on each page
        Optional,
        Excluded,
    };
    void beginClause(int number, Kind kind, bool isLiteral);
    void add(const std::string& phrase, double weight);
    [[nodiscard]] bool isEmpty() const { return m_required.text.empty() && m_alternative.text.empty(); }
    [[nodiscard]] std::string text() const;
    /// Of the phrases in the text, in order.
    [[nodiscard]] std::vector<PhraseRole> roles() const;

    /// Words behind each other, quoted, so that nothing in a query is taken for syntax.
    [[nodiscard]] static std::string phrase(std::string_view words);
    [[nodiscard]] static std::string joined(const std::vector<std::string>& words, char separator);

private:
    struct Part {
        std::string text;
        std::vector<PhraseRole> roles;
    };
    [[nodiscard]] Part& part();

    Part m_required;
    Part m_alternative;
    Part m_optional;
    Part m_excluded;
    Kind m_kind = Kind::Required;
    int m_clause = 0;
    bool m_isLiteral = false;
    bool m_isFirst = true;
};
