#include "website/PixelBudget.h"

namespace qmr {

PixelBudget::Share::Share(PixelBudget& budget, qint64 pixels)
    : m_budget(budget), m_pixels(qBound<qint64>(0, pixels, budget.m_capacity)) {
    std::unique_lock lock(m_budget.m_mutex);
    m_budget.m_freed.wait(lock, [&] { return m_budget.m_taken + m_pixels <= m_budget.m_capacity; });
    m_budget.m_taken += m_pixels;
}

PixelBudget::Share::~Share() {
    {
        std::lock_guard lock(m_budget.m_mutex);
        m_budget.m_taken -= m_pixels;
    }
    m_budget.m_freed.notify_all();
}

} // namespace qmr
