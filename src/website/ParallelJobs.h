#pragma once

#include <algorithm>
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
//
// A worker starts a job only while fewer than four results a worker wait to be handed over:
// enough that a busy machine's slow wake-ups of the calling thread do not hold the workers
// up, and few enough that a stop takes effect within a few jobs.
inline constexpr int kAheadPerWorker = 4;

template <typename Result, typename Work, typename Finished, typename Waiting>
void RunParallelJobs(int count, int threads, Work work, Finished finished, Waiting waiting) {
    if (count <= 0) return;
    threads = std::clamp(threads, 1, count);
    std::mutex mutex;
    std::condition_variable resultReady;
    std::condition_variable roomReady;
    std::deque<std::pair<int, Result>> results;
    int next = 0;
    int unhanded = 0; // results given back and not yet handed over
    int running = threads;
    bool stop = false;

    auto worker = [&] {
        std::unique_lock lock(mutex);
        for (;;) {
            roomReady.wait(lock, [&] { return stop || unhanded < kAheadPerWorker * threads; });
            if (stop || next >= count) break;
            const int i = next++;
            ++unhanded;
            lock.unlock();
            Result result = work(i);
            lock.lock();
            results.emplace_back(i, std::move(result));
            resultReady.notify_one();
        }
        --running;
        resultReady.notify_one();
    };
    std::vector<std::thread> pool;
    for (int t = 0; t < threads; ++t)
        pool.emplace_back(worker);

    std::unique_lock lock(mutex);
    while (running > 0 || !results.empty()) {
        if (!resultReady.wait_for(lock, std::chrono::milliseconds(100),
                                  [&] { return !results.empty() || running == 0; })) {
            lock.unlock();
            const bool goOn = waiting();
            lock.lock();
            stop = stop || !goOn;
            roomReady.notify_all();
            continue;
        }
        if (results.empty()) continue;
        auto [index, result] = std::move(results.front());
        results.pop_front();
        lock.unlock();
        const bool goOn = finished(index, std::move(result));
        lock.lock();
        stop = stop || !goOn;
        --unhanded;
        roomReady.notify_all();
    }
    lock.unlock();
    for (std::thread& thread : pool)
        thread.join();
}

} // namespace qmr
