// SPDX-License-Identifier: MIT
#include "fulltext/searchexpression.h"

namespace {

void append(std::vector<PhraseRole>& roles, const std::vector<PhraseRole>& more, bool isIgnored)
{
    for (auto role : more) {
        role.clause = isIgnored ? -1 : role.clause;
        roles.push_back(role);
    }
}

} // namespace

SearchExpression::Part& SearchExpression::part()
{
    switch (m_kind) {
    case Kind::Alternative:
        return m_alternative;
    case Kind::Optional:
        return m_optional;
    case Kind::Excluded:
        return m_excluded;
    default:
        return m_required;
    }
}

void SearchExpression::beginClause(int number, Kind kind, bool isLiteral)
{
    m_isLiteral = isLiteral;
    m_kind = kind;
    m_clause = kind == Kind::Excluded ? -1 : number;
    auto& text = part().text;
    text.append(text.empty() ? "(" : kind == Kind::Required ? ") AND (" : ") OR (");
    m_isFirst = true;
}

void SearchExpression::add(const std::string& phrase, double weight)
{
    part().text.append(m_isFirst ? "" : " OR ").append(phrase);
    part().roles.push_back({m_clause, weight, m_isLiteral});
    m_isFirst = false;
}

/// The database knows nothing optional: what may be there stands beside what must, once more.
std::string SearchExpression::text() const
{
    std::string text = m_required.text.empty() ? "" : "(" + m_required.text + "))";
    if (!m_alternative.text.empty()) {
        text += (text.empty() ? "((" : " AND ((") + m_alternative.text + "))";
        if (!m_optional.text.empty()) {
            text += " AND (" + m_alternative.text + ") OR " + m_optional.text + ")))";
        } else {
            text += ")";
        }
    }
    return m_excluded.text.empty() ? text : "(" + text + ") NOT (" + m_excluded.text + "))";
}

std::vector<PhraseRole> SearchExpression::roles() const
{
    std::vector<PhraseRole> roles;
    append(roles, m_required.roles, false);
    append(roles, m_alternative.roles, false);
    if (!m_optional.text.empty()) {
        append(roles, m_alternative.roles, true);
        append(roles, m_optional.roles, false);
    }
    append(roles, m_excluded.roles, true);
    return roles;
}

std::string SearchExpression::phrase(std::string_view words)
{
    std::string text = "\"";
    for (const char c : words) {
        text.append(c == '"' ? 2 : 1, c);
    }
    return text + '"';
}

std::string SearchExpression::joined(const std::vector<std::string>& words, char separator)
{
    std::string text;
    for (const auto& word : words) {
        text.append(text.empty() ? 0 : 1, separator).append(word);
    }
    return text;
}
