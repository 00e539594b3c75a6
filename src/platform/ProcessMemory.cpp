#include "platform/ProcessMemory.h"

#include <cstdlib> // defines __GLIBC__ where the C library is glibc

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace qmr {

void KeepLargeBlocksForReuse() {
#if defined(__GLIBC__)
    // Blocks up to 32 MB (glibc's largest threshold) come from the heap, up to 512 MB of freed
    // heap is kept, and the heap grows 64 MB at a time.
    constexpr int kMegabyte = 1024 * 1024;
    mallopt(M_MMAP_THRESHOLD, 32 * kMegabyte);
    mallopt(M_TRIM_THRESHOLD, 512 * kMegabyte);
    mallopt(M_TOP_PAD, 64 * kMegabyte);
#endif
}

} // namespace qmr
