#pragma once

#include "chm/Lzx.h"

#include <QByteArray>

#include <vector>

namespace qmr::chm {

// The files under "::DataSpace/" that tell readers how the compressed section is stored.
inline constexpr char kNameListPath[] = "::DataSpace/NameList";
inline constexpr char kContentPath[] = "::DataSpace/Storage/MSCompressed/Content";
inline constexpr char kControlDataPath[] = "::DataSpace/Storage/MSCompressed/ControlData";
inline constexpr char kSpanInfoPath[] = "::DataSpace/Storage/MSCompressed/SpanInfo";
inline constexpr char kTransformListPath[] = "::DataSpace/Storage/MSCompressed/Transform/List";
inline constexpr char kResetTablePath[] =
    "::DataSpace/Storage/MSCompressed/Transform/{7FC28940-9D31-11D0-9B27-00A0C91E9C7C}/"
    "InstanceData/ResetTable";

// The names of the two sections: "Uncompressed" and "MSCompressed".
QByteArray MakeNameList();
// "LZXC" with the reset interval and window size, in 32 KB units.
QByteArray MakeControlData(const LzxSettings& settings);
// The uncompressed length of the compressed section.
QByteArray MakeSpanInfo(quint64 uncompressedLength);
// The GUID of the LZX transform, as text.
QByteArray MakeTransformList();
// Where each 32 KB frame of the compressed section starts in the compressed bytes, then where
// the compressed bytes end.
QByteArray MakeResetTable(quint64 uncompressedLength, quint64 compressedLength,
                          const std::vector<quint64>& frameOffsets);

// True for settings every reader decodes: a window of 64 KB to 2 MB and a power-of-two number
// of frames between resets (1 to 64) that is a whole number of half windows.
bool ReadersAccept(const LzxSettings& settings);

} // namespace qmr::chm
