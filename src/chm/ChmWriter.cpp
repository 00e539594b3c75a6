#include "chm/ChmWriter.h"

#include "chm/ByteWriter.h"
#include "chm/CompressedSection.h"
#include "chm/DataSpace.h"
#include "chm/Directory.h"
#include "platform/FileReplace.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QTemporaryFile>

#include <algorithm>
#include <optional>

namespace qmr::chm {

namespace {

constexpr quint32 kHeaderSize = 0x60;
constexpr quint32 kHeaderSectionSize = 0x18;
constexpr quint32 kDirectoryHeaderSize = 0x54;
constexpr qint64 kCopyPiece = 1 << 20;

QByteArray FileHeader(quint32 languageId, quint32 timestamp, quint64 directoryLength) {
    QByteArray bytes;
    ByteWriter out(bytes);
    out.bytes("ITSF");
    out.u32(3); // version
    out.u32(kHeaderSize);
    out.u32(1);
    out.u32BigEndian(timestamp);
    out.u32(languageId);
    out.guid("{7C01FD10-7BAA-11D0-9E0C-00A0C922E6EC}");
    out.guid("{7C01FD11-7BAA-11D0-9E0C-00A0C922E6EC}");
    out.u64(kHeaderSize);
    out.u64(kHeaderSectionSize);
    out.u64(kHeaderSize + kHeaderSectionSize);
    out.u64(directoryLength);
    out.u64(kHeaderSize + kHeaderSectionSize + directoryLength); // where section 0 starts
    return bytes;
}

QByteArray HeaderSection(quint64 fileSize) {
    QByteArray bytes;
    ByteWriter out(bytes);
    out.u32(0x01FE);
    out.u32(0);
    out.u64(fileSize);
    out.u32(0);
    out.u32(0);
    return bytes;
}

QByteArray DirectoryHeader(const DirectoryChunks& chunks, quint32 languageId) {
    QByteArray bytes;
    ByteWriter out(bytes);
    out.bytes("ITSP");
    out.u32(1); // version
    out.u32(kDirectoryHeaderSize);
    out.u32(0x0A);
    out.u32(kDirectoryChunkSize);
    out.u32(kQuickRefDensity);
    out.u32(chunks.depth);
    out.u32(quint32(chunks.rootChunk));
    out.u32(0); // first listing chunk
    out.u32(chunks.listingChunks - 1);
    out.u32(0xFFFFFFFF);
    out.u32(chunks.chunkCount);
    out.u32(languageId);
    out.guid("{5D02926A-212E-11D0-9DF9-00A0C922E6EC}");
    out.u32(kDirectoryHeaderSize);
    for (int i = 0; i < 3; ++i)
        out.u32(0xFFFFFFFF);
    return bytes;
}

} // namespace

struct ChmWriter::Data {
    QString outputPath;
    ChmWriterOptions options;
    QTemporaryFile spill;
    std::optional<CompressedSection> compressed;
    std::vector<DirectoryEntry> entries;
    QSet<QByteArray> names;
    QByteArray uncompressed;
    QByteArray openName; // of the file being written a piece at a time
    quint64 openStart = 0;
    QString error;
    bool finished = false;

    bool fail(const QString& text) {
        if (error.isEmpty()) error = text;
        return false;
    }

    bool begin(const QString& path, QByteArray& name) {
        if (!error.isEmpty()) return false;
        if (finished)
            return fail(QStringLiteral("%1: the book is already written").arg(outputPath));
        name = path.toUtf8();
        if (name.isEmpty() || name.size() > kLongestEntryName)
            return fail(QStringLiteral("%1: a name of %2 bytes cannot be stored")
                            .arg(path)
                            .arg(name.size()));
        if (names.contains(name)) return fail(QStringLiteral("%1: packed twice").arg(path));
        names.insert(name);
        return true;
    }

    void addCompressedEntry(QByteArray name, quint64 start) {
        entries.push_back({std::move(name), 1, start, compressed->position() - start});
    }

    bool copySpillInto(QIODevice& out) {
        if (!spill.seek(0)) return fail(spill.errorString());
        while (!spill.atEnd()) {
            const QByteArray piece = spill.read(kCopyPiece);
            if (piece.isEmpty() || out.write(piece) != piece.size())
                return fail(QStringLiteral("%1: %2").arg(outputPath, out.errorString()));
        }
        return true;
    }

    // The compressed stream comes first in section 0: a reader decoding the last interval may
    // read a few bytes past its end, which must be there.
    void placeSectionZero() {
        const quint64 shift = compressed->compressedLength();
        for (DirectoryEntry& entry : entries)
            if (entry.section == 0) entry.offset += shift;
        const auto add = [this, shift](const char* name, const QByteArray& bytes) {
            entries.push_back(
                {name, 0, shift + quint64(uncompressed.size()), quint64(bytes.size())});
            uncompressed.append(bytes);
        };
        add(kNameListPath, MakeNameList());
        add(kControlDataPath, MakeControlData(options.lzx));
        add(kSpanInfoPath, MakeSpanInfo(compressed->uncompressedLength()));
        add(kTransformListPath, MakeTransformList());
        add(kResetTablePath,
            MakeResetTable(compressed->uncompressedLength(), shift, compressed->frameOffsets()));
        entries.push_back({kContentPath, 0, 0, shift});
    }

