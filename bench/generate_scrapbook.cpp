// Writes a synthetic ScrapBook collection for trying builders and readers on large catalogues.

#include "ScrapbookGenerator.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>

namespace {

bool readNumber(const QCommandLineParser& parser, const QString& name, qint64 low, qint64 high,
                qint64& value, QTextStream& err) {
    if (!parser.isSet(name)) return true;
    bool ok = false;
    value = parser.value(name).toLongLong(&ok);
    if (ok && value >= low && value <= high) return true;
    err << "--" << name << " must be a whole number from " << low << " to " << high << ", not \""
        << parser.value(name) << "\"\n";
    return false;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("qmr-generate-scrapbook"));
    QTextStream out(stdout);
    QTextStream err(stderr);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Writes OUT_FOLDER/scrapbook.rdf, a synthetic ScrapBook catalogue in "
                       "ScrapBook's own layout, and with --item-folders its data/ folders."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("items"), QStringLiteral("Items in all, folders included."),
         QStringLiteral("N")},
        {QStringLiteral("folders"), QStringLiteral("How many of the items are folders."),
         QStringLiteral("M")},
        {QStringLiteral("lines"),
         QStringLiteral("Instead of --items and --folders: the largest scrapbook whose working "
                        "copy reads as at most L lines (80001 is the reader's default limit)."),
         QStringLiteral("L")},
        {QStringLiteral("depth"), QStringLiteral("Deepest folder nesting (default 4)."),
         QStringLiteral("D")},
        {QStringLiteral("item-folders"),
         QStringLiteral("Also write data/<id>/index.html and index.dat.")},
        {QStringLiteral("seed"), QStringLiteral("Seed of the generator (default 1)."),
         QStringLiteral("S")},
        {QStringLiteral("ascii"), QStringLiteral("ASCII titles only, no Chinese words.")},
    });
    parser.addPositionalArgument(QStringLiteral("OUT_FOLDER"),
                                 QStringLiteral("Folder to write the scrapbook into."));
    parser.process(app);

    const QStringList positional = parser.positionalArguments();
    if (positional.size() != 1) {
        err << "Give exactly one OUT_FOLDER.\n" << parser.helpText();
        return 2;
    }
    const bool byLines = parser.isSet(QStringLiteral("lines"));
    if (byLines ==
        (parser.isSet(QStringLiteral("items")) || parser.isSet(QStringLiteral("folders")))) {
        err << "Give either --items (and --folders) or --lines.\n";
        return 2;
    }

    qint64 items = 0, folders = 0, lines = 0, depth = 4, seed = 1;
    if (!readNumber(parser, QStringLiteral("items"), 1, 100'000'000, items, err) ||
        !readNumber(parser, QStringLiteral("folders"), 0, 100'000'000, folders, err) ||
        !readNumber(parser, QStringLiteral("lines"), 1, 900'000'000, lines, err) ||
        !readNumber(parser, QStringLiteral("depth"), 1, 1000, depth, err) ||
        !readNumber(parser, QStringLiteral("seed"), 0, 0xFFFFFFFFll, seed, err))
        return 2;

    qmr::GeneratorOptions options;
    if (byLines) {
        options = qmr::ForLineBudget(lines);
    } else {
        options.items = int(items);
        options.folders = int(folders);
    }
    options.maxDepth = int(depth);
    options.seed = quint32(seed);
    options.itemFolders = parser.isSet(QStringLiteral("item-folders"));
    options.cjkTitles = !parser.isSet(QStringLiteral("ascii"));

    QString folder = QDir::fromNativeSeparators(positional.first());
    if (!folder.endsWith(QLatin1Char('/'))) folder += QLatin1Char('/');
    QString error;
    if (!qmr::GenerateScrapbook(folder, options, &error)) {
        err << "qmr-generate-scrapbook: " << error << '\n';
        return 1;
    }

    const QString rdf = folder + QStringLiteral("scrapbook.rdf");
    out << "Wrote " << QDir::toNativeSeparators(rdf) << ": " << options.items << " items ("
        << options.folders << " folders, depth " << options.maxDepth << ", seed " << options.seed
        << "), " << qmr::CatalogueLineCount(options) << " lines, " << QFileInfo(rdf).size()
        << " bytes; the working copy reads as " << qmr::WorkingCopyLineCount(options)
        << " lines.\n";
    if (options.itemFolders) {
        const qsizetype written = QDir(folder + QStringLiteral("data"))
                                      .entryList(QDir::Dirs | QDir::NoDotAndDotDot)
                                      .size();
        out << "Wrote " << written << " item folders under "
            << QDir::toNativeSeparators(folder + QStringLiteral("data/")) << ".\n";
    }
    return 0;
}
