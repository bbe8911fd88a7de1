// SPDX-License-Identifier: MIT
#include "library/keywordindex.h"

#include "library/prefetch.h"

#include <QSet>
#include <QStringMatcher>

#include <algorithm>
#include <utility>

namespace {

constexpr size_t MaximumContaining = 1000; // rows

/// A letter without its accents, for those letters that are mostly written with them.
QChar withoutAccent(QChar letter)
{
    constexpr char16_t firstLatin = 0xC0;
    constexpr char16_t lastLatin = 0x24F;
    constexpr char16_t firstExtended = 0x1E00;
    constexpr char16_t lastExtended = 0x1EFF;
    const char16_t code = letter.unicode();
    if (code < firstLatin || (code > lastLatin && code < firstExtended) || code > lastExtended) {
        return letter;
    }
    while (letter.decompositionTag() == QChar::Canonical) {
        letter = letter.decomposition().at(0);
    }
    return letter;
}

/// Accents do not matter; both are in lower case.
bool beginsSo(QStringView keyword, QStringView text)
{
    if (keyword.size() < text.size()) {
        return false;
    }
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (keyword[i] != text[i] && withoutAccent(keyword[i]) != withoutAccent(text[i])) {
            return false;
        }
    }
    return true;
}

/// Rules nearly all rows out by their marks, without a look at their texts.
class MarkFilter {
public:
    explicit MarkFilter(const QString& text) : m_length(std::min<qsizetype>(text.size(), MarkLength))
    {
        QString plain = text;
        for (auto& letter : plain) {
            letter = withoutAccent(letter);
        }
        m_mark = lookUpMark(text);
        m_plainMark = lookUpMark(plain);
    }

    /// Each byte of a mark is a letter; those beyond ASCII may stand for others without their accents.
    [[nodiscard]] bool mayBegin(quint64 mark) const
    {
        constexpr unsigned bits = 8;
        constexpr quint64 ascii = 0x80;
        constexpr quint64 byte = 0xFF;
        for (qsizetype i = 0; i < m_length; ++i) {
            const unsigned shift = bits * unsigned(MarkLength - 1 - i);
            const quint64 letter = mark >> shift & byte;
            if (letter < ascii && letter != (m_mark >> shift & byte) &&
                letter != (m_plainMark >> shift & byte)) {
                return false;
            }
        }
        return true;
    }

private:
    static constexpr qsizetype MarkLength = 8;

    qsizetype m_length;
    quint64 m_mark = 0;
    quint64 m_plainMark = 0;
};

} // namespace

void KeywordIndex::setRows(KeywordRows rows, const std::vector<std::span<HelpIndexItem>>& items)
{
    Q_EMIT aboutToBeRebuilt();
    m_rows = std::move(rows);
    for (const auto& span : items) {
        for (auto& item : span) {
            item.group = -1;
            item.listBoxItem = nullptr;
        }
    }
    for (int number = 0; number < m_rows.groupCount(); ++number) {
        for (auto* member : m_rows.group(number)) {
            member->group = number;
        }
    }
    forEachAhead(
        m_rows.rows, [](const HelpIndexListBoxItem& row) { return row.indexItem; },
        [this](size_t /*i*/, const HelpIndexListBoxItem& row) {
            row.indexItem->listBoxItem = &row;
            if (row.indexItem->group >= 0) {
                for (auto* member : m_rows.group(row.indexItem->group)) {
                    member->listBoxItem = &row;
                }
            }
        });
    Q_EMIT rebuilt();
}

std::vector<HelpIndexItem*> KeywordIndex::getIndexListByGroup(int group) const
{
    if (group < 0 || group >= m_rows.groupCount()) {
        return {};
    }
    std::vector<HelpIndexItem*> result;
    QSet<std::pair<QString, QString>> seen;
    const HelpIndexItem* last = nullptr;
    for (auto* item : m_rows.group(group)) {
        // A file may name a keyword a million times.
        if (last != nullptr && last->source == item->source && last->pageName == item->pageName) {
            continue;
        }
        last = item;
        const std::pair key(item->title().toLower(), item->link());
        if (!seen.contains(key)) {
            seen.insert(key);
            result.push_back(item);
        }
    }
    return result;
}

int KeywordIndex::getIndexByGroupCount(int group) const
{
    return int(getIndexListByGroup(group).size());
}