    bool writeBook() {
        placeSectionZero();
        std::sort(entries.begin(), entries.end(),
                  [](const DirectoryEntry& a, const DirectoryEntry& b) {
                      return ComesBefore(a.name, b.name);
                  });
        const DirectoryChunks chunks = MakeDirectoryChunks(entries);
        const quint64 directoryLength = kDirectoryHeaderSize + quint64(chunks.bytes.size());
        const quint64 fileSize = kHeaderSize + kHeaderSectionSize + directoryLength +
                                 quint64(uncompressed.size()) + compressed->compressedLength();
        const QDateTime when =
            options.timestamp.isValid() ? options.timestamp : QDateTime::currentDateTimeUtc();
        // Written beside the book and renamed over it when whole, as every generated file is,
        // without waiting for the disk: a failed compile leaves the old book as it was.
        const QFileInfo old(outputPath);
        if (old.exists() && !old.permission(QFileDevice::WriteOwner))
            return fail(QStringLiteral("%1: it is read-only").arg(outputPath));
        QTemporaryFile out(old.absoluteFilePath() + QStringLiteral(".XXXXXX.tmp"));
        if (!out.open()) return fail(QStringLiteral("%1: %2").arg(outputPath, out.errorString()));
        out.write(
            FileHeader(options.languageId, quint32(when.toSecsSinceEpoch()), directoryLength));
        out.write(HeaderSection(fileSize));
        out.write(DirectoryHeader(chunks, options.languageId));
        out.write(chunks.bytes);
        if (!copySpillInto(out)) return false;
        out.write(uncompressed);
        if (!out.flush() || out.error() != QFileDevice::NoError)
            return fail(QStringLiteral("%1: %2").arg(outputPath, out.errorString()));
        out.setPermissions(old.exists() ? old.permissions()
                                        : QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                              QFileDevice::ReadGroup | QFileDevice::ReadOther);
        out.close();
        if (!ReplaceFile(out.fileName(), outputPath))
            return fail(QStringLiteral("%1: it cannot be replaced").arg(outputPath));
        out.setAutoRemove(false);
        return true;
    }
};

ChmWriter::ChmWriter(const QString& outputPath, const ChmWriterOptions& options)
    : m_data(std::make_unique<Data>()) {
    Data& d = *m_data;
    d.outputPath = outputPath;
    d.options = options;
    if (!ReadersAccept(options.lzx)) {
        d.fail(QStringLiteral("%1: LZX window of 2^%2 bytes with %3 frames between resets is not "
                              "readable by every reader")
                   .arg(outputPath)
                   .arg(options.lzx.windowBits)
                   .arg(options.lzx.framesPerReset));
        return;
    }
    const QFileInfo output(outputPath);
    d.spill.setFileTemplate(output.absolutePath() + QLatin1Char('/') + output.fileName() +
                            QStringLiteral(".XXXXXX.tmp"));
    if (!d.spill.open()) {
        d.fail(QStringLiteral("%1: cannot write in its folder: %2")
                   .arg(outputPath, d.spill.errorString()));
        return;
    }
    d.compressed.emplace(options.lzx, options.jobs, d.spill);
}

ChmWriter::~ChmWriter() = default;

bool ChmWriter::addFile(const QString& path, QByteArrayView bytes, bool compressed) {
    Data& d = *m_data;
    QByteArray name;
    if (!d.begin(path, name)) return false;
    if (!compressed) {
        d.entries.push_back({name, 0, quint64(d.uncompressed.size()), quint64(bytes.size())});
        d.uncompressed.append(bytes);
        return true;
    }
    const quint64 start = d.compressed->position();
    d.compressed->append(bytes);
    d.addCompressedEntry(std::move(name), start);
    return true;
}

bool ChmWriter::beginFile(const QString& path) {
    Data& d = *m_data;
    if (!d.begin(path, d.openName)) return false;
    d.openStart = d.compressed->position();
    return true;
}

void ChmWriter::appendToFile(QByteArrayView bytes) {
    m_data->compressed->append(bytes);
}

void ChmWriter::endFile() {
    Data& d = *m_data;
    d.addCompressedEntry(std::move(d.openName), d.openStart);
}

bool ChmWriter::addFileFromDisk(const QString& path, const QString& diskPath) {
    Data& d = *m_data;
    QByteArray name;
    if (!d.begin(path, name)) return false;
    QFile file(diskPath);
    if (!file.open(QIODevice::ReadOnly))
        return d.fail(QStringLiteral("%1: %2").arg(diskPath, file.errorString()));
    const quint64 start = d.compressed->position();
    while (!file.atEnd()) {
        const QByteArray piece = file.read(kCopyPiece);
        if (piece.isEmpty() && file.error() != QFileDevice::NoError)
            return d.fail(QStringLiteral("%1: %2").arg(diskPath, file.errorString()));
        d.compressed->append(piece);
    }
    d.addCompressedEntry(std::move(name), start);
    return true;
}

bool ChmWriter::finish() {
    Data& d = *m_data;
    if (!d.error.isEmpty()) return false;
    if (d.finished) return true;
    // Readers decode whole reset intervals, and some insist that the last frame's bytes be used
    // up exactly: #ITBITS, whose zeros no reader looks at, fills the last interval.
    const QByteArray padding(d.compressed->bytesToIntervalEnd(), '\0');
    if (!addFile(QStringLiteral("/#ITBITS"), padding)) return false;
    d.finished = true;
    if (!d.compressed->finish())
        return d.fail(
            QStringLiteral("%1: %2").arg(d.spill.fileName(), d.compressed->errorString()));
    return d.writeBook();
}

const QString& ChmWriter::errorString() const {
    return m_data->error;
}

} // namespace qmr::chm
