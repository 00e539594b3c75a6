#include "chm/SystemFiles.h"

#include "chm/BookLanguage.h"
#include "chm/ByteWriter.h"

#include "platform/CodePage.h"

#include <QFileInfo>

#include <optional>

namespace qmr::chm {

namespace {

constexpr qsizetype kIndexHeaderSize = 0x1000;
constexpr quint32 kWindowRecordSize = 0xC4;
constexpr char kCompilerVersion[] = "HHA Version 4.74.8702";
// Seconds from 1601 (where Windows file times start) to 1970.
constexpr quint64 kWindowsEpochOffset = 11644473600ULL;

enum SystemCode : quint16 {
    kContentsFile = 0,
    kIndexFile = 1,
    kDefaultTopic = 2,
    kTitle = 3,
    kLanguageAndFlags = 4,
    kDefaultWindow = 5,
    kCompiledFile = 6,
    kBinaryIndex = 7,
    kCompilerVersionCode = 9,
    kTimestamp = 10,
    kInformationTypes = 12,
    kIndexHeaderCopy = 13,
    kInformationTypeChecksum = 15,
    kDefaultFont = 16,
};

// Window-record fields readers look at: which of them the project set.
enum WindowMember : quint32 {
    kHasProperties = 0x2,
    kHasStyles = 0x4,
    kHasExtendedStyles = 0x8,
    kHasPosition = 0x10,
    kHasNavigationWidth = 0x20,
    kHasShowState = 0x40,
    kHasToolbarButtons = 0x100,
    kHasExpansion = 0x200,
    kHasTabPosition = 0x400,
    kHasCurrentTab = 0x2000,
};

// "0x23520", "0", "" (not set).
std::optional<quint32> Number(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty()) return std::nullopt;
    bool ok = false;
    const quint32 value = trimmed.toUInt(&ok, 0);
    return ok ? std::optional<quint32>(value) : std::nullopt;
}

QString Property(const Sitemap& sitemap, QStringView name) {
    for (const SitemapParam& p : sitemap.properties)
        if (p.name.compare(name, Qt::CaseInsensitive) == 0) return p.value;
    return {};
}

QDateTime When(const BookContents& book) {
    return book.compiledAt.isValid() ? book.compiledAt : QDateTime::currentDateTimeUtc();
}

void Entry(ByteWriter& out, SystemCode code, const QByteArray& data) {
    out.u16(code);
    out.u16(quint16(data.size()));
    out.bytes(data);
}

void TextEntry(ByteWriter& out, SystemCode code, const QByteArray& text) {
    Entry(out, code, text + '\0');
}

QByteArray Dword(quint32 value) {
    QByteArray bytes;
    ByteWriter(bytes).u32(value);
    return bytes;
}

QByteArray LanguageAndFlags(const BookContents& book, bool keywordLinks) {
    const HelpProject& project = *book.project;
    QByteArray bytes;
    ByteWriter out(bytes);
    out.u32(project.languageId);
    out.u32(IsEastAsianLanguage(project.languageId) ? 1 : 0); // double-byte text
    out.u32(book.fullTextSearch ? 1 : 0);
    out.u32(keywordLinks ? 1 : 0);
    out.u32(0); // no associative links
    out.u64((quint64(When(book).toSecsSinceEpoch()) + kWindowsEpochOffset) * 10000000ULL);
    out.u32(0);
    out.u32(0);
    return bytes;
}

// The window fields after "=", in order; the position is one field "[l,t,r,b]" or four.
struct WindowFields {
    QStringList texts; // caption .. jump 2 url
    QStringList rest;  // navigation style ..; the position joined into one
};

WindowFields SplitWindowFields(const QStringList& fields) {
    WindowFields split;
    split.texts = fields.mid(0, 9);
    for (qsizetype i = 9; i < fields.size(); ++i) {
        QString field = fields[i];
        if (field.trimmed().startsWith(QLatin1Char('[')))
            while (!field.contains(QLatin1Char(']')) && i + 1 < fields.size())
                field += QLatin1Char(',') + fields[++i];
        split.rest.append(field);
    }
    while (split.texts.size() < 9)
        split.texts.append(QString());
    while (split.rest.size() < 11)
        split.rest.append(QString());
    return split;
}

void PutAt(QByteArray& record, qsizetype offset, quint32 value) {
    PutU32At(record, offset, value);
}

QByteArray WindowRecord(const HelpWindow& window, const CodePage& encoding, StringTable& strings) {
    QByteArray record(kWindowRecordSize, '\0');
    const WindowFields fields = SplitWindowFields(window.fields);
    const auto text = [&](const QString& value) {
        return value.isEmpty() ? 0u : strings.add(encoding.encode(value));
    };
    const auto path = [&](const QString& value) {
        return value.isEmpty() ? 0u : strings.add(value.toUtf8());
    };
    quint32 members = 0;
    const auto number = [&](int field, qsizetype offset, quint32 member) {
        if (const auto value = Number(fields.rest[field])) {
            PutAt(record, offset, *value);
            members |= member;
        }
    };
    PutAt(record, 0x00, kWindowRecordSize);
    PutAt(record, 0x08, text(window.name));
    PutAt(record, 0x14, text(fields.texts[0])); // caption
    PutAt(record, 0x60, path(fields.texts[1])); // contents file
    PutAt(record, 0x64, path(fields.texts[2])); // index file
    PutAt(record, 0x68, path(fields.texts[3])); // default topic
    PutAt(record, 0x6C, path(fields.texts[4])); // home
    PutAt(record, 0x9C, text(fields.texts[5])); // jump 1 text
    PutAt(record, 0xA4, path(fields.texts[6])); // jump 1 address
    PutAt(record, 0xA0, text(fields.texts[7])); // jump 2 text
    PutAt(record, 0xA8, path(fields.texts[8])); // jump 2 address
    number(0, 0x10, kHasProperties);            // navigation style
    number(1, 0x4C, kHasNavigationWidth);
    number(2, 0x70, kHasToolbarButtons);
    QString bracketed = fields.rest[3];
    const QStringList position =
        bracketed.remove(QLatin1Char('[')).remove(QLatin1Char(']')).split(QLatin1Char(','));
    if (position.size() == 4) {
        for (int i = 0; i < 4; ++i)
            PutAt(record, 0x20 + 4 * i, Number(position[i]).value_or(0));
        members |= kHasPosition;
    }
    number(4, 0x18, kHasStyles);
    number(5, 0x1C, kHasExtendedStyles);
    number(6, 0x30, kHasShowState);
    number(7, 0x74, kHasExpansion); // navigation pane closed
    number(8, 0x78, kHasCurrentTab);
    number(9, 0x7C, kHasTabPosition);
    PutAt(record, 0x0C, members);
    return record;
}

} // namespace

