// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/indexedpage.h"
#include "pages/pagesheets.h"
#include "system/worker.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <stop_token>
#include <vector>

/// Reads pages in threads and hands them out in the order in which they get ready, a few at a time ahead.
class PageQueue {
public:
    /// All must outlive the queue.
    PageQueue(const SearchSource& source, const SourcePages& named,
              const std::vector<const SourcePage*>& pages, const std::stop_token& stop);
    ~PageQueue();
    PageQueue(const PageQueue&) = delete;
    PageQueue& operator=(const PageQueue&) = delete;

    /// Null when there are no more, or a stop has been asked for.
    [[nodiscard]] std::unique_ptr<IndexedPage> next();

private:
    void read();

    const SearchSource& m_source;
    const SourcePages& m_named;
    const std::vector<const SourcePage*>& m_pages;
    StyleSheets m_styleSheets; ///< of all threads
    std::stop_token m_stop;
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::deque<std::unique_ptr<IndexedPage>> m_ready;
    size_t m_readyBytes = 0;
    size_t m_nextPage = 0;
    bool m_isClosed = false;
    std::deque<std::unique_ptr<IndexedPage>> m_taken; ///< from those that are ready, to be handed out
    size_t m_handedOut = 0;
    Worker m_readers; ///< last, so that they end first
};
