#pragma once

#include <QByteArray>
#include <QString>

namespace qmr {

// What the program registers so that the desktop opens ScrapBook catalogues (.rdf files) with
// it: the program, which is started as `program File=<catalogue>`, and its icon.
struct DesktopIntegration {
    QString programPath;
    QByteArray iconPng; // installed for the desktop where the system has none of ours
};

// Whether another program that already opens .rdf files keeps doing so.
enum class AssociationClaim {
    KeepOtherDefault, // at every start: never silently take .rdf away from another program
    TakeDefault,      // the user asked for it
};

struct AssociationReport {
    bool registered = false; // the program is known to the desktop as one that opens .rdf
    bool isDefault = false;  // double-clicking a .rdf file now starts it
    QString otherDefault;    // the program that stays the default, when one does
    QString problem;         // what could not be written, and where
};

// On Windows the keys below HKEY_CURRENT_USER\Software\Classes ("Quillmere" with its open
// command and icon, ".rdf" naming it). Elsewhere a desktop entry (quillmere.desktop) in the
// user's applications folder, the catalogue type (scrapbook.rdf) in the user's MIME database
// and, in mimeapps.list, the default for both types. Files whose content is already right are
// not rewritten.
AssociationReport RegisterCatalogueAssociation(const DesktopIntegration& integration,
                                               AssociationClaim claim);

// The MIME types registered for catalogues: every .rdf file, and a ScrapBook catalogue.
inline constexpr const char* kRdfMimeType = "application/rdf+xml";
inline constexpr const char* kCatalogueMimeType = "application/x-scrapbook-catalogue";
// The desktop entry's name.
inline constexpr const char* kDesktopEntryName = "quillmere.desktop";

} // namespace qmr
