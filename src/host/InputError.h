#pragma once

#include <QString>

namespace qmr {

// Why a catalogue or another input file could not be used: the file, the line when there is
// one (1-based; 0 for none), what is wrong and what the user can do about it.
struct InputError {
    QString file;
    int line = 0;
    QString problem;
    QString advice;

    // "FILE: line N: problem. advice"
    QString text() const;
};

} // namespace qmr
