#include "ScrapbookGenerator.h"

#include <QByteArray>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QList>

#include <algorithm>
#include <array>
#include <vector>

namespace qmr {
namespace {

// xorshift64* seeded through splitmix64: small, fast and the same on every platform, unlike
// the standard library's distributions.
class Random {
  public:
    explicit Random(quint32 seed) {
        quint64 z = quint64(seed) + 0x9E3779B97F4A7C15ull;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        state_ = (z ^ (z >> 31)) | 1;
    }

    quint64 next() {
        state_ ^= state_ >> 12;
        state_ ^= state_ << 25;
        state_ ^= state_ >> 27;
        return state_ * 0x2545F4914F6CDD1Dull;
    }

    // A number from 0 to n - 1 (n > 0).
    quint32 below(quint32 n) { return quint32(((next() >> 32) * n) >> 32); }
    // True in `percent` cases out of a hundred.
    bool chance(quint32 percent) { return below(100) < percent; }

    template <typename T, std::size_t N> const T& pick(const std::array<T, N>& from) {
        return from[below(quint32(N))];
    }

  private:
    quint64 state_;
};

using Words = std::array<const char*, 40>;

const Words kLatinWords = {
    "Checkout", "sub",     "directories", "notes",   "Linux",   "kernel",  "memory", "guide",
    "review",   "release", "design",      "history", "photo",   "travel",  "recipe", "music",
    "video",    "network", "server",      "backup",  "Arduino", "SPI",     "bus",    "tutorial",
    "FAQ",      "weather", "diary",       "Qt",      "build",   "install", "Debian", "packages",
    "blog",     "archive", "camera",      "garden",  "library", "manual",  "map",    "report"};

const Words kCjkWords = {"資料", "筆記", "網頁", "書籤", "檔案", "圖片", "設計",   "程式",
                         "語言", "歷史", "地理", "文學", "電腦", "網路", "學習",   "工作",
                         "生活", "旅遊", "音樂", "電影", "新聞", "科學", "技術",   "說明",
                         "範例", "教學", "備份", "天氣", "日記", "食譜", "攝影",   "閱讀",
                         "經濟", "醫學", "資訊", "軟體", "硬體", "系統", "伺服器", "資料庫"};

const std::array<const char*, 8> kHosts = {
    "www.example.com",  "blog.example.org", "news.example.net",   "docs.example.io",
    "forum.example.tw", "wiki.example.hk",  "photos.example.com", "shop.example.co.uk"};

const std::array<const char*, 6> kFileNames = {"report", "manual", "slides",
                                               "budget", "thesis", "scan"};
const std::array<const char*, 6> kFileKinds = {"pdf", "doc", "xls", "ppt", "zip", "txt"};

enum class Kind { Folder, Page, Site, Marked, Image, Note, Bookmark, File, Separator };

// Shares of the kinds among the items that are not folders, in percent.
struct KindShare {
    Kind kind;
    quint32 percent;
};
const std::array<KindShare, 8> kKindShares = {{{Kind::Page, 36},
                                               {Kind::Bookmark, 20},
                                               {Kind::Note, 10},
                                               {Kind::Site, 10},
                                               {Kind::File, 9},
                                               {Kind::Image, 9},
                                               {Kind::Marked, 3},
                                               {Kind::Separator, 3}}};

const char* typeName(Kind kind) {
    switch (kind) {
    case Kind::Folder:
        return "folder";
    case Kind::Page:
        return "";
    case Kind::Site:
        return "site";
    case Kind::Marked:
        return "marked";
    case Kind::Image:
        return "image";
    case Kind::Note:
        return "note";
    case Kind::Bookmark:
        return "bookmark";
    case Kind::File:
        return "file";
    case Kind::Separator:
        return "separator";
    }
    return "";
}

// Only these kinds have a saved copy, and so an item folder.
bool hasItemFolder(Kind kind) {
    return kind != Kind::Folder && kind != Kind::Bookmark && kind != Kind::Separator;
}

// One item as it will be written. Values are plain UTF-8 text; the catalogue gets them
// XML-escaped, index.dat as they are.
struct Node {
    QByteArray id;
    Kind kind = Kind::Page;
    QByteArray title;
    QByteArray chars;
    QByteArray icon;
    QByteArray source;
    QByteArray comment;
    int depth = 1; // 1 for the items of the root list
    std::vector<int> children;
};

// Identifiers are the times at which the items were saved, "yyyyMMddhhmmss", from a second to
// a day apart (about 15 minutes on average), so they are unique and increase: 200,000 items
// span about six years from 2008.
class IdClock {
  public:
    QByteArray next(Random& random) {
        seconds_ += 1 + random.below(random.chance(1) ? 86400 : 900);
        const qint64 day = seconds_ / 86400;
        if (day != day_) {
            day_ = day;
            date_ = QDate(2008, 1, 1).addDays(day).toString(QStringLiteral("yyyyMMdd")).toLatin1();
        }
        const int secs = int(seconds_ % 86400);
        QByteArray id = date_;
        for (int part : {secs / 3600, secs / 60 % 60, secs % 60}) {
            id += char('0' + part / 10);
            id += char('0' + part % 10);
        }
        return id;
    }

