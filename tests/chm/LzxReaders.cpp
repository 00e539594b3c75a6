#include "chm/LzxReaders.h"

#include <lzx.h>
#include <mspack.h>

#include <cstdlib>
#include <cstring>

// libmspack's static library exports its LZX decoder without installing the header that
// declares it; these are its declarations as of libmspack 0.11.
extern "C" {
struct lzxd_stream;
lzxd_stream* lzxd_init(mspack_system* system, mspack_file* input, mspack_file* output,
                       int window_bits, int reset_interval, int input_buffer_size,
                       off_t output_length, char is_delta);
int lzxd_decompress(lzxd_stream* lzx, off_t out_bytes);
void lzxd_free(lzxd_stream* lzx);
}

namespace qmr::test {
namespace {

// The files libmspack reads and writes, in memory. The first member lets an mspack_file
// pointer stand for the whole object.
struct MemoryFile {
    int unused = 0;
    const QByteArray* input = nullptr;
    qsizetype position = 0;
    QByteArray* output = nullptr;
};

int ReadMemory(mspack_file* file, void* buffer, int bytes) {
    auto* memory = reinterpret_cast<MemoryFile*>(file);
    const qsizetype count = std::min<qsizetype>(bytes, memory->input->size() - memory->position);
    std::memcpy(buffer, memory->input->constData() + memory->position, size_t(count));
    memory->position += count;
    return int(count);
}

int WriteMemory(mspack_file* file, void* buffer, int bytes) {
    reinterpret_cast<MemoryFile*>(file)->output->append(static_cast<const char*>(buffer), bytes);
    return bytes;
}

void* Allocate(mspack_system*, size_t bytes) {
    return std::malloc(bytes);
}
void Free(void* pointer) {
    std::free(pointer);
}
void Copy(void* from, void* to, size_t bytes) {
    std::memmove(to, from, bytes);
}
void Message(mspack_file*, const char*, ...) {}

} // namespace

Decoded DecodeWithLibmspack(const QByteArray& compressed, qint64 outputLength,
                            const chm::LzxSettings& settings) {
    Decoded result;
    mspack_system system = {};
    system.read = ReadMemory;
    system.write = WriteMemory;
    system.alloc = Allocate;
    system.free = Free;
    system.copy = Copy;
    system.message = Message;
    // Asked for an output that ends exactly at a reset, the decoder goes on to read the next
    // interval's first bits; in a book other data follows the section, so let some follow here.
    const QByteArray stream = compressed + QByteArray(16, '\0');
    MemoryFile input;
    input.input = &stream;
    MemoryFile output;
    output.output = &result.bytes;
    lzxd_stream* lzx = lzxd_init(&system, reinterpret_cast<mspack_file*>(&input),
                                 reinterpret_cast<mspack_file*>(&output), settings.windowBits,
                                 settings.framesPerReset, 4096, off_t(outputLength), 0);
    if (!lzx) {
        result.error = QStringLiteral("libmspack refused the settings");
        return result;
    }
    const int status = lzxd_decompress(lzx, off_t(outputLength));
    lzxd_free(lzx);
    if (status != MSPACK_ERR_OK)
        result.error = QStringLiteral("libmspack error %1 after %2 bytes")
                           .arg(status)
                           .arg(result.bytes.size());
    return result;
}

Decoded DecodeWithChmlib(const chm::LzxInterval& compressed, const chm::LzxSettings& settings) {
    Decoded result;
    LZXstate* state = LZXinit(settings.windowBits);
    const qsizetype frames = qsizetype(compressed.frameStarts.size());
    for (qsizetype frame = 0; frame < frames && result.error.isEmpty(); ++frame) {
        const qint64 start = compressed.frameStarts[size_t(frame)];
        const qint64 end = frame + 1 < frames ? compressed.frameStarts[size_t(frame + 1)]
                                              : compressed.bytes.size();
        // chmlib reads a little past a frame's end, into what its own buffer holds there.
        QByteArray in = compressed.bytes.mid(start, end - start) + QByteArray(64, '\0');
        QByteArray out(chm::kLzxFrameSize, '\0');
        if (frame % settings.framesPerReset == 0) LZXreset(state);
        const int status = LZXdecompress(state, reinterpret_cast<unsigned char*>(in.data()),
                                         reinterpret_cast<unsigned char*>(out.data()),
                                         int(end - start), int(out.size()));
        if (status != DECR_OK)
            result.error = QStringLiteral("chmlib error %1 in frame %2").arg(status).arg(frame);
        result.bytes += out;
    }
    LZXteardown(state);
    return result;
}

::testing::AssertionResult ReadersRestore(const QByteArray& input,
                                          const chm::LzxSettings& settings) {
    return ReadersRestore(input, chm::LzxCompressor(settings).compress(input), settings);
}

::testing::AssertionResult ReadersRestore(const QByteArray& input,
                                          const chm::LzxInterval& compressed,
                                          const chm::LzxSettings& settings) {
    const auto& starts = compressed.frameStarts;
    const qsizetype frames = (input.size() + chm::kLzxFrameSize - 1) / chm::kLzxFrameSize;
    if (qsizetype(starts.size()) != frames)
        return ::testing::AssertionFailure()
               << starts.size() << " frame starts for " << frames << " frames";
    if (compressed.bytes.size() % 2 != 0)
        return ::testing::AssertionFailure() << "an odd length of " << compressed.bytes.size();
    for (size_t i = 0; i < starts.size(); ++i) {
        const qint64 previous = i == 0 ? -1 : starts[i - 1];
        if (starts[i] <= previous || starts[i] % 2 != 0 || starts[i] >= compressed.bytes.size() ||
            (i == 0 && starts[i] != 0))
            return ::testing::AssertionFailure() << "frame " << i << " starts at " << starts[i];
    }
    // Told the input's length, libmspack stops where it ends; chmlib, and libmspack told the
    // whole frames' length, decode the last frame's padding too.
    QByteArray padded = input;
    padded.append(frames * chm::kLzxFrameSize - input.size(), '\0');
    const std::pair<QByteArray, Decoded> readings[] = {
        {input, DecodeWithLibmspack(compressed.bytes, input.size(), settings)},
        {padded, DecodeWithLibmspack(compressed.bytes, padded.size(), settings)},
        {padded, DecodeWithChmlib(compressed, settings)},
    };
    for (const auto& [expected, decoded] : readings) {
        if (!decoded.error.isEmpty())
            return ::testing::AssertionFailure() << decoded.error.toStdString();
        if (decoded.bytes != expected) {
            qsizetype at = 0;
            while (at < std::min(expected.size(), decoded.bytes.size()) &&
                   expected[at] == decoded.bytes[at])
                ++at;
            return ::testing::AssertionFailure()
                   << "decoded " << decoded.bytes.size() << " bytes of " << expected.size()
                   << ", the first difference at " << at;
        }
    }
    return ::testing::AssertionSuccess();
}

} // namespace qmr::test
