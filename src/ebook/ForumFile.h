#pragma once

#include "catalogue/LocalTextFile.h"

#include <QString>

namespace qmr {

// "[url=address]title[/url]" for a page, indented two blanks a level; the bare title when the
// address is empty or a local file.
QString ForumLine(int level, const QString& title, const QString& address);

// The forum post file (scrapbook folder + "forum.txt"), open for the length of an e-book build.
class ForumFile {
  public:
    void open(const QString& path) { m_file.open(path); }
    void writeLine(int level, const QString& title, const QString& address);
    bool close(QString* error = nullptr);

  private:
    LocalTextFile m_file;
};

} // namespace qmr
