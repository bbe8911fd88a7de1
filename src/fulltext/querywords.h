// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <string>
#include <vector>

/// The words of a piece of a query, folded.
class QueryWords {
public:
    explicit QueryWords(const QString& text);

    /// Those that are no parts of others, in order.
    [[nodiscard]] const std::vector<std::string>& whole() const { return m_whole; }
    /// What stands between the signs of a name: "os", "path", "join".
    [[nodiscard]] const std::vector<std::string>& segments() const { return m_segments; }
    /// Signs, and names with their signs.
    [[nodiscard]] const std::vector<std::string>& literals() const { return m_literals; }
    /// A lone character of a writing without blanks stands for all pairs that begin with it.
    [[nodiscard]] bool isLoneCharacter() const { return m_isLoneCharacter; }
    [[nodiscard]] std::string firstWord() const { return m_whole.empty() ? std::string() : m_whole.front(); }

private:
    std::vector<std::string> m_whole;
    std::vector<std::string> m_segments;
    std::vector<std::string> m_literals;
    bool m_isLoneCharacter = false;
};
