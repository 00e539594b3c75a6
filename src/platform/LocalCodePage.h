#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringBuilder>
#include <QStringView>

namespace qmr {

// The one converter between text and the local (ANSI) code page. Every file that the system
// writes "in the local code page" goes through encode(); every such file read goes through
// decode(). Characters the code page lacks become "?", one per character, so positions in the
// text do not move.
class LocalCodePage {
  public:
    // The converter's name in force ("windows-950" unless selected otherwise).
    static QString name();

    // The platform's default: the system ANSI code page on Windows, Big5 (windows-950) elsewhere.
    static QString systemDefaultName();
    // False on Windows, where the system's ANSI code page is always used.
    static bool systemDefaultAllowsChoice();

    // Selects the code page by a user's name for it ("Big5", "cp950", "GB2312", "windows-1252"...).
    // An empty name selects the system default. Returns false, with a reason, for a name the
    // converter does not know; the code page in force is then unchanged.
    static bool select(const QString& requested, QString* error = nullptr);

    static QByteArray encode(QStringView text);
    // A text joined with "+" is made whole first.
    template <typename A, typename B> static QByteArray encode(const QStringBuilder<A, B>& text) {
        return encode(QStringView(QString(text)));
    }
    // The bytes, and in `asRead` the text they read back as, in one pass.
    static QByteArray encode(QStringView text, QString* asRead);
    // Byte sequences that are not valid in the code page decode to U+FFFD.
    static QString decode(QByteArrayView bytes);
};

} // namespace qmr
