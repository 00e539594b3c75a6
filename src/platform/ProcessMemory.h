#pragma once

namespace qmr {

// Keeps the large blocks a build allocates and frees (a catalogue's text, a page list) in the
// process's heap for reuse, instead of handing each back to the system and faulting fresh
// pages in for the next: a tenth of an e-book build's time went to that. Call once, first thing
// in main().
void KeepLargeBlocksForReuse();

} // namespace qmr
