// SPDX-License-Identifier: MIT
#pragma once

#include "library/helpindexitem.h"
#include "sources/source.h"

#include <deque>
#include <memory>
#include <utility>
#include <vector>

/// The keyword entries of one help set, and titles of its rows, which keep their addresses when this is
/// moved.
struct IndexEntries {
    std::vector<HelpIndexItem> items; ///< in load order
    std::deque<QString> texts;        ///< that the entries view into
    std::vector<std::unique_ptr<const HelpIndexSource>> sources;
    std::vector<std::pair<int, QStringView>> titles; ///< of rows that had a provisional one
    std::vector<Problem> problems;
    QString limitReached; ///< a sentence on what was left out; null when all was read
};

/// Makes entries of the keywords that a source gives.
class KeywordCollector : public KeywordSink {
public:
    static constexpr size_t MaximumKeywords = 2'000'000;

    /// The root is not looked at.
    explicit KeywordCollector(HelpContentsRoot* root) : m_root(root) {}

    void begin(const KeywordFile& file, size_t atMost) override;
    QStringView keep(const QString& text) override;
    bool add(const IndexLine& line) override;
    void retitle(int entry, const QString& title) override
    {
        m_entries.titles.emplace_back(entry, m_entries.texts.emplace_back(title));
    }
    void note(const Problem& problem) override { m_entries.problems.push_back(problem); }
    void leaveOutRest(const KeywordFile& file) override;

    [[nodiscard]] IndexEntries take() { return std::move(m_entries); }

private:
    HelpContentsRoot* m_root;
    IndexEntries m_entries;
    int m_first = 0; ///< entry of the file
};
