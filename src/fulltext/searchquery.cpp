// SPDX-License-Identifier: MIT
#include "fulltext/searchquery.h"

#include "fulltext/words.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype LongestQuery = 4096; // UTF-16 code units
constexpr size_t MostClauses = 32;

/// The words of a text that are no parts of others, in pieces of those that follow each other.
std::vector<std::string> wholeWords(const QString& text)
{
    const std::string utf8 = text.toStdString();
    Words words;
    words.read(utf8);
    std::vector<std::string> whole;
    for (const auto& word : words.all()) {
        const bool isEndOfPairs =
            word.isBeginning && &word != &words.all().front() && (&word)[-1].end == word.end;
        if (!word.isPart && !isEndOfPairs) {
            whole.emplace_back(words.folded(word));
        }
    }
    return whole;
}

/// A lone character of a writing without blanks stands for all pairs that begin with it.
bool isLoneCharacter(const QString& text)
{
    const std::string utf8 = text.toStdString();
    Words words;
    words.read(utf8);
    return words.all().size() == 1 && words.all().front().isBeginning;
}

class Parser {
public:
    Parser(const QString& text, bool isTyping) : m_text(text.left(LongestQuery)), m_isTyping(isTyping) {}

    SearchQuery parse()
    {
        while (m_at < m_text.size() && m_query.clauses.size() < MostClauses) {
            if (m_text[m_at].isSpace()) {
                ++m_at;
            } else {
                readPiece();
            }
        }
        const bool excludesOnly = !m_query.clauses.empty() &&
                                  std::all_of(m_query.clauses.begin(), m_query.clauses.end(),
                                              [](const QueryClause& clause) { return clause.isExcluded; });
        if (excludesOnly) {
            takeLiterally();
        }
        return std::move(m_query);
    }

private:
    void readPiece()
    {
        const qsizetype begin = m_at;
        const bool isOr = m_text[m_at] == u'|' || isWordOr();
        if (isOr) {
            m_at += m_text[m_at] == u'|' ? 1 : 2;
            m_isOrPending = !m_query.clauses.empty();
            return;
        }
        const bool isExcluded = m_text[m_at] == u'-' && m_at + 1 < m_text.size() &&
                                m_text[m_at + 1] != u'-' && !m_text[m_at + 1].isSpace();
        m_at += isExcluded ? 1 : 0;
        QueryTerm term = m_text[m_at] == u'"' ? readPhrase() : readWord();
        if (!term.words.empty()) {
            add(std::move(term), isExcluded, m_text.sliced(begin, m_at - begin));
        }
    }

    [[nodiscard]] bool isWordOr() const
    {
        const auto rest = QStringView(m_text).sliced(m_at);
        return rest.startsWith(u"OR") && (rest.size() == 2 || rest[2].isSpace());
    }

    QueryTerm readPhrase()
    {
        const qsizetype end = m_text.indexOf(u'"', m_at + 1);
        const QString inner = m_text.sliced(m_at + 1, (end < 0 ? m_text.size() : end) - m_at - 1);
        m_at = end < 0 ? m_text.size() : end + 1;
        const bool isOpen = end < 0 && m_isTyping && !inner.isEmpty() && !inner.back().isSpace();
        return {wholeWords(inner), true, isOpen || isLoneCharacter(inner)};
    }

    QueryTerm readWord()
    {
        const qsizetype begin = m_at;
        while (m_at < m_text.size() && !m_text[m_at].isSpace() && m_text[m_at] != u'"') {
            ++m_at;
        }
        const QString piece = m_text.sliced(begin, m_at - begin);
        QueryTerm term{wholeWords(piece), false, false};
        const bool isLast = m_at == m_text.size() && m_isTyping && piece.back().isLetterOrNumber();
        const bool hasStar = piece.endsWith(u'*');
        if (hasStar) {
            // A name would take the star for one of its signs.
            term.words = wholeWords(piece.chopped(1));
        }
        term.isPrefix = isLast || hasStar || isLoneCharacter(piece);
        return term;
    }

    void add(QueryTerm term, bool isExcluded, const QString& text)
    {
        if (std::exchange(m_isOrPending, false) && !isExcluded && !m_query.clauses.back().isExcluded) {
            auto& clause = m_query.clauses.back();
            clause.terms.push_back(std::move(term));
            clause.text += QStringLiteral(" OR ") + text;
        } else {
            m_query.clauses.push_back({{std::move(term)}, isExcluded, text});
        }
    }

    /// A query that only excludes means the signs themselves: "-install" is an option.
    void takeLiterally()
    {
        for (auto& clause : m_query.clauses) {
            clause.isExcluded = false;
            const auto term = clause.terms.front();
            for (const auto* dashes : {"-", "--"}) {
                auto option = term;
                option.words.front().insert(0, dashes);
                clause.terms.push_back(std::move(option));
            }
        }
    }

    QString m_text;
    bool m_isTyping;
    qsizetype m_at = 0;
    bool m_isOrPending = false;
    SearchQuery m_query;
};

} // namespace

QString SearchQuery::text() const
{
    QStringList texts;
    for (const auto& clause : clauses) {
        texts += clause.text;
    }
    return texts.join(u' ');
}

std::string SearchQuery::name() const
{
    std::string name;
    for (const auto& clause : clauses) {
        if (clause.isExcluded || clause.terms.size() != 1) {
            return {};
        }
        for (const auto& word : clause.terms.front().words) {
            name.append(name.empty() ? "" : " ").append(word);
        }
    }
    return name;
}

SearchQuery parseQuery(const QString& text, bool isTyping)
{
    return Parser(text, isTyping).parse();
}

std::string foldedName(QStringView text)
{
    std::string name;
    for (const auto& word : wholeWords(text.toString())) {
        name.append(name.empty() ? "" : " ").append(word);
    }
    return name;
}
