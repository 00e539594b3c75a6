#pragma once

// What the picture benchmarks share: photos that cost a decoder what a camera's photos cost,
// and processor time that other work on the machine does not inflate.

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <cstdio>

#include <sys/resource.h>

namespace qmr::bench {

// The value after `name` among a timing program's arguments, else `fallback`.
inline QString Option(const QStringList& arguments, const char* name, const QString& fallback) {
    const qsizetype at = arguments.indexOf(QLatin1String(name));
    return at > 0 && at + 1 < arguments.size() ? arguments.at(at + 1) : fallback;
}

// The number of different photos drawn; scrapbooks repeat them.
inline constexpr int kDrawnPhotos = 8;

inline bool RunToEnd(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    return process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

// folder + "photo1.jpg" to "photo8.jpg": 3000x2000 JPEGs of smooth colour under grain (about
// 3.5 MB each), drawn by ImageMagick when missing.
inline bool DrawPhotos(const QString& folder) {
    QDir().mkpath(folder);
    for (int i = 1; i <= kDrawnPhotos; ++i) {
        const QString path = folder + QStringLiteral("photo%1.jpg").arg(i);
        if (QFile::exists(path)) continue;
        std::printf("drawing %s\n", qPrintable(path));
        if (!RunToEnd(QFile::exists("/usr/bin/convert") ? "/usr/bin/convert" : "convert",
                      {"-seed", QString::number(i), "-size", "750x500", "plasma:fractal", "-resize",
                       "3000x2000!", "-attenuate", "0.5", "+noise", "Gaussian", "-quality", "90",
                       path}))
            return false;
    }
    return true;
}

// Processor seconds, user and system, of this process (RUSAGE_SELF) or of its finished
// children (RUSAGE_CHILDREN).
inline double CpuSeconds(int who) {
    rusage usage{};
    getrusage(who, &usage);
    const auto seconds = [](timeval t) { return t.tv_sec + t.tv_usec / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

} // namespace qmr::bench
