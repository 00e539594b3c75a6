#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

namespace qmr {

// Every read and write of an ini file goes through this class. Callers set Path, Section and
// Key before each access; Default is left alone by most of them, so whatever it was last set
// to stays in force for every later read through the same instance (the shared settings
// object relies on that carry-over).
class cInifile {
  public:
    QString Path;
    QString Section;
    QString Key;
    QString Default;

    int32_t LastReturnCode() const { return m_lastReturnCode; }
    bool Success() const { return m_lastReturnCode != 0; }

    // Reads Section/Key from Path (Default when missing), at most 254 characters. A read never
    // reports failure: LastReturnCode becomes -1.
    QString Value();
    // Writes Section/Key = sValue with every NUL removed; creates the file and the section.
    void setValue(const QString& sValue);

    // Marks the last operation failed, for operations made of several writes.
    void setFailed() { m_lastReturnCode = 0; }

    // The section names of the file, each followed by a NUL.
    QString Sections() const;
    // The non-empty section names of the file, in file order.
    void EnumerateAllSections(QStringList& sSections, int& iCount) const;

    // The text as a 32-bit integer (blanks, signs, "&H" hex and decimals rounded half to even
    // as a user's tools write them), or lDefault when it does not convert.
    static int32_t CLngDefault(const QString& sString, int32_t lDefault);

  private:
    int32_t m_lastReturnCode = 0;
};

// Removes one trailing NUL character, if there is one.
void StripTrailingNul(QString& name);

// A one-shot read on a fresh instance (empty Default). Returns Success and the value.
bool IniRead(const QString& iniPath, const QString& section, const QString& key, QString& value);

} // namespace qmr