  private:
    qint64 seconds_ = 0;
    qint64 day_ = -1;
    QByteArray date_;
};

QByteArray words(Random& random, int count, bool cjk) {
    QByteArray text;
    for (int i = 0; i < count; ++i) {
        if (cjk) {
            text += random.pick(kCjkWords);
        } else {
            if (i > 0) text += ' ';
            text += random.pick(kLatinWords);
        }
    }
    return text;
}

QByteArray makeTitle(Random& random, bool cjkTitles, bool folder) {
    const int count = folder ? 1 + int(random.below(2)) : 1 + int(random.below(5));
    if (!cjkTitles) return words(random, count, false);
    QByteArray title;
    switch (random.below(4)) {
    case 0:
        title = words(random, count, true);
        break;
    case 1: {
        title = words(random, count, true);
        const int latin = 1 + int(random.below(2));
        title += ' ' + words(random, latin, false);
        break;
    }
    default:
        title = words(random, count, false);
        break;
    }
    if (folder) return title;
    // A few of the marks that must be escaped in the catalogue, as real pages' titles have.
    switch (random.below(40)) {
    case 0:
        title += " & " + words(random, 1, false);
        break;
    case 1:
        title = '"' + title + "\" " + words(random, 1, false);
        break;
    case 2:
        title += " > " + words(random, 1, cjkTitles);
        break;
    case 3:
        title += " - part " + QByteArray::number(2 + random.below(8));
        break;
    default:
        break;
    }
    return title;
}

QByteArray makeComment(Random& random, bool cjkTitles) {
    if (!random.chance(15)) return {};
    QByteArray comment = words(random, 2 + int(random.below(4)), false);
    if (cjkTitles && random.chance(30)) comment += ' ' + words(random, 2, true);
    // ScrapBook keeps the line breaks of a comment as " __BR__ ".
    if (random.chance(20)) comment += " __BR__ " + words(random, 3, false);
    if (random.chance(5)) comment += " PRIVATE";
    return comment;
}

// Every draw from `random` is a statement of its own: the order in which the operands of one
// expression are evaluated differs between compilers, and the output must not.
QByteArray webAddress(Random& random, const QByteArray& id) {
    QByteArray address = QByteArray("http://") + random.pick(kHosts);
    address += '/' + id.left(4) + '/' + id.mid(4, 2) + '/';
    address += words(random, 2, false).replace(' ', '-').toLower();
    address += '-' + QByteArray::number(random.below(10000)) + ".html";
    return address;
}

void describe(Node& node, Random& random, const GeneratorOptions& options) {
    const QByteArray data = "resource://scrapbook/data/" + node.id + '/';
    node.title = node.kind == Kind::Separator
                     ? QByteArray()
                     : makeTitle(random, options.cjkTitles, node.kind == Kind::Folder);
    switch (node.kind) {
    case Kind::Folder:
    case Kind::Separator:
        break;
    case Kind::Page:
    case Kind::Site:
    case Kind::Marked:
        node.chars = options.cjkTitles && random.chance(10) ? "Big5" : "UTF-8";
        if (random.chance(70)) node.icon = data + "favicon.ico";
        node.source = webAddress(random, node.id);
        break;
    case Kind::Image: {
        const QByteArray name = "photo" + QByteArray::number(random.below(100000)) + ".jpg";
        node.icon = data + name;
        node.source = QByteArray("http://") + random.pick(kHosts) + "/images/" + name;
        break;
    }
    case Kind::Note:
        node.chars = "UTF-8";
        break;
    case Kind::Bookmark:
        if (random.chance(50))
            node.icon = QByteArray("http://") + random.pick(kHosts) + "/favicon.ico";
        node.source = webAddress(random, node.id);
        break;
    case Kind::File: {
        QByteArray name = random.pick(kFileNames);
        name += QByteArray::number(random.below(1000));
        name += QByteArray(".") + random.pick(kFileKinds);
        node.icon = "moz-icon://" + name + "?size=16";
        node.source = "file:///home/user/Documents/" + name;
        break;
    }
    }
    if (node.kind != Kind::Separator)
        node.comment = makeComment(random, options.cjkTitles && node.kind != Kind::Folder);
}

Kind pickKind(Random& random) {
    quint32 roll = random.below(100);
    for (const KindShare& share : kKindShares) {
        if (roll < share.percent) return share.kind;
        roll -= share.percent;
    }
    return Kind::Page;
}

// Adds `child` to a list: mostly at the end, sometimes where the user dragged it.
void place(std::vector<int>& list, int child, Random& random) {
    if (list.empty() || !random.chance(20)) {
        list.push_back(child);
        return;
    }
    list.insert(list.begin() + random.below(quint32(list.size() + 1)), child);
}

// The tree: nodes in identifier order and the root list.
struct Tree {
    std::vector<Node> nodes;
    std::vector<int> root;
};

Tree buildTree(const GeneratorOptions& options) {
    Random random(options.seed);
    IdClock clock;
    Tree tree;
    tree.nodes.resize(std::size_t(options.items));
    std::vector<int> openFolders; // folders that may still hold folders
    std::vector<int> allFolders;
    int foldersLeft = options.folders;
    for (int i = 0; i < options.items; ++i) {
        Node& node = tree.nodes[std::size_t(i)];
        node.id = clock.next(random);
        // Selection sampling: exactly `folders` of the items become folders, spread evenly.
        const bool folder = random.below(quint32(options.items - i)) < quint32(foldersLeft);
        int parent = -1;
        if (folder) {
            --foldersLeft;
            node.kind = Kind::Folder;
            if (!openFolders.empty() && !random.chance(12))
                parent = openFolders[random.below(quint32(openFolders.size()))];
        } else {
            node.kind = pickKind(random);
            if (!allFolders.empty() && !random.chance(3))
                parent = allFolders[random.below(quint32(allFolders.size()))];
        }
        describe(node, random, options);
        if (parent < 0) {
            place(tree.root, i, random);
        } else {
            Node& holder = tree.nodes[std::size_t(parent)];
            node.depth = holder.depth + 1;
            place(holder.children, i, random);
        }
        if (folder) {
            allFolders.push_back(i);
            if (node.depth < options.maxDepth) openFolders.push_back(i);
        }
    }
    return tree;
}

QByteArray xmlEscaped(const QByteArray& text) {
    if (!text.contains('&') && !text.contains('<') && !text.contains('>') && !text.contains('"'))
        return text;
    QByteArray out;
    out.reserve(text.size() + 16);
    for (char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
            break;
        }
    }
    return out;
}

// Collects the output and hands it to the file in large blocks; once a write fails, the
// failure stays.
class Writer {
  public:
    explicit Writer(QFile& file) : file_(file) { buffer_.reserve(kBlock + 4096); }

