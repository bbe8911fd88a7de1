// SPDX-License-Identifier: MIT
#pragma once

#include "jump/fuzzypattern.h"
#include "jump/jumptarget.h"

#include <span>
#include <vector>

class HelpLibrary;
class HelpSet;
struct HelpContentsRoot;

/// Finds what one may want to jump to among all that is open. Copies none of it: a target is a number until
/// it is among the best. The library must outlive it.
class JumpSearch {
public:
    explicit JumpSearch(HelpLibrary& library) : m_library(library) {}

    /// What else one can jump to, with texts of its own, the most wanted first, and the help set in use,
    /// which comes before others. Both are let go of at end().
    void begin(std::vector<JumpTarget> nearby, const HelpContentsRoot* inUse);
    /// Lets go of all that the search has seen; to be called before a help set goes.
    void end();
    /// The best targets for a query, best first; for an empty one those nearby that have been read.
    [[nodiscard]] std::vector<JumpTarget> find(const QString& query, size_t limit);
    [[nodiscard]] const FuzzyPattern& pattern() const { return m_pattern; }

private:
    struct Found {
        FuzzyPattern::Rank rank;
        qsizetype length;
        quint32 number;

        /// Whether it comes before another one.
        [[nodiscard]] bool operator<(const Found& other) const;
    };
    /// Rows and keywords of a help set, counted on from those before it.
    struct Part {
        const HelpSet* set;
        quint32 firstRow;
        quint32 firstKeyword;
        quint32 end;

        bool operator==(const Part&) const = default;
    };

    [[nodiscard]] std::vector<Part> makeParts() const;
    [[nodiscard]] QStringView textOf(quint32 number) const;
    [[nodiscard]] JumpTarget target(quint32 number) const;
    [[nodiscard]] const Part& partOf(quint32 number) const;
    void consider(quint32 number, QStringView text);
    void lookThroughAll();
    void lookThroughMatching();
    [[nodiscard]] std::vector<JumpTarget> best();

    HelpLibrary& m_library;
    std::vector<JumpTarget> m_nearby; ///< numbered from 0
    const HelpContentsRoot* m_inUse = nullptr;
    std::vector<Part> m_parts; ///< what was looked through last; more may have been loaded since
    FuzzyPattern m_pattern;
    std::vector<quint32> m_matching; ///< all that match the pattern, in order
    std::vector<Found> m_found;      ///< the best of them, a heap with the last one on top
    size_t m_limit = 0;
};
