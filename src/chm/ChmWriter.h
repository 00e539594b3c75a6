#pragma once

#include "chm/Lzx.h"

#include <QByteArrayView>
#include <QDateTime>
#include <QString>

#include <memory>

namespace qmr::chm {

struct ChmWriterOptions {
    quint32 languageId = 0x409;
    LzxSettings lzx;
    int jobs = 0;        // threads compressing; 0: one a core
    QDateTime timestamp; // stored in the header; the time of writing when not valid
};

// Writes a compiled help file. Files are added one after another; the bytes of compressed ones
// stream through the LZX compressor into a temporary file beside the output, so memory stays
// bounded whatever the book's size. finish() assembles the book under a temporary name and
// renames it over the output: a failure leaves the old book, if any, untouched.
class ChmWriter {
  public:
    explicit ChmWriter(const QString& outputPath, const ChmWriterOptions& options = {});
    ~ChmWriter();
    ChmWriter(const ChmWriter&) = delete;
    ChmWriter& operator=(const ChmWriter&) = delete;

    // `path` is the name in the book: "/index.html", "/#SYSTEM". Each name once; "/#ITBITS" is
    // the writer's own, written last to fill the compressed section's last interval. Uncompressed
    // files are kept in memory until finish(): meant for the few small internal ones.
    bool addFile(const QString& path, QByteArrayView bytes, bool compressed = true);
    // A compressed file written a piece at a time: beginFile(), appendToFile() as often as
    // needed, endFile(). No other file may be added in between.
    bool beginFile(const QString& path);
    void appendToFile(QByteArrayView bytes);
    void endFile();
    // A compressed file read from disk piece by piece.
    bool addFileFromDisk(const QString& path, const QString& diskPath);

    bool finish();

    // What went wrong, naming the file; empty while nothing did.
    const QString& errorString() const;

  private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

} // namespace qmr::chm