    Writer& operator<<(const QByteArray& text) {
        buffer_ += text;
        return *this;
    }
    Writer& operator<<(const char* text) {
        buffer_ += text;
        return *this;
    }
    // Ends the line.
    void line() {
        buffer_ += '\n';
        if (buffer_.size() >= kBlock) flush();
    }
    bool flush() {
        if (ok_ && file_.write(buffer_) != buffer_.size()) ok_ = false;
        buffer_.clear();
        return ok_;
    }

  private:
    static constexpr qsizetype kBlock = 1 << 22;
    QFile& file_;
    QByteArray buffer_;
    bool ok_ = true;
};

const char kAlign[] = "                   "; // under "RDF:about" of the description line

void writeDescription(Writer& out, const Node& node) {
    out << "  <RDF:Description RDF:about=\"urn:scrapbook:item" << node.id << "\"";
    out.line();
    out << kAlign << "NS1:id=\"" << node.id << "\"";
    out.line();
    out << kAlign << "NS1:type=\"" << typeName(node.kind) << "\"";
    out.line();
    out << kAlign << "NS1:title=\"" << xmlEscaped(node.title) << "\"";
    out.line();
    out << kAlign << "NS1:chars=\"" << node.chars << "\"";
    out.line();
    out << kAlign << "NS1:icon=\"" << xmlEscaped(node.icon) << "\"";
    out.line();
    out << kAlign << "NS1:source=\"" << xmlEscaped(node.source) << "\"";
    out.line();
    out << kAlign << "NS1:comment=\"" << xmlEscaped(node.comment) << "\" />";
    out.line();
}

void writeSeq(Writer& out, const Tree& tree, const QByteArray& about,
              const std::vector<int>& children) {
    out << "  <RDF:Seq RDF:about=\"urn:scrapbook:" << about << "\">";
    out.line();
    for (int child : children) {
        out << "    <RDF:li RDF:resource=\"urn:scrapbook:item" << tree.nodes[std::size_t(child)].id
            << "\"/>";
        out.line();
    }
    out << "  </RDF:Seq>";
    out.line();
}

bool writeCatalogue(const QString& path, const Tree& tree, QString* error) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        if (error) *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
        return false;
    }
    Writer out(file);
    out << "<?xml version=\"1.0\"?>\n"
           "<RDF:RDF xmlns:NS1=\"http://amb.vis.ne.jp/mozilla/scrapbook-rdf#\"\n"
           "         xmlns:NC=\"http://home.netscape.com/NC-rdf#\"\n"
           "         xmlns:RDF=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n";
    const std::size_t rootAfter = tree.nodes.size() / 2; // the root list stands mid-file
    if (rootAfter == 0) writeSeq(out, tree, "root", tree.root);
    for (std::size_t i = 0; i < tree.nodes.size(); ++i) {
        const Node& node = tree.nodes[i];
        if (node.kind == Kind::Folder) writeSeq(out, tree, "item" + node.id, node.children);
        writeDescription(out, node);
        if (i + 1 == rootAfter) writeSeq(out, tree, "root", tree.root);
    }
    out << "</RDF:RDF>";
    out.line();
    bool ok = out.flush();
    file.close();
    if (!ok || file.error() != QFileDevice::NoError) {
        if (error) *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
        return false;
    }
    return true;
}

