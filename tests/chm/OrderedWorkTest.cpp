#include "chm/OrderedWork.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <vector>

namespace qmr::chm {
namespace {

// Results come back in the order the items were given, whatever the threads and however long
// each item takes, also while items are given as results are taken (as a page's files join
// the list when it is packed) and with a window far smaller than the list.
TEST(OrderedWork, ResultsComeInTheOrderGivenWhileTheListGrows) {
    for (int threads : {0, 1, 3}) {
        SCOPED_TRACE(threads);
        OrderedWork<int, int> work(threads, 4, [](const int& item) {
            std::this_thread::sleep_for(std::chrono::microseconds((item * 7919) % 300));
            return item * item;
        });
        std::vector<int> items{1, 2, 3};
        for (int item : items)
            work.add(item);
        for (size_t i = 0; i < items.size(); ++i) {
            EXPECT_EQ(work.take(), items[i] * items[i]);
            // Each of the first 20 items brings two more.
            if (i < 20)
                for (int more : {items[i] * 10, items[i] * 10 + 1}) {
                    items.push_back(more);
                    work.add(more);
                }
        }
        EXPECT_EQ(items.size(), 43u);
    }
}

// A consumer that stops early leaves workers waiting on items never taken; they end with it.
TEST(OrderedWork, StoppingEarlyEndsTheWorkers) {
    OrderedWork<int, int> work(2, 2, [](const int& item) { return item + 1; });
    for (int i = 0; i < 100; ++i)
        work.add(i);
    EXPECT_EQ(work.take(), 1);
}

} // namespace
} // namespace qmr::chm
