#pragma once

#include <QByteArray>

#include <random>

namespace qmr::test {

// Inputs for the compressor's tests, the same for the same seed on every machine.
using SampleRandom = std::mt19937_64;

// HTML-like prose: tags, words, sentences, some phrases repeated.
QByteArray SampleText(SampleRandom& random, qsizetype size);
// Bytes with no pattern at all.
QByteArray SampleNoise(SampleRandom& random, qsizetype size);
// Long runs of one byte and of short repeated patterns.
QByteArray SampleRuns(SampleRandom& random, qsizetype size);
// 16-byte records drawn from a few hundred, so far matches have offsets in steps of 16: what
// aligned-offset blocks are for.
QByteArray SampleRecords(SampleRandom& random, qsizetype size);
// The example scrapbook's files one after another (all, or only its pictures and video, which
// are compressed already), as a book packs them.
QByteArray ExampleScrapbookFiles(bool picturesOnly = false);

} // namespace qmr::test