QByteArray htmlEscaped(const QByteArray& text) {
    return xmlEscaped(text);
}

bool writeFile(const QString& path, const QByteArray& bytes, QString* error) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
        file.write(bytes) == bytes.size() && file.flush())
        return true;
    if (error) *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
    return false;
}

bool writeItemFolder(const QString& folder, const Node& node, QString* error) {
    const QString itemFolder = folder + QStringLiteral("data/") + QString::fromLatin1(node.id);
    if (!QDir().mkpath(itemFolder)) {
        if (error) *error = QStringLiteral("cannot create the folder %1").arg(itemFolder);
        return false;
    }
    const QByteArray title = htmlEscaped(node.title);
    const QByteArray page = "<!DOCTYPE html>\n<html><head><meta charset=\"UTF-8\"><title>" + title +
                            "</title></head>\n<body><h1>" + title + "</h1><p>" +
                            htmlEscaped(node.comment) + "</p></body></html>\n";
    const QByteArray dat = "id\t" + node.id + "\ntype\t" + typeName(node.kind) + "\ntitle\t" +
                           node.title + "\nchars\t" + node.chars + "\nicon\t" + node.icon +
                           "\nsource\t" + node.source + "\ncomment\t" + node.comment + '\n';
    return writeFile(itemFolder + QStringLiteral("/index.html"), page, error) &&
           writeFile(itemFolder + QStringLiteral("/index.dat"), dat, error);
}

} // namespace

bool GenerateScrapbook(const QString& folder, const GeneratorOptions& options, QString* error) {
    QString problem;
    if (options.items < 1)
        problem = QStringLiteral("a scrapbook needs at least one item");
    else if (options.folders < 0 || options.folders > options.items)
        problem = QStringLiteral("the folders (%1) must be from 0 to the items (%2)")
                      .arg(options.folders)
                      .arg(options.items);
    else if (options.maxDepth < 1)
        problem = QStringLiteral("the depth must be at least 1");
    else if (!folder.endsWith(QLatin1Char('/')))
        problem = QStringLiteral("the folder %1 must end in \"/\"").arg(folder);
    else if (!QDir().mkpath(folder))
        problem = QStringLiteral("cannot create the folder %1").arg(folder);
    if (!problem.isEmpty()) {
        if (error) *error = problem;
        return false;
    }
    const Tree tree = buildTree(options);
    if (!writeCatalogue(folder + QStringLiteral("scrapbook.rdf"), tree, error)) return false;
    if (options.itemFolders) {
        for (const Node& node : tree.nodes)
            if (hasItemFolder(node.kind) && !writeItemFolder(folder, node, error)) return false;
    }
    return true;
}

qint64 CatalogueLineCount(const GeneratorOptions& options) {
    return 9 * qint64(options.items) + 2 * qint64(options.folders) + 7;
}

GeneratorOptions ForLineBudget(qint64 lines) {
    GeneratorOptions options;
    // Lines left once the head, the tail, the root list and the working copy's extra line are
    // counted; each item then takes 9 lines and each folder 2 more.
    const qint64 budget = lines - 8;
    if (budget < 9) {
        options.items = 1;
        return options;
    }
    qint64 items = budget * 10 / 92; // one folder to ten items: 9.2 lines an item
    if ((budget - 9 * items) % 2 != 0 && items > 1) --items; // so the folders fill the rest
    const qint64 folders = std::min((budget - 9 * items) / 2, items / 2);
    options.items = int(items);
    options.folders = int(folders);
    return options;
}

} // namespace qmr
