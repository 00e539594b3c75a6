#pragma once

#include "chm/Lzx.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <deque>
#include <future>
#include <memory>
#include <vector>

class QIODevice;
class QThreadPool;

namespace qmr::chm {

// The book's compressed section, written as a stream: file bytes go in one after another and
// are cut into reset intervals, which worker threads compress while more bytes arrive. Finished
// intervals are written in order to `spill`; only a few intervals are in memory at any time,
// whatever the size of the book.
class CompressedSection {
  public:
    // `jobs` worker threads (0: one a core); `spill` is open for writing.
    CompressedSection(const LzxSettings& settings, int jobs, QIODevice& spill);
    ~CompressedSection();
    CompressedSection(const CompressedSection&) = delete;
    CompressedSection& operator=(const CompressedSection&) = delete;

    void append(QByteArrayView bytes);
    // Uncompressed bytes appended so far: where the next file starts.
    quint64 position() const { return m_position; }

    // Bytes still to append before the section ends on a reset interval.
    qsizetype bytesToIntervalEnd() const;

    // Compresses what is left and waits for every interval to be written. False when the spill
    // file could not be.
    bool finish();

    const LzxSettings& settings() const { return m_settings; }
    quint64 uncompressedLength() const { return m_position; }
    quint64 compressedLength() const { return m_compressedLength; }
    // Where each 32 KB frame starts in the compressed stream.
    const std::vector<quint64>& frameOffsets() const { return m_frameOffsets; }
    const QString& errorString() const { return m_error; }

  private:
    void submitPending();
    void writeOldest();

    LzxSettings m_settings;
    QIODevice& m_spill;
    std::unique_ptr<QThreadPool> m_pool;
    std::deque<std::future<LzxInterval>> m_inFlight;
    size_t m_maxInFlight = 2;
    QByteArray m_pending;
    quint64 m_position = 0;
    quint64 m_compressedLength = 0;
    std::vector<quint64> m_frameOffsets;
    QString m_error;
};

} // namespace qmr::chm
