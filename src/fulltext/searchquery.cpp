// SPDX-License-Identifier: MIT
#include "fulltext/searchquery.h"

#include "fulltext/compounds.h"
#include "fulltext/querywords.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype LongestQuery = 4096; // UTF-16 code units
constexpr size_t MostClauses = 32;

const QRegularExpression AnyLetter(QStringLiteral("\\w"));

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
        if (isOr()) {
            m_at += m_text[m_at] == u'|' ? 1 : 2;
            m_isOrPending = !m_query.clauses.empty();
            return;
        }
        const qsizetype begin = m_at;
        const bool isExcluded = m_text[m_at] == u'-' && m_at + 1 < m_text.size() &&
                                (m_text[m_at + 1].isLetterOrNumber() || m_text[m_at + 1] == u'"');
        m_at += isExcluded ? 1 : 0;
        if (m_text[m_at] == u'"') {
            addPhrase(begin, isExcluded);
        } else {
            addWord(begin, isExcluded);
        }
    }

    /// "||" is an operator that pages may be about.
    [[nodiscard]] bool isOr() const
    {
        const auto rest = QStringView(m_text).sliced(m_at);
        const bool isBar = rest[0] == u'|' && (rest.size() == 1 || rest[1].isSpace() ||
                                               rest[1].isLetterOrNumber() || rest[1] == u'"');
        return isBar || (rest.startsWith(u"OR") && (rest.size() == 2 || rest[2].isSpace()));
    }

    void addPhrase(qsizetype begin, bool isExcluded)
    {
        const qsizetype end = m_text.indexOf(u'"', m_at + 1);
        const QString inner = m_text.sliced(m_at + 1, (end < 0 ? m_text.size() : end) - m_at - 1);
        m_at = end < 0 ? m_text.size() : end + 1;
        const bool isOpen = end < 0 && m_isTyping && !inner.isEmpty() && !inner.back().isSpace();
        const QueryWords words(inner);
        QueryClause clause;
        if (!words.whole().empty()) {
            clause.terms = {{words.whole(), true, isOpen || words.isLoneCharacter()}};
        }
        // Signs in quotes are meant.
        if (words.literals().size() == 1 && words.whole().size() <= 1) {
            clause.terms = {{words.literals(), true, false}};
        }
        clause.isExcluded = isExcluded;
        add(std::move(clause), begin);
    }

    void addWord(qsizetype begin, bool isExcluded)
    {
        const qsizetype wordBegin = m_at;
        while (m_at < m_text.size() && !m_text[m_at].isSpace() && m_text[m_at] != u'"') {
            ++m_at;
        }
        const QString piece = m_text.sliced(wordBegin, m_at - wordBegin);
        const bool isLast = m_at == m_text.size() && m_isTyping && piece.back().isLetterOrNumber();
        const bool hasStar =
            piece.size() > 1 && piece.endsWith(u'*') && piece[piece.size() - 2].isLetterOrNumber();
        const auto parts = isExcluded || hasStar ? QStringList{piece} : compoundParts(piece);
        for (const auto& part : parts) {
            // A name would take the star for one of its signs.
            QueryClause clause = clauseOf(hasStar ? part.chopped(1) : part);
            for (auto& term : clause.terms) {
                term.isPrefix = term.isPrefix || hasStar || (isLast && &part == &parts.back());
            }
            clause.isExcluded = isExcluded;
            clause.isPlain = !isExcluded && !hasStar;
            if (isExcluded) {
                clause.literals = {{{'-' + QueryWords(part).firstWord()}, true, false}};
            }
            const bool isWhole = parts.size() == 1;
            add(std::move(clause), isWhole ? begin : -1, part);
        }
    }

    /// A name is found whole, or by its parts behind each other where pages write it otherwise.
    static QueryClause clauseOf(const QString& piece)
    {
        const QueryWords words(piece);
        QueryClause clause;
        if (!words.whole().empty()) {
            clause.terms.push_back({words.whole(), false, words.isLoneCharacter()});
        }
        if (words.whole().size() == 1 && words.segments().size() > 1) {
            clause.terms.push_back({words.segments(), false, false});
        }
        for (const auto& literal : words.literals()) {
            clause.literals.push_back({{literal}, true, false});
        }
        return clause;
    }

    void add(QueryClause clause, qsizetype begin, const QString& part = {})
    {
        if (m_query.clauses.size() == MostClauses || (clause.terms.empty() && clause.literals.empty()) ||
            (clause.isExcluded && clause.terms.empty())) {
            return;
        }
        clause.text = begin < 0 ? part : m_text.sliced(begin, m_at - begin);
        const bool isAlternative = std::exchange(m_isOrPending, false) && !clause.isExcluded &&
                                   !clause.terms.empty() && !m_query.clauses.back().isExcluded;
        if (!isAlternative) {
            m_query.clauses.push_back(std::move(clause));
            return;
        }
        auto& before = m_query.clauses.back();
        before.terms.insert(before.terms.end(), clause.terms.begin(), clause.terms.end());
        before.literals.clear();
        before.isPlain = false;
        before.text += QStringLiteral(" OR ") + clause.text;
    }

    /// A query that only excludes means the signs themselves: "-install" is an option.
    void takeLiterally()
    {
        for (auto& clause : m_query.clauses) {
            clause.isExcluded = false;
            clause.literals.clear();
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

QString SearchQuery::name() const
{
    QStringList texts;
    for (const auto& clause : clauses) {
        if (!clause.isPlain) {
            return {};
        }
        const bool isOption = clause.text.startsWith(u"\"-") || clause.text.startsWith(u'-');
        if (!isOption || !clause.text.contains(AnyLetter)) {
            texts += clause.text;
        }
    }
    return texts.join(u' ');
}

bool SearchQuery::isLiteral() const
{
    return std::any_of(clauses.begin(), clauses.end(),
                       [](const QueryClause& clause) { return clause.isLiteral; });
}

bool SearchQuery::isPlain() const
{
    return std::all_of(clauses.begin(), clauses.end(),
                       [](const QueryClause& clause) { return clause.isPlain; });
}

SearchQuery parseQuery(const QString& text, bool isTyping)
{
    return Parser(text, isTyping).parse();
}
