#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace qmr {

struct EmbeddedFile {
    QString name;
    QByteArray bytes;
};

// The three 20 by 20 type icons, built into the program.
const QList<EmbeddedFile>& TypeIconFiles();

// Writes the type icons into `qmrFolder` (a scrapbook's "data/qmr/"), leaving any icon that is
// already there alone. False with the reason when one cannot be written.
bool WriteTypeIcons(const QString& qmrFolder, QString* error = nullptr);

} // namespace qmr
