// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/sourcepages.h"

#include <QSet>

#include <chrono>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

struct PlainPage;

/// The paths that links of a page lead to and that may be pages of the help set without being named, one
/// behind the other with line ends between. Nothing is looked up on disk.
[[nodiscard]] std::string linkTargets(const PlainPage& page, const SourcePages& named);

/// Whether such a path lies in a folder of the help set and is called like a page.
[[nodiscard]] bool mayBeLinked(QStringView path, const SourcePages& named);

/// The pages of a help set that nothing names: those to which links lead from page to page, in bounds of
/// number, steps and time, and never outside its folders.
class LinkedPages {
public:
    static constexpr size_t MostPages = 20'000;
    static constexpr int MostSteps = 100;

    explicit LinkedPages(const SourcePages& named);

    /// A page that was read before, as the database knows it.
    struct Known {
        int64_t id = 0;
        int64_t size = 0;
        int64_t time = 0;
        std::string targets;
    };
    void addKnown(std::string path, Known page) { m_known.emplace(std::move(path), std::move(page)); }

    /// Goes on from a page that has been read to where its links lead.
    void follow(const std::string& path, std::string_view targets);

    /// The next pages that are to be read, some hundreds at most; none when there are no more. The numbers of
    /// what the database knows of them go to `outdated`. Valid as long as this is.
    [[nodiscard]] std::vector<const SourcePage*> next(std::vector<int64_t>& outdated);

    /// Numbers of known pages to which no link leads any more; of use at the end.
    [[nodiscard]] std::vector<int64_t> unreached() const;
    /// Those that are there, read or not.
    [[nodiscard]] size_t count() const { return m_count; }
    /// Whether there may be more than was followed.
    [[nodiscard]] bool isLimited() const { return m_isLimited; }

private:
    using Clock = std::chrono::steady_clock;
    struct Target {
        QString file;
        int steps;
    };

    [[nodiscard]] bool isBeyondBounds(const Target& target);
    [[nodiscard]] bool isNew(const QString& file);
    void visit(const Target& target, std::vector<const SourcePage*>& batch, std::vector<int64_t>& outdated);

    const SourcePages& m_named;
    std::vector<std::pair<QString, QString>> m_realFolders; ///< the folders, and what they really are
    std::unordered_map<std::string, Known> m_known;
    std::unordered_map<std::string, int> m_steps; ///< to pages that are not named
    std::deque<Target> m_waiting;
    QSet<QString> m_visited;
    std::deque<SourcePage> m_pages;
    size_t m_count = 0;
    bool m_isLimited = false;
    bool m_isLate = false;
    Clock::time_point m_end = Clock::now() + std::chrono::minutes(2);
};
