#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace qmr {

// Runs `work(i)` for every i below `count` on up to `threads` worker threads, and hands each
// result to `finished(i, result)` on the calling thread as the results come in; while none
// comes for a while it calls `waiting()` there instead. When either returns false no further
// job starts; those under way end and are still handed over. The calling thread is the only
// one that runs `finished` and `waiting`, so they may talk to the user.
template <typename Result, typename Work, typename Finished, typename Waiting>
void RunParallelJobs(int count, int threads, Work work, Finished finished, Waiting waiting) {
    if (count <= 0) return;
    std::mutex mutex;
    std::condition_variable ready;
    std::deque<std::pair<int, Result>> results;
    std::atomic<int> next{0};
    std::atomic<bool> stop{false};
    int running = std::clamp(threads, 1, count);

    auto worker = [&] {
        for (int i = next++; i < count && !stop; i = next++) {
            Result result = work(i);
            std::lock_guard lock(mutex);
            results.emplace_back(i, std::move(result));
            ready.notify_one();
        }
        std::lock_guard lock(mutex);
        --running;
        ready.notify_one();
    };
    std::vector<std::thread> pool;
    for (int t = running; t > 0; --t)
        pool.emplace_back(worker);

    std::unique_lock lock(mutex);
    for (;;) {
        const bool any = ready.wait_for(lock, std::chrono::milliseconds(100),
                                        [&] { return !results.empty() || running == 0; });
        if (results.empty() && running == 0) break;
        if (!any) {
            lock.unlock();
            if (!waiting()) stop = true;
            lock.lock();
            continue;
        }
        std::deque<std::pair<int, Result>> arrived;
        arrived.swap(results);
        lock.unlock();
        for (auto& [index, result] : arrived)
            if (!finished(index, std::move(result))) stop = true;
        lock.lock();
    }
    lock.unlock();
    for (std::thread& thread : pool)
        thread.join();
}

} // namespace qmr
