#pragma once

#include <QtGlobal>

#include <condition_variable>
#include <mutex>

namespace qmr {

// Bounds how many pixels the workers decode at once, so that a few large pictures cannot all
// be in memory together. A worker takes its picture's share before decoding and gives it back
// after (the Share does both); a picture larger than the whole budget waits to run alone.
class PixelBudget {
  public:
    explicit PixelBudget(qint64 pixels) : m_capacity(qMax<qint64>(pixels, 1)) {}

    class Share {
      public:
        Share(PixelBudget& budget, qint64 pixels);
        ~Share();
        Share(const Share&) = delete;
        Share& operator=(const Share&) = delete;

      private:
        PixelBudget& m_budget;
        qint64 m_pixels;
    };

  private:
    std::mutex m_mutex;
    std::condition_variable m_freed;
    const qint64 m_capacity;
    qint64 m_taken = 0;
};

} // namespace qmr