std::vector<HelpIndexItem*> KeywordIndex::topics(HelpIndexItem* item) const
{
    return item->group < 0 ? std::vector{item} : getIndexListByGroup(item->group);
}

std::vector<const HelpIndexListBoxItem*> KeywordIndex::subKeywords(const HelpIndexItem& item) const
{
    std::vector<const HelpIndexListBoxItem*> result;
    if (item.listBoxItem == nullptr || item.listBoxItem->isSubKeyword) {
        return result;
    }
    const auto* end = m_rows.rows.data() + m_rows.rows.size();
    for (const auto* row = item.listBoxItem + 1; row != end && row->isSubKeyword; ++row) {
        result.push_back(row);
    }
    return result;
}

/// How well a row fits that begins with what was typed; the least is the best.
unsigned KeywordIndex::rank(size_t row, const QString& typed, const QString& text,
                            const HelpContentsRoot* inUse) const
{
    constexpr unsigned notWhole = 8;
    constexpr unsigned otherCase = 4;
    constexpr unsigned otherSet = 2;
    constexpr unsigned otherAccents = 1;
    const QStringView lower = m_rows.lookUpText(row);
    const QStringView keyword = m_rows.rows[row].indexItem->keyword.trimmed();
    return (lower.size() == typed.size() ? 0U : notWhole) | (keyword.startsWith(typed) ? 0U : otherCase) |
           (inUse != nullptr && isOf(int(row), inUse) ? 0U : otherSet) |
           (lower.startsWith(text) ? 0U : otherAccents);
}

int KeywordIndex::lookFor(const QString& typed, int current, const HelpContentsRoot* inUse,
                          const HelpContentsRoot* only) const
{
    const bool hasCurrent = current >= 0 && size_t(current) < m_rows.rows.size();
    const QString text = typed.toLower();
    if (text.isEmpty() || (hasCurrent && m_rows.lookUpText(size_t(current)) == text)) {
        return current;
    }
    const MarkFilter filter(text);
    int best = current;
    unsigned bestRank = ~0U;
    for (size_t row = 0; row < m_rows.rows.size() && bestRank > 0; ++row) {
        if (!filter.mayBegin(m_rows.lookUpMarks[row]) || !beginsSo(m_rows.lookUpText(row), text) ||
            (only != nullptr && !isOf(int(row), only))) {
            continue;
        }
        if (const unsigned found = rank(row, typed, text, inUse); found < bestRank) {
            bestRank = found;
            best = int(row);
        }
    }
    return best;
}

bool KeywordIndex::beginsWith(int row, const QString& typed) const
{
    return beginsSo(m_rows.lookUpText(size_t(row)), typed.toLower());
}

/// In the order of the rows each text has to be fetched by itself, which takes ten times as long as in load
/// order, in which they stand in memory. That is worth while unless few of them have a row.
std::vector<int> KeywordIndex::rowsContaining(const QString& typed, const HelpContentsRoot* root) const
{
    constexpr size_t timesFaster = 10;
    const QStringMatcher text(typed.toLower());
    const auto contains = [&text](QStringView keyword) { return text.indexIn(keyword) >= 0; };
    const auto& texts = m_rows.lowerTexts;
    std::vector<bool> isFound;
    if (texts.size() / timesFaster < m_rows.rows.size()) {
        isFound.resize(texts.size());
        std::transform(texts.begin(), texts.end(), isFound.begin(), contains);
    }
    const size_t most = typed.isEmpty() ? m_rows.rows.size() : MaximumContaining;
    std::vector<int> result;
    for (size_t row = 0; row < m_rows.rows.size() && result.size() < most; ++row) {
        const bool isWanted =
            isFound.empty() ? contains(m_rows.lookUpText(row)) : isFound[m_rows.positions[row]];
        if (isWanted && (root == nullptr || isOf(int(row), root))) {
            result.push_back(int(row));
        }
    }
    return result;
}

bool KeywordIndex::isOf(int row, const HelpContentsRoot* root) const
{
    const auto& item = *m_rows.rows[size_t(row)].indexItem;
    if (item.group < 0) {
        return item.source->contentsItem == root;
    }
    const auto members = m_rows.group(item.group);
    return std::any_of(members.begin(), members.end(),
                       [root](const auto* member) { return member->source->contentsItem == root; });
}
