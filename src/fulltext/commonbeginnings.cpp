// SPDX-License-Identifier: MIT
#include "fulltext/commonbeginnings.h"

#include "fulltext/indexfile.h"

#include <QHash>

#include <algorithm>

namespace {

constexpr size_t MostTitles = 4000; // that are looked at, here and there
constexpr int LeastTitles = 8;
constexpr int LeastShare = 5;      // one of so many titles of one word
constexpr qsizetype LeastRest = 3; // UTF-16 code units

/// The name at the beginning of a title, when it is one word.
QStringView nameIn(QStringView title)
{
    const auto isEnd = [](QChar c) { return c.isSpace() || c == u'('; };
    const auto* end = std::find_if(title.begin(), title.end(), isEnd);
    const bool isOneWord = end == title.end() || *end == u'(';
    return isOneWord ? title.first(end - title.begin()) : QStringView();
}

/// "Gtk" of "GtkButton", "git-" of "git-log"; empty when a name has one part only.
QStringView beginningOf(QStringView name)
{
    for (qsizetype i = 1; i + 1 < name.size(); ++i) {
        const QChar c = name[i];
        if (c == u'-' || c == u'_') {
            return name.first(i + 1);
        }
        const bool isNewWord =
            c.isUpper() && (name[i - 1].isLower() || (name[i - 1].isUpper() && name[i + 1].isLower()));
        if (isNewWord) {
            return name.first(i);
        }
    }
    return {};
}

} // namespace

CommonBeginnings::CommonBeginnings(const SearchSource& source)
{
    const auto& topics = source.topics();
    const size_t step = topics.size() / MostTitles + 1;
    QHash<QString, int> found;
    int names = 0;
    for (size_t i = 0; i < topics.size(); i += step) {
        const auto name = nameIn(source.title(topics[i]));
        if (const auto beginning = beginningOf(name); !beginning.isEmpty()) {
            ++found[beginning.toString()];
        }
        names += name.isEmpty() ? 0 : 1;
    }
    for (const auto& [beginning, count] : found.asKeyValueRange()) {
        if (count >= LeastTitles && count * LeastShare >= names) {
            m_beginnings += beginning;
        }
    }
    m_beginnings.sort();
    if (!m_beginnings.isEmpty()) {
        m_hash = uint64_t(IndexFile::hashOf(m_beginnings.join(u' ').toStdString()));
    }
}

QStringView CommonBeginnings::rest(QStringView title) const
{
    const auto name = nameIn(title);
    for (const auto& beginning : m_beginnings) {
        for (const qsizetype size : {beginning.size(), beginning.size() - 1}) {
            const bool isWhole =
                size == beginning.size() || (!beginning.back().isLetter() && size >= LeastRest);
            if (isWhole && name.startsWith(QStringView(beginning).first(size)) &&
                name.size() >= size + LeastRest) {
                return name.sliced(size);
            }
        }
    }
    return {};
}
