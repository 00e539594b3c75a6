#include "catalogue/RdfReader.h"

#include "catalogue/TextFiles.h"
#include "platform/LocalCodePage.h"

#include <QFile>

#include <array>

namespace qmr {
namespace {

const QString kWorkingCopy = QStringLiteral("scrapbook.txt");
const QString kCatalogue = QStringLiteral("scrapbook.rdf");
const QString kRepairAdvice =
    QStringLiteral("Repair that line of scrapbook.rdf (ScrapBook writes one attribute a line, "
                   "value in double quotes, after its <RDF:Description line), or restore the "
                   "catalogue from a backup");

// The offset of the first byte that breaks UTF-8, or -1 when the whole text is valid.
qsizetype firstInvalidUtf8(const QByteArray& bytes) {
    const auto* p = reinterpret_cast<const unsigned char*>(bytes.constData());
    const qsizetype n = bytes.size();
    for (qsizetype i = 0; i < n;) {
        const unsigned char b = p[i];
        int extra = 0;
        unsigned int cp = 0;
        if (b < 0x80) {
            ++i;
            continue;
        }
        if (b >= 0xC2 && b <= 0xDF) {
            extra = 1;
            cp = b & 0x1F;
        } else if (b >= 0xE0 && b <= 0xEF) {
            extra = 2;
            cp = b & 0x0F;
        } else if (b >= 0xF0 && b <= 0xF4) {
            extra = 3;
            cp = b & 0x07;
        } else
            return i;
        if (i + extra >= n) return i;
        for (int k = 1; k <= extra; ++k) {
            if ((p[i + k] & 0xC0) != 0x80) return i;
            cp = (cp << 6) | (p[i + k] & 0x3F);
        }
        const bool overlong = (extra == 2 && cp < 0x800) || (extra == 3 && cp < 0x10000);
        if (overlong || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return i;
        i += extra + 1;
    }
    return -1;
}

int lineOfOffset(const QByteArray& bytes, qsizetype offset) {
    return int(QByteArrayView(bytes.constData(), offset).count('\n')) + 1;
}

struct Attribute {
    QLatin1StringView prefix;
    QString CatalogueItem::*field;
};
const std::array<Attribute, 7> kAttributes = {{
    {QLatin1StringView("NS1:id=\""), &CatalogueItem::id},
    {QLatin1StringView("NS1:type=\""), &CatalogueItem::type},
    {QLatin1StringView("NS1:title=\""), &CatalogueItem::title},
    {QLatin1StringView("NS1:chars=\""), &CatalogueItem::chars},
    {QLatin1StringView("NS1:icon=\""), &CatalogueItem::icon},
    {QLatin1StringView("NS1:source=\""), &CatalogueItem::source},
    {QLatin1StringView("NS1:comment=\""), &CatalogueItem::comment},
}};

bool fail(InputError* error, const QString& file, int line, const QString& problem,
          const QString& advice) {
    if (error) *error = InputError{file, line, problem, advice};
    return false;
}

// Splits the working copy into trimmed lines (ended by CR, CR LF or the end, as a line reader
// of local text sees them), stopping with an error past the limit. One pass, one text a line:
// a catalogue has tens of thousands.
bool readLines(const QString& text, Catalogue& catalogue, const QString& rdfPath,
               const CatalogueLimits& limits, InputError* error) {
    const QStringView all(text);
    const qsizetype n = all.size();
    catalogue.lines.clear();
    catalogue.lines.reserve(n / 32 + 1); // ScrapBook's lines are some fifty characters long
    for (qsizetype start = 0; start < n;) {
        qsizetype end = all.indexOf(u'\r', start);
        if (end < 0) end = n;
        if (catalogue.lines.size() == limits.maxLines)
            return fail(error, rdfPath, limits.maxLines + 1,
                        QStringLiteral("the catalogue has more than %1 lines, the most Quillmere "
                                       "loads with its present limit")
                            .arg(limits.maxLines),
                        QStringLiteral("Raise [Limits] CatalogueLines in %1 to load it")
                            .arg(limits.settingsFile));
        catalogue.lines.append(all.sliced(start, end - start).trimmed().toString());
        start = end + 1;
        if (start < n && all[start] == u'\n') ++start;
    }
    catalogue.lineCount = int(catalogue.lines.size()) - 1;
    return true;
}

bool readItems(Catalogue& catalogue, const QString& rdfPath, const CatalogueLimits& limits,
               InputError* error) {
    int current = -1;
    for (int index = 0; index <= catalogue.lineCount; ++index) {
        const QString& line = catalogue.lines.at(index);
        // Every line the reader looks at starts "NS1:" or "<"; most catalogue lines do.
        if (line.isEmpty() || (line.front() != u'N' && line.front() != u'<')) continue;
        // Attribute lines start "NS1:"; the letter after it picks the one or two to compare.
        const bool attributeLine = line.size() > 4 && line.startsWith(QLatin1String("NS1:"));
        for (const Attribute& attribute : kAttributes) {
            if (!attributeLine) break;
            if (line.at(4) != QLatin1Char(attribute.prefix.at(4)) ||
                !line.startsWith(attribute.prefix))
                continue;
            const QStringView rest = QStringView(line).mid(attribute.prefix.size());
            const int p = int(rest.lastIndexOf(u'"')) + 1; // as GetEndValue counts
            if (p == 0)
                return fail(error, rdfPath, index + 1,
                            QStringLiteral("the value of %1 has no closing double quote")
                                .arg(attribute.prefix.chopped(2)),
                            kRepairAdvice);
            if (current < 0)
                return fail(error, rdfPath, index + 1,
                            QStringLiteral("%1 stands before the first <RDF:Description line")
                                .arg(attribute.prefix.chopped(2)),
                            kRepairAdvice);
            catalogue.items[current].*attribute.field = rest.left(p - 1).toString();
        }
        if (line.startsWith(QLatin1String("<RDF:Description"))) {
            if (++current >= limits.maxItems)
                return fail(error, rdfPath, index + 1,
                            QStringLiteral("the catalogue has more than %1 items, the most "
                                           "Quillmere loads with its present limit")
                                .arg(limits.maxItems),
                            QStringLiteral("Raise [Limits] CatalogueItems in %1 to load it")
                                .arg(limits.settingsFile));
            catalogue.items.append(CatalogueItem{});
        }
    }
    catalogue.itemCount = current + 1;
    for (CatalogueItem& item : catalogue.items)
        item.kind = ItemKindOf(item.type);
    return true;
}

} // namespace

int GetEndValue(const QString& text) {
    return int(text.lastIndexOf(QLatin1Char('"'))) + 1;
}

bool ConvertCatalogueToText(const QString& rdfPath, const QString& txtPath, InputError* error,
                            QString* workingText) {
    QFile file(rdfPath);
    if (!file.open(QIODevice::ReadOnly))
        return fail(error, rdfPath, 0,
                    QStringLiteral("cannot read the catalogue (%1)").arg(file.errorString()),
                    QStringLiteral("Choose a ScrapBook folder that holds scrapbook.rdf"));
    const QByteArray bytes = file.readAll();
    const qsizetype nul = bytes.indexOf('\0');
    if (nul >= 0)
        return fail(error, rdfPath, lineOfOffset(bytes, nul),
                    QStringLiteral("the catalogue holds binary data (a NUL byte), not text"),
                    QStringLiteral("Restore scrapbook.rdf from a backup"));
    // Qt's check is the fast one; the slow one finds where a bad catalogue goes wrong.
    const qsizetype bad = QByteArrayView(bytes).isValidUtf8() ? -1 : firstInvalidUtf8(bytes);
    if (bad >= 0)
        return fail(error, rdfPath, lineOfOffset(bytes, bad),
                    QStringLiteral("the catalogue is not valid UTF-8 (byte 0x%1 at offset %2)")
                        .arg(uchar(bytes.at(bad)), 2, 16, QLatin1Char('0'))
                        .arg(bad),
                    QStringLiteral("Save scrapbook.rdf as UTF-8, as ScrapBook writes it"));
    const QByteArray text = Utf8ToLocalText(bytes, workingText);
    QString message;
    if (!WriteFileAtomically(txtPath, text, &message))
        return fail(error, txtPath, 0, message,
                    QStringLiteral("Make the scrapbook folder writable"));
    return true;
}

// Loads the working copy's bytes; messages about its lines name the scrapbook's scrapbook.rdf,
// the file the user can repair.
bool LoadCatalogueWorkingCopy(const QString& folder, const QString& text, Catalogue& catalogue,
                              InputError* error, const CatalogueLimits& limits) {
    catalogue = Catalogue{};
    catalogue.folder = folder;
    const QString rdfPath = folder + kCatalogue;
    if (readLines(text, catalogue, rdfPath, limits, error) &&
        readItems(catalogue, rdfPath, limits, error))
        return true;
    const QString kept = catalogue.folder;
    catalogue = Catalogue{};
    catalogue.folder = kept;
    return false;
}

bool LoadAllRdfNodes(const QString& folder, Catalogue& catalogue, InputError* error,
                     const CatalogueLimits& limits) {
    const QString txtPath = folder + kWorkingCopy;
    QFile file(txtPath);
    if (!file.open(QIODevice::ReadOnly)) {
        catalogue = Catalogue{};
        catalogue.folder = folder;
        return fail(error, txtPath, 0,
                    QStringLiteral("cannot read the working copy of the catalogue (%1)")
                        .arg(file.errorString()),
                    QStringLiteral("Choose a ScrapBook folder that holds scrapbook.rdf"));
    }
    return LoadCatalogueWorkingCopy(folder, LocalCodePage::decode(file.readAll()), catalogue, error,
                                    limits);
}

bool RecodeAndLoadCatalogue(const QString& folder, Catalogue& catalogue, InputError* error,
                            const CatalogueLimits& limits, const QString& workingFolder) {
    const QString txtPath = (workingFolder.isEmpty() ? folder : workingFolder) + kWorkingCopy;
    QString workingText;
    if (!ConvertCatalogueToText(folder + kCatalogue, txtPath, error, &workingText)) {
        catalogue = Catalogue{};
        return false;
    }
    return LoadCatalogueWorkingCopy(folder, workingText, catalogue, error, limits);
}

} // namespace qmr
