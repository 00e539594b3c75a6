#pragma once

#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include <cstdio>

namespace qmr::bench {

// Runs the benchmarks with the application folder in a temporary folder, so a run never
// touches the user's own settings, and hands `scrapbooks` a temporary folder for the generated
// scrapbooks for the length of the run.
inline int RunInTemporaryHome(int argc, char** argv, QTemporaryDir*& scrapbooks) {
    QTemporaryDir home;
    QTemporaryDir folders;
    if (!home.isValid() || !folders.isValid()) {
        std::fprintf(stderr, "cannot make a temporary folder\n");
        return 1;
    }
    qputenv("QUILLMERE_HOME", home.path().toLocal8Bit() + '/');
    scrapbooks = &folders;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    scrapbooks = nullptr;
    return 0;
}

} // namespace qmr::bench
