// SPDX-License-Identifier: MIT
// Help sets of other kinds against a native one of the same rows and keywords; folders of HTML; what is on a
// machine with 500 sets. QUENDA_FOLDER may name a folder to take instead of the one that is made.
#include "sets.h"

#include "library/helpset.h"
#include "machine/machinesets.h"
#include "pages/pagefile.h"
#include "sources/sources.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QtEndian>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

namespace {

constexpr SyntheticSize Size{5'000, 15'000};
constexpr int PageBytes = 20'000;

std::unique_ptr<HelpSet> load(const QString& fileName)
{
    auto set = std::make_unique<HelpSet>(fileName, openSource(fileName));
    set->adoptIndex(readIndexEntries(set->indexTask()));
    return set;
}

QByteArray pageCalled(const QByteArray& title)
{
    const QByteArray paragraph =
        "<p>A paragraph of some words, about <a href=\"x.html\">things</a> and others.</p>\n";
    return "<html><head><title>" + title + "</title></head><body><h1>" + title + "</h1>" +
           paragraph.repeated(PageBytes / int(paragraph.size())) + "</body></html>";
}

void write(const QString& name, const QByteArray& bytes)
{
    QDir().mkpath(name.section(u'/', 0, -2));
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qUtf8Printable(name));
    }
}

