#pragma once

#include <QDate>
#include <QString>

namespace qmr {

// "yyyymmdd" of `date` followed by the six-digit `counter` (only its last six digits).
QString FormatNodeID(int counter, const QDate& date = QDate::currentDate());

// Hands out item identifiers "yyyymmddnnnnnn": today's date and a counter that restarts each
// day. The last identifier is kept in the application folder's NodeID.txt, so two runs (or two
// copies of the program sharing the folder) continue one sequence.
class NodeIdGenerator {
  public:
    explicit NodeIdGenerator(QString applicationFolder);

    // Reads NodeID.txt, forms the next identifier for `today`, writes it back and returns it.
    // Returns an empty text, with the reason, when NodeID.txt cannot be written.
    QString NewNodeID(const QDate& today = QDate::currentDate(), QString* error = nullptr);

  private:
    QString m_counterFile;
};

} // namespace qmr
