#include "chm/LzxReaders.h"

#include <lzx.h>
#include <mspack.h>

#include <algorithm>
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

// What a decoder gave, or why it refused the stream.
struct Decoded {
    QByteArray bytes;
    std::string error;
};

// libmspack's files in memory: a pointer to one stands for an mspack_file.
struct MemoryFile {
    QByteArray bytes;
    qsizetype position = 0;
};

void IgnoreMessage(mspack_file*, const char*, ...) {}

Decoded DecodeWithLibmspack(const QByteArray& compressed, qint64 outputLength,
                            const chm::LzxSettings& settings) {
    mspack_system system = {};
    system.read = [](mspack_file* file, void* buffer, int bytes) {
        auto* in = reinterpret_cast<MemoryFile*>(file);
        const qsizetype count = std::min<qsizetype>(bytes, in->bytes.size() - in->position);
        std::memcpy(buffer, in->bytes.constData() + in->position, size_t(count));
        in->position += count;
        return int(count);
    };
    system.write = [](mspack_file* file, void* buffer, int bytes) {
        reinterpret_cast<MemoryFile*>(file)->bytes.append(static_cast<char*>(buffer), bytes);
        return bytes;
    };
    system.alloc = [](mspack_system*, size_t bytes) { return std::malloc(bytes); };
    system.free = [](void* pointer) { std::free(pointer); };
    system.copy = [](void* from, void* to, size_t bytes) { std::memmove(to, from, bytes); };
    system.message = IgnoreMessage;
    // Asked for an output that ends exactly at a reset, the decoder goes on to read the next
    // interval's first bits; in a book other data follows the section, so let some follow here.
    MemoryFile in{compressed + QByteArray(16, '\0')};
    MemoryFile out;
    lzxd_stream* lzx = lzxd_init(&system, reinterpret_cast<mspack_file*>(&in),
                                 reinterpret_cast<mspack_file*>(&out), settings.windowBits,
                                 settings.framesPerReset, 4096, off_t(outputLength), 0);
    const int status = lzx ? lzxd_decompress(lzx, off_t(outputLength)) : -1;
    lzxd_free(lzx);
    if (status == MSPACK_ERR_OK) return {out.bytes, {}};
    return {{},
            "libmspack error " + std::to_string(status) + " after " +
                std::to_string(out.bytes.size()) + " bytes"};
}

Decoded DecodeWithChmlib(const chm::LzxInterval& compressed, const chm::LzxSettings& settings) {
    Decoded result;
    LZXstate* state = LZXinit(settings.windowBits);
    const size_t frames = compressed.frameStarts.size();
    for (size_t frame = 0; frame < frames && result.error.empty(); ++frame) {
        const qint64 start = compressed.frameStarts[frame];
        const qint64 end =
            frame + 1 < frames ? compressed.frameStarts[frame + 1] : compressed.bytes.size();
        // chmlib reads a little past a frame's end, into what its own buffer holds there.
        QByteArray in = compressed.bytes.mid(start, end - start) + QByteArray(64, '\0');
        QByteArray out(chm::kLzxFrameSize, '\0');
        if (frame % size_t(settings.framesPerReset) == 0) LZXreset(state);
        if (LZXdecompress(state, reinterpret_cast<unsigned char*>(in.data()),
                          reinterpret_cast<unsigned char*>(out.data()), int(end - start),
                          int(out.size())) != DECR_OK)
            result.error = "chmlib refused frame " + std::to_string(frame);
        result.bytes += out;
    }
    LZXteardown(state);
    return result;
}

} // namespace

::testing::AssertionResult ReadersRestore(const QByteArray& input,
                                          const chm::LzxInterval& compressed,
                                          const chm::LzxSettings& settings) {
    const auto& starts = compressed.frameStarts;
    const qsizetype frames = (input.size() + chm::kLzxFrameSize - 1) / chm::kLzxFrameSize;
    if (qsizetype(starts.size()) != frames || compressed.bytes.size() % 2 != 0)
        return ::testing::AssertionFailure() << starts.size() << " frame starts for " << frames
                                             << " frames in " << compressed.bytes.size();
    for (size_t i = 0; i < starts.size(); ++i)
        if (starts[i] % 2 != 0 || starts[i] >= compressed.bytes.size() ||
            starts[i] <= (i == 0 ? -1 : starts[i - 1]) || (i == 0 && starts[i] != 0))
            return ::testing::AssertionFailure() << "frame " << i << " starts at " << starts[i];
    QByteArray padded = input;
    padded.append(frames * chm::kLzxFrameSize - input.size(), '\0');
    const std::pair<QByteArray, Decoded> readings[] = {
        {input, DecodeWithLibmspack(compressed.bytes, input.size(), settings)},
        {padded, DecodeWithLibmspack(compressed.bytes, padded.size(), settings)},
        {padded, DecodeWithChmlib(compressed, settings)},
    };
    for (const auto& [expected, decoded] : readings) {
        if (!decoded.error.empty()) return ::testing::AssertionFailure() << decoded.error;
        if (decoded.bytes != expected)
            return ::testing::AssertionFailure()
                   << "decoded " << decoded.bytes.size() << " bytes for " << expected.size()
                   << ", the first wrong at "
                   << std::mismatch(expected.begin(), expected.end(), decoded.bytes.begin(),
                                    decoded.bytes.end())
                              .first -
                          expected.begin();
    }
    return ::testing::AssertionSuccess();
}

} // namespace qmr::test
