// SPDX-License-Identifier: MIT
#pragma once

#include "sources/source.h"

#include <algorithm>

/// Gathers the texts of keywords, many in one, for a sink to keep.
class KeywordTexts {
public:
    explicit KeywordTexts(KeywordSink& sink) : m_sink(sink) {}

    /// False when the sink takes no more.
    bool add(QStringView keyword, QStringView page, int line = 0, int parent = -1)
    {
        IndexLine entry;
        entry.keyword = keep(keyword.first(std::min(keyword.size(), LongestKeyword)), m_lastKeyword);
        entry.page = keep(page, m_lastPage);
        entry.line = line;
        entry.parent = parent;
        return m_sink.add(entry);
    }

private:
    static constexpr qsizetype LongestKeyword = 1 << 14;
    static constexpr qsizetype Block = 1 << 16; // characters

    /// A keyword may have many pages, and a page many keywords.
    QStringView keep(QStringView text, QStringView& last)
    {
        if (text == last) {
            return last;
        }
        if (m_end + text.size() > m_block.size()) {
            // The sink's text is the same memory, so what is written into it later is there, too.
            m_block = QString(std::max(Block, text.size()), Qt::Uninitialized);
            m_memory = m_block.data();
            m_kept = m_sink.keep(m_block);
            m_end = 0;
        }
        std::copy(text.begin(), text.end(), m_memory + m_end);
        m_end += text.size();
        return last = m_kept.sliced(m_end - text.size(), text.size());
    }

    KeywordSink& m_sink;
    QString m_block;
    QChar* m_memory = nullptr;
    QStringView m_kept;
    QStringView m_lastKeyword;
    QStringView m_lastPage;
    qsizetype m_end = 0;
};
