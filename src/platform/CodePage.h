#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

namespace qmr {

// A converter between text and one named code page ("windows-950", "windows-936",
// "windows-1252", ... or a user's name for one such as "Big5", "cp950", "GB2312"). Characters
// the code page lacks become "?", one per character, so positions in the text do not move;
// byte sequences that are not valid in it decode to U+FFFD, each with its own length.
class CodePage {
  public:
    explicit CodePage(const QString& name);

    // False for a name the converter does not know; encode and decode then give nothing.
    bool isValid() const { return !m_name.isEmpty(); }
    // The converter's own name ("windows-950" for "Big5").
    const QString& name() const { return m_name; }
    // True when both names stand for the same conversion ("cp932" and "Shift_JIS" do not:
    // the first is Windows's, with its extra characters).
    bool sameConversionAs(const CodePage& other) const {
        return isValid() && m_conversion == other.m_conversion;
    }

    QByteArray encode(QStringView text) const;
    // The same bytes, and in `asRead` the text they decode to (each character the code page
    // lacks as "?"), made in one pass: ASCII needs no decoding back.
    QByteArray encode(QStringView text, QString* asRead) const;
    QString decode(QByteArrayView bytes) const;

    // The converter's name for a user's name of a code page; the name itself when it is not
    // one of the familiar ones.
    static QString converterName(const QString& requested);

  private:
    QString m_name;
    QString m_conversion;     // the converter library's own name
    bool m_asciiRuns = false; // ASCII stands for itself and needs no conversion
};

} // namespace qmr