void append(QByteArray& bytes, quint32 number)
{
    const quint32 value = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void append(QByteArray& bytes, const QString& text)
{
    append(bytes, quint32(text.size() * 2));
    for (const QChar c : text) {
        bytes.append(char(c.unicode() >> 8U)).append(char(c.unicode() & 0xFFU));
    }
}

/// The same documentation three times: as a native help set, a Qt help file and a Devhelp book.
class Kinds {
public:
    Kinds()
    {
        const auto native = load(m_native.contents());
        writeQch(*native);
        writeBook(*native);
    }

    [[nodiscard]] QString native() const { return m_native.contents(); }
    [[nodiscard]] QString qch() const { return m_dir.filePath(QStringLiteral("set.qch")); }
    [[nodiscard]] QString book() const { return m_dir.filePath(QStringLiteral("set.devhelp2")); }
    [[nodiscard]] QString packedPage() const { return qch() + QStringLiteral("/set/large.html"); }
    [[nodiscard]] QString page() const { return m_dir.filePath(QStringLiteral("large.html")); }

private:
    static int levelOf(const HelpContentsListViewItem& row)
    {
        int level = 0;
        for (const auto* above = row.parent; above != nullptr; above = above->parent) {
            ++level;
        }
        return level;
    }

    void writeQch(const HelpSet& native)
    {
        sqlite3* database = nullptr;
        ::sqlite3_open(QFile::encodeName(qch()).constData(), &database);
        const auto run = [&](const QByteArray& sql) {
            if (::sqlite3_exec(database, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
                qFatal("%s", ::sqlite3_errmsg(database));
            }
        };
        run("BEGIN; CREATE TABLE NamespaceTable(Id INTEGER PRIMARY KEY, Name TEXT);"
            "CREATE TABLE FolderTable(Id INTEGER PRIMARY KEY, Name TEXT, NamespaceID INTEGER);"
            "CREATE TABLE FileNameTable(FolderId INTEGER, Name TEXT, FileId INTEGER, Title TEXT);"
            "CREATE TABLE FileDataTable(Id INTEGER PRIMARY KEY, Data BLOB);"
            "CREATE TABLE IndexTable(Id INTEGER PRIMARY KEY, Name TEXT, Identifier TEXT, NamespaceId "
            "INTEGER, "
            "FileId INTEGER, Anchor TEXT);"
            "CREATE TABLE ContentsTable(Id INTEGER PRIMARY KEY, NamespaceId INTEGER, Data BLOB);"
            "INSERT INTO NamespaceTable VALUES(1, 'set'); INSERT INTO FolderTable VALUES(1, 'set', 1)");
        QHash<QString, int> files;
        const auto fileOf = [&](const QString& page) {
            const int number = files.value(page, int(files.size()) + 1);
            if (!files.contains(page)) {
                const QByteArray id = QByteArray::number(number);
                files.insert(page, number);
                run("INSERT INTO FileNameTable VALUES(1, '" + page.toUtf8() + "', " + id + ", '')");
                run("INSERT INTO FileDataTable VALUES(" + id + ", x'" +
                    qCompress(pageCalled("A page")).toHex() + "')");
            }
            return QByteArray::number(number);
        };
        fileOf(QStringLiteral("large.html"));
        write(page(), pageCalled("A page"));
        QByteArray contents;
        for (const auto& record : native.records()) {
            append(contents, quint32(levelOf(*record.listViewItem)));
            append(contents, record.pageName.toString());
            append(contents, record.listViewItem->text.toString());
            fileOf(record.pageName.toString());
        }
        for (const auto& item : native.indexItems()) {
            run("INSERT INTO IndexTable(Name, FileId, Anchor) VALUES('" + item.keyword.toUtf8() + "', " +
                fileOf(item.pageName.toString().section(u'#', 0, 0)) + ", 'a')");
        }
        run("INSERT INTO ContentsTable VALUES(1, 1, x'" + contents.toHex() + "'); COMMIT");
        ::sqlite3_close(database);
    }

    void writeBook(const HelpSet& native)
    {
        QString text = QStringLiteral("<book title='Set' link='index.html'><chapters>\n");
        int level = -1;
        for (const auto& record : native.records()) {
            const int own = levelOf(*record.listViewItem);
            text += QStringLiteral("</sub>").repeated(std::max(0, level - own + 1)) +
                    QStringLiteral("<sub name='%1' link='%2'>\n")
                        .arg(record.listViewItem->text.toString().toHtmlEscaped(), record.pageName);
            level = own;
        }
        text += QStringLiteral("</sub>").repeated(level + 1) + QStringLiteral("</chapters><functions>\n");
        for (const auto& item : native.indexItems()) {
            text += QStringLiteral("<keyword type='function' name='%1' link='%2'/>\n")
                        .arg(item.keyword.toString().toHtmlEscaped(), item.pageName);
        }
        write(book(), (text + QStringLiteral("</functions></book>")).toUtf8());
    }

    Set m_native{Size};
    QTemporaryDir m_dir;
};

const Kinds& kinds()
{
    static const Kinds made;
    return made;
}

void opening(benchmark::State& state, QString (Kinds::*name)() const)
{
    const QString file = (kinds().*name)();
    for (auto _ : state) {
        const auto set = load(file);
        if (set->records().size() < size_t(Size.topics) || set->indexItems().size() < size_t(Size.keywords)) {
            state.SkipWithError("rows or keywords are missing");
        }
    }
}

void readingPage(benchmark::State& state, QString (Kinds::*name)() const)
{
    const QString file = (kinds().*name)();
    for (auto _ : state) {
        if (!readPage(file).ok()) {
            state.SkipWithError("the page cannot be read");
        }
    }
}

/// Until the tree can be shown; titles and keywords follow.
void folderTree(benchmark::State& state)
{
    const QTemporaryDir dir;
    QString folder = qEnvironmentVariable("QUENDA_FOLDER");
    if (folder.isEmpty()) {
        folder = dir.path();
        for (int i = 0; i < Size.topics; ++i) {
            write(folder + QStringLiteral("/%1/page%2.html").arg(i / 100).arg(i),
                  pageCalled("Page " + QByteArray::number(i)));
        }
        write(folder + QStringLiteral("/index.html"), pageCalled("All"));
    }
    for (auto _ : state) {
        const HelpSet set(folder, openSource(folder));
        benchmark::DoNotOptimize(set.records().size());
    }
}

void folderRest(benchmark::State& state)
{
    const QString folder = qEnvironmentVariable("QUENDA_FOLDER");
    for (auto _ : state) {
        if (!folder.isEmpty()) {
            benchmark::DoNotOptimize(load(folder)->indexItems().size());
        }
    }
}

void machine(benchmark::State& state)
{
    constexpr int sets = 500;
    const QTemporaryDir dir;
    for (int i = 0; i < sets; ++i) {
        const QString folder = dir.filePath(QStringLiteral("doc/package%1/html/").arg(i));
        for (int page = 0; page < 10; ++page) {
            write(folder +
                      (page == 0 ? QStringLiteral("index.html") : QStringLiteral("page%1.html").arg(page)),
                  pageCalled("Package " + QByteArray::number(i)));
        }
    }
    for (auto _ : state) {
        if (findMachineSets({{dir.path()}, {}}, {}).size() != sets) {
            state.SkipWithError("sets are missing");
        }
    }
}

} // namespace

BENCHMARK_CAPTURE(opening, qch, &Kinds::qch)->Name("Qt help file/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(opening, native, &Kinds::native)->Name("Qt help file/floor")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(opening, book, &Kinds::book)->Name("Devhelp book/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(opening, native, &Kinds::native)->Name("Devhelp book/floor")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readingPage, packed, &Kinds::packedPage)
    ->Name("packed page/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readingPage, file, &Kinds::page)->Name("packed page/floor")->Unit(benchmark::kMillisecond);
BENCHMARK(folderTree)->Name("folder/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(folderRest)->Name("whole folder/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(machine)->Name("machine/ours")->Unit(benchmark::kMillisecond);
