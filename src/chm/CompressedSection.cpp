#include "chm/CompressedSection.h"

#include <QIODevice>
#include <QThread>
#include <QThreadPool>

#include <algorithm>

namespace qmr::chm {

namespace {

// Each worker thread keeps one compressor, and with it its tables, from interval to interval.
LzxInterval CompressOnThisThread(QByteArrayView input, const LzxSettings& settings) {
    thread_local std::unique_ptr<LzxCompressor> compressor;
    thread_local LzxSettings madeFor;
    if (!compressor || madeFor.windowBits != settings.windowBits ||
        madeFor.framesPerReset != settings.framesPerReset) {
        compressor = std::make_unique<LzxCompressor>(settings);
        madeFor = settings;
    }
    return compressor->compress(input);
}

} // namespace

CompressedSection::CompressedSection(const LzxSettings& settings, int jobs, QIODevice& spill)
    : m_settings(settings), m_spill(spill), m_pool(std::make_unique<QThreadPool>()) {
    const int threads = jobs > 0 ? jobs : std::max(1, QThread::idealThreadCount());
    m_pool->setMaxThreadCount(threads);
    // Two intervals a thread keep every core busy while the oldest is being written.
    m_maxInFlight = size_t(2 * threads);
    m_pending.reserve(m_settings.intervalSize());
}

CompressedSection::~CompressedSection() {
    m_pool->waitForDone();
}

void CompressedSection::append(QByteArrayView bytes) {
    const qsizetype interval = m_settings.intervalSize();
    while (!bytes.isEmpty()) {
        const qsizetype take = std::min(bytes.size(), interval - m_pending.size());
        m_pending.append(bytes.first(take));
        bytes = bytes.sliced(take);
        m_position += quint64(take);
        if (m_pending.size() == interval) submitPending();
    }
}

void CompressedSection::submitPending() {
    while (m_inFlight.size() >= m_maxInFlight)
        writeOldest();
    auto task = std::make_shared<std::packaged_task<LzxInterval()>>(
        [input = std::move(m_pending), settings = m_settings] {
            return CompressOnThisThread(input, settings);
        });
    m_inFlight.push_back(task->get_future());
    m_pool->start([task] { (*task)(); });
    m_pending = QByteArray();
    m_pending.reserve(m_settings.intervalSize());
}

void CompressedSection::writeOldest() {
    const LzxInterval interval = m_inFlight.front().get();
    m_inFlight.pop_front();
    for (qint64 start : interval.frameStarts)
        m_frameOffsets.push_back(m_compressedLength + quint64(start));
    m_compressedLength += quint64(interval.bytes.size());
    if (m_error.isEmpty() && m_spill.write(interval.bytes) != interval.bytes.size())
        m_error = m_spill.errorString();
}

qsizetype CompressedSection::bytesToIntervalEnd() const {
    return m_pending.isEmpty() ? 0 : m_settings.intervalSize() - m_pending.size();
}

bool CompressedSection::finish() {
    if (!m_pending.isEmpty()) submitPending();
    while (!m_inFlight.empty())
        writeOldest();
    return m_error.isEmpty();
}

} // namespace qmr::chm