QByteArray MakeIndexHeader(const BookContents& book, const QString& codePage,
                           StringTable& strings) {
    const CodePage encoding(codePage);
    const Sitemap& toc = book.contents;
    const auto text = [&](QStringView name) {
        const QString value = Property(toc, name);
        return value.isEmpty() ? 0u : strings.add(encoding.encode(value));
    };
    const auto number = [&](QStringView name) { return Number(Property(toc, name)).value_or(0); };
    QByteArray bytes;
    ByteWriter out(bytes);
    out.bytes("T#SM");
    out.u32(quint32(When(book).toSecsSinceEpoch()));
    out.u32(1);
    out.u32(quint32(book.topics.size()));
    out.u32(0);
    out.u32(text(u"ImageList"));
    out.u32(0);
    out.u32(Property(toc, u"ImageType").compare(u"Folder", Qt::CaseInsensitive) == 0 ? 1 : 0);
    out.u32(number(u"Background"));
    out.u32(number(u"Foreground"));
    out.u32(text(u"Font"));
    out.u32(number(u"Window Styles"));
    out.u32(number(u"ExWindow Styles"));
    out.u32(0);
    out.u32(text(u"FrameName"));
    out.u32(text(u"WindowName"));
    out.u32(0); // information types
    out.u32(0);
    out.u32(0); // merged files
    bytes.append(kIndexHeaderSize - bytes.size(), '\0');
    return bytes;
}

QByteArray MakeWindows(const HelpProject& project, const QString& codePage, StringTable& strings) {
    const CodePage encoding(codePage);
    QByteArray bytes;
    ByteWriter out(bytes);
    out.u32(quint32(project.windows.size()));
    out.u32(kWindowRecordSize);
    for (const HelpWindow& window : project.windows)
        out.bytes(WindowRecord(window, encoding, strings));
    return bytes;
}

QByteArray MakeSystem(const BookContents& book, const QString& codePage, bool keywordLinks,
                      const QByteArray& indexHeader) {
    const HelpProject& project = *book.project;
    const CodePage encoding(codePage);
    QByteArray bytes;
    ByteWriter out(bytes);
    out.u32(3); // version
    Entry(out, kTimestamp, Dword(quint32(When(book).toSecsSinceEpoch())));
    TextEntry(out, kCompilerVersionCode, kCompilerVersion);
    Entry(out, kLanguageAndFlags, LanguageAndFlags(book, keywordLinks));
    TextEntry(out, kDefaultTopic, project.defaultTopic.toUtf8());
    TextEntry(out, kTitle, encoding.encode(project.title));
    if (!project.defaultFont.isEmpty())
        TextEntry(out, kDefaultFont, encoding.encode(project.defaultFont));
    TextEntry(out, kCompiledFile,
              encoding.encode(QFileInfo(project.compiledFile).completeBaseName().toLower()));
    if (!project.contentsFile.isEmpty())
        TextEntry(out, kContentsFile, project.contentsFile.toUtf8());
    if (!project.indexFile.isEmpty()) TextEntry(out, kIndexFile, project.indexFile.toUtf8());
    if (!project.defaultWindow.isEmpty())
        TextEntry(out, kDefaultWindow, encoding.encode(project.defaultWindow));
    if (keywordLinks) Entry(out, kBinaryIndex, Dword(0));
    Entry(out, kInformationTypes, Dword(0));
    Entry(out, kIndexHeaderCopy, indexHeader);
    Entry(out, kInformationTypeChecksum, Dword(0));
    return bytes;
}

} // namespace qmr::chm
