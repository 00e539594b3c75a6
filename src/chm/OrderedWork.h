#pragma once

#include <QtGlobal>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace qmr::chm {

// Items worked on by worker threads a bounded number of items ahead of the one thread that
// takes the results, which it does in the order the items were given: whatever is made of the
// results is the same for any number of threads, and memory holds at most `ahead` results.
// Items may be given while results are being taken (the files a page uses join the list as
// the page is packed).
template <typename Item, typename Result> class OrderedWork {
  public:
    using Work = std::function<Result(const Item&)>;

    // `threads` workers; with 0, take() does the work itself. `work` runs on the workers, on
    // several items at once.
    OrderedWork(int threads, int ahead, Work work)
        : m_work(std::move(work)), m_results(size_t(std::max(ahead, 1))) {
        for (int i = 0; i < threads; ++i)
            m_threads.emplace_back([this] { run(); });
    }

    ~OrderedWork() {
        {
            const std::lock_guard lock(m_mutex);
            m_stopping = true;
        }
        m_workWaiting.notify_all();
        for (std::thread& thread : m_threads)
            thread.join();
    }

    OrderedWork(const OrderedWork&) = delete;
    OrderedWork& operator=(const OrderedWork&) = delete;

    void add(Item item) {
        {
            const std::lock_guard lock(m_mutex);
            m_items.push_back(std::move(item));
        }
        m_workWaiting.notify_one();
    }

    // The next item's result, waiting for it. There must be an item not yet taken.
    Result take() {
        std::unique_lock lock(m_mutex);
        Q_ASSERT(m_taken < given());
        if (m_threads.empty()) {
            Item item = std::move(m_items[size_t(m_taken - m_first)]);
            lock.unlock();
            Result result = m_work(item);
            lock.lock();
            finishTaking();
            return result;
        }
        std::optional<Result>& slot = m_results[size_t(m_taken) % m_results.size()];
        m_resultReady.wait(lock, [&] { return slot.has_value(); });
        Result result = std::move(*slot);
        slot.reset();
        finishTaking();
        lock.unlock();
        m_workWaiting.notify_all();
        return result;
    }

  private:
    qsizetype given() const { return m_first + qsizetype(m_items.size()); }

    // Workers copy their item when they claim it, so a taken item is no longer needed.
    void finishTaking() {
        ++m_taken;
        while (m_first < m_taken) {
            m_items.pop_front();
            ++m_first;
        }
    }

    void run() {
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_workWaiting.wait(lock, [&] {
                return m_stopping ||
                       (m_claimed < given() && m_claimed < m_taken + qsizetype(m_results.size()));
            });
            if (m_stopping) return;
            const qsizetype index = m_claimed++;
            const Item item = m_items[size_t(index - m_first)];
            lock.unlock();
            Result result = m_work(item);
            lock.lock();
            m_results[size_t(index) % m_results.size()] = std::move(result);
            m_resultReady.notify_one();
        }
    }

    Work m_work;
    mutable std::mutex m_mutex;
    std::condition_variable m_workWaiting, m_resultReady;
    std::deque<Item> m_items;                     // from item m_first on
    std::vector<std::optional<Result>> m_results; // item i's in slot i % size
    qsizetype m_first = 0;                        // the number of the oldest item kept
    qsizetype m_claimed = 0;                      // items below this are claimed by a worker
    qsizetype m_taken = 0;                        // results below this are taken
    bool m_stopping = false;
    std::vector<std::thread> m_threads;
};

} // namespace qmr::chm
