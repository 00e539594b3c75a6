#include "chm/ScaleRootCode.h"

#include <QByteArray>

#include <gtest/gtest.h>

using namespace qmr::chm;

namespace {

QByteArray Bytes(const std::vector<std::uint8_t>& out) {
    return QByteArray(reinterpret_cast<const char*>(out.data()), qsizetype(out.size()));
}

} // namespace

TEST(ScaleRootCode, WritesTheBitsTheReadersTake) {
    // root 2: 0 -> 0|00, 3 -> 0|11, 4 -> 10|00, 7 -> 10|11, 8 -> 110|000, then padding.
    std::vector<std::uint8_t> out;
    {
        ScaleRootWriter writer(out);
        for (quint32 value : {0u, 3u, 4u, 7u, 8u})
            writer.write(value, 2);
    }
    EXPECT_EQ(Bytes(out), QByteArray::fromHex("0e2f00"));

    // root 0: 0 -> 0, 1 -> 10, 2 -> 110|0, 5 -> 1110|01; each record starts on a new byte.
    out.clear();
    ScaleRootWriter writer(out);
    writer.write(0, 0);
    writer.write(1, 0);
    writer.padToByte();
    writer.write(2, 0);
    writer.write(5, 0);
    writer.padToByte();
    writer.padToByte();           // nothing pending: no empty byte
    writer.write(0xFFFFFFFF, 0);  // 32 ones, a 0, 31 ones
    writer.write(0xFFFFFFFF, 32); // a 0, 32 ones
    writer.padToByte();
    EXPECT_EQ(Bytes(out).toHex(), "40ce40ffffffff7fffffff7fffffff80");
}

TEST(ScaleRootCode, BestRootWritesFewestBits) {
    BitLengthCounts steps;
    for (int i = 0; i < 100; ++i)
        steps.add(0); // root 0 writes a 0 in one bit, root 1 in two
    steps.add(1000);
    EXPECT_EQ(steps.bestRoot(), 0);

    BitLengthCounts places;
    for (quint32 value = 16; value < 32; ++value)
        places.add(value); // all of bit length 5: roots 4 and 5 cost 6 bits, 4 comes first
    EXPECT_EQ(places.bestRoot(), 4);

    EXPECT_EQ(BitLengthCounts().bestRoot(), 0);
}
