#pragma once

#include <QByteArray>
#include <QString>

#include <ostream>

#include <gtest/gtest.h>

// Test failures show texts as UTF-8, and bytes with their line ends visible.
inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}
void PrintTo(const QByteArray& bytes, std::ostream* os);

namespace qmr::test {

// A file below tests/golden/, with every `placeholder` replaced by `replacement`. A missing
// golden file fails the test that asks for it.
QByteArray Golden(const QString& relative, const QByteArray& placeholder = {},
                  const QByteArray& replacement = {});
// A file below tests/fixtures/.
QByteArray Fixture(const QString& relative);

// Byte for byte; otherwise names the first line (at "\n") that differs, shown decoded from the
// local code page.
::testing::AssertionResult SameText(const QByteArray& expected, const QByteArray& actual);

} // namespace qmr::test
