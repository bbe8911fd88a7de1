// SPDX-License-Identifier: MIT
#include "fulltext/pagequeue.h"

#include "fulltext/lowpriority.h"

#include <algorithm>

namespace {

constexpr size_t MostReady = 64;              // pages
constexpr size_t MostReadyBytes = 16'000'000; // of what was made of them

} // namespace

PageQueue::PageQueue(const SearchSource& source, const SourcePages& named,
                     const std::vector<const SourcePage*>& pages, const std::stop_token& stop)
    : m_source(source), m_named(named), m_pages(pages), m_stop(stop)
{
    const size_t threads = std::clamp<size_t>(std::thread::hardware_concurrency(), 1, 4);
    for (size_t i = 0; i < std::min(threads, pages.size()); ++i) {
        m_threads.emplace_back([this] { work(); });
    }
}

PageQueue::~PageQueue()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
    }
    m_changed.notify_all();
}

void PageQueue::work()
{
    lowerPriority();
    PageReader reader(m_source, m_named, m_styleSheets, m_stop);
    std::unique_lock lock(m_mutex);
    while (!m_isClosed && !m_stop.stop_requested() && m_nextPage < m_pages.size()) {
        const auto& page = *m_pages[m_nextPage++];
        lock.unlock();
        auto read = std::make_unique<IndexedPage>(reader.read(page));
        lock.lock();
        m_changed.wait(lock, m_stop, [this] {
            return (m_ready.size() < MostReady && m_readyBytes < MostReadyBytes) || m_isClosed;
        });
        if (m_stop.stop_requested()) {
            return;
        }
        m_readyBytes += read->memory();
        m_ready.push_back(std::move(read));
        if (m_ready.size() == 1) {
            m_changed.notify_all();
        }
    }
}

std::unique_ptr<IndexedPage> PageQueue::next()
{
    if (m_taken.empty()) {
        std::unique_lock lock(m_mutex);
        if (m_handedOut == m_pages.size() ||
            !m_changed.wait(lock, m_stop, [this] { return !m_ready.empty(); })) {
            return nullptr;
        }
        m_taken.swap(m_ready);
        m_readyBytes = 0;
        m_changed.notify_all();
    }
    ++m_handedOut;
    auto page = std::move(m_taken.front());
    m_taken.pop_front();
    return page;
}
