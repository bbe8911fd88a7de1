// SPDX-License-Identifier: MIT
#include "fulltext/pagequeue.h"

#include <algorithm>
#include <thread>

namespace {

constexpr size_t MostReaders = 4;
constexpr size_t MostReady = 64;              // pages
constexpr size_t MostReadyBytes = 16'000'000; // of what was made of them

} // namespace

PageQueue::PageQueue(const SearchSource& source, const SourcePages& named,
                     const std::vector<const SourcePage*>& pages, const std::stop_token& stop)
    : m_source(source), m_named(named), m_pages(pages), m_stop(stop),
      m_readers(Worker::Priority::Low, MostReaders)
{
    const size_t readers = std::clamp<size_t>(std::thread::hardware_concurrency(), 1, MostReaders);
    for (size_t i = 0; i < std::min(readers, pages.size()); ++i) {
        m_readers.add([this] { read(); });
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

void PageQueue::read()
{
    PageReader reader(m_source, m_named, m_styleSheets, m_stop);
    std::unique_lock lock(m_mutex);
    while (!m_isClosed && !m_stop.stop_requested() && m_nextPage < m_pages.size()) {
        const auto& page = *m_pages[m_nextPage++];
        lock.unlock();
        auto made = std::make_unique<IndexedPage>(reader.read(page));
        lock.lock();
        m_changed.wait(lock, m_stop, [this] {
            return (m_ready.size() < MostReady && m_readyBytes < MostReadyBytes) || m_isClosed;
        });
        if (m_stop.stop_requested()) {
            return;
        }
        m_readyBytes += made->memory();
        m_ready.push_back(std::move(made));
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
