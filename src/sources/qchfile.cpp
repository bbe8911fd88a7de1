// SPDX-License-Identifier: MIT
#include "sources/qchfile.h"

#include "formats/paths.h"
#include "sources/inflate.h"
#include "sources/sources.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <chrono>

#include <sqlite3.h>

namespace {

constexpr int StepsPerCall = 1000;
constexpr qint64 MaximumCalls = 200'000; // of thousand steps; some seconds
constexpr qint64 MostText = 256'000'000; // bytes that the rows of a query give; few long names can be in many

int addSteps(void* calls)
{
    return ++*static_cast<qint64*>(calls) > MaximumCalls ? 1 : 0;
}

/// The database library must neither write beside the file nor wait for anybody.
QByteArray uriOf(const QString& path)
{
    return "file:" + QFile::encodeName(path).toPercentEncoding("/") + "?immutable=1";
}

/// The packages of a directory by the folders that their pages are in. Each is opened once, and only when
/// none before it has the folder that is wanted.
class PackagesOf {
public:
    using Clock = std::chrono::steady_clock;

    explicit PackagesOf(const QString& directory)
        : m_unopened(QDir(directory).entryInfoList({QStringLiteral("*.qch")}, QDir::Files, QDir::Name))
    {
        constexpr qsizetype mostPackages = 500;
        m_unopened.resize(std::min(m_unopened.size(), mostPackages));
    }

    [[nodiscard]] bool isNew() const { return Clock::now() - m_time < std::chrono::seconds(5); }

    /// Null when none has the folder.
    QString find(const QString& folder)
    {
        // They nearly always have the names of their folders.
        const auto named = std::find_if(m_unopened.begin(), m_unopened.end(),
                                        [&](const QFileInfo& package) { return isCalled(package, folder); });
        if (named != m_unopened.end()) {
            open(m_unopened.takeAt(named - m_unopened.begin()));
        }
        while (!m_packages.contains(folder) && !m_unopened.isEmpty()) {
            open(m_unopened.takeFirst());
        }
        return m_packages.value(folder);
    }

private:
    static bool isCalled(const QFileInfo& package, const QString& folder)
    {
        return package.completeBaseName().compare(folder, Qt::CaseInsensitive) == 0;
    }

    void open(const QFileInfo& package)
    {
        const QString folder = QchFile(package.filePath()).folder();
        if (!m_packages.contains(folder) || isCalled(package, folder)) {
            m_packages.insert(folder, package.filePath());
        }
    }

    Clock::time_point m_time = Clock::now();
    QFileInfoList m_unopened;
    QHash<QString, QString> m_packages; ///< by their folders
};

/// A page has many links into other packages, so what was found is used for some seconds.
QString packageWith(const QString& directory, const QString& folder)
{
    constexpr qsizetype mostKnown = 50;
    thread_local QHash<QString, PackagesOf> known;
    auto found = known.find(directory);
    if (found == known.end() || !found->isNew()) {
        if (known.size() > mostKnown) {
            known.clear();
        }
        found = known.insert(directory, PackagesOf(directory));
    }
    return found->find(folder);
}

} // namespace

void QchFile::Finalize::operator()(sqlite3_stmt* statement) const
{
    ::sqlite3_finalize(statement);
}

void QchFile::Close::operator()(sqlite3* handle) const
{
    ::sqlite3_close(handle);
}

QchFile::QchFile(const QString& path) : m_path(absoluteFilePath(path))
{
    open();
}

QchFile::~QchFile() = default;

void QchFile::open()
{
    if (const auto error = RegularFile(m_path).error()) {
        m_problem = describe(*error);
        return;
    }
    sqlite3* handle = nullptr;
    const int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE;
    const int result = ::sqlite3_open_v2(uriOf(m_path).constData(), &handle, flags, nullptr);
    m_handle.reset(handle);
    if (result != SQLITE_OK) {
        m_problem = tr("it is no Qt help file");
        return;
    }
    ::sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    for (const int option : {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION,
                             SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_ENABLE_VIEW,
                             SQLITE_DBCONFIG_ENABLE_FKEY, SQLITE_DBCONFIG_ENABLE_FTS3_TOKENIZER}) {
        ::sqlite3_db_config(handle, option, 0, nullptr);
    }
    constexpr int longestQuery = 10'000;
    constexpr int mostColumns = 50;
    ::sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, int(LargestFile));
    ::sqlite3_limit(handle, SQLITE_LIMIT_SQL_LENGTH, longestQuery);
    ::sqlite3_limit(handle, SQLITE_LIMIT_COLUMN, mostColumns);
    ::sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 0);
    ::sqlite3_progress_handler(handle, StepsPerCall, addSteps, &m_steps);
    if (prepare("SELECT Name FROM NamespaceTable LIMIT 1") == nullptr) {
        m_problem = tr("it is no Qt help file");
    }
}

QchFile::Statement QchFile::prepare(const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    m_steps = 0;
    m_rows = 0;
    m_textGiven = 0;
    if (m_handle == nullptr ||
        ::sqlite3_prepare_v2(m_handle.get(), sql, -1, &statement, nullptr) != SQLITE_OK) {
        if (m_problem.isNull() && m_handle != nullptr) {
            m_problem = tr("it is damaged: %1").arg(QString::fromUtf8(::sqlite3_errmsg(m_handle.get())));
        }
        return {};
    }
    return Statement(statement);
}

bool QchFile::step(const Statement& statement)
{
    if (statement == nullptr) {
        return false;
    }
    const int result = ::sqlite3_step(statement.get());
    if (result == SQLITE_ROW && ++m_rows <= MaximumRows && m_textGiven <= MostText) {
        return true;
    }
    if (result == SQLITE_INTERRUPT || result == SQLITE_ROW) {
        m_problem = tr("it has far too much in it; the rest is not read");
    } else if (result != SQLITE_DONE) {
        m_problem = tr("it is damaged: %1").arg(QString::fromUtf8(::sqlite3_errmsg(m_handle.get())));
    }
    return false;
}

QString QchFile::text(const Statement& statement, int column)
{
    const auto* bytes = ::sqlite3_column_text(statement.get(), column);
    const int size = ::sqlite3_column_bytes(statement.get(), column);
    m_textGiven += size;
    return QString::fromUtf8(reinterpret_cast<const char*>(bytes), size);
}

QString QchFile::firstText(const char* sql)
{
    const auto statement = prepare(sql);
    return step(statement) ? text(statement, 0) : QString();
}

QString QchFile::folder()
{
    return firstText("SELECT Name FROM FolderTable ORDER BY Id LIMIT 1");
}

QString QchFile::version()
{
    return firstText("SELECT Value FROM MetaDataTable WHERE Name = 'version' LIMIT 1");
}

int QchFile::pageCount()
{
    const auto statement = prepare("SELECT count(*) FROM FileNameTable WHERE Name LIKE '%.htm%'");
    return step(statement) ? ::sqlite3_column_int(statement.get(), 0) : 0;
}

void QchFile::keywords(const std::function<bool(const Keyword&)>& use)
{
    QHash<qint64, QString> pages;
    const auto names = prepare("SELECT FileId, Name FROM FileNameTable");
    while (step(names)) {
        QString& page = pages[::sqlite3_column_int64(names.get(), 0)];
        const QString name = text(names, 1);
        page = page.isNull() ? name : std::min(page, name);
    }
    const auto statement = prepare("SELECT Name, FileId, Anchor FROM IndexTable ORDER BY Id");
    while (step(statement)) {
        const QString anchor = text(statement, 2);
        const QString page = pages.value(::sqlite3_column_int64(statement.get(), 1));
        const bool isWanted = !page.isNull();
        m_textGiven += page.size();
        if (isWanted && !use({text(statement, 0), anchor.isEmpty() ? page : page + u'#' + anchor})) {
            return;
        }
    }
}

QByteArray QchFile::contents()
{
    QByteArray all;
    const auto statement = prepare("SELECT Data FROM ContentsTable ORDER BY Id");
    while (step(statement) && all.size() < LargestFile) {
        all.append(static_cast<const char*>(::sqlite3_column_blob(statement.get(), 0)),
                   ::sqlite3_column_bytes(statement.get(), 0));
    }
    return all;
}

const QHash<QString, QchFile::Entry>& QchFile::files()
{
    if (!m_files) {
        m_files.emplace();
        const auto statement =
            prepare("SELECT o.Name, f.Name, f.FileId, length(d.Data) FROM FileNameTable f JOIN "
                    "FolderTable o ON o.Id = f.FolderId JOIN FileDataTable d ON d.Id = f.FileId");
        while (step(statement)) {
            m_files->insert(
                text(statement, 0) + u'/' + text(statement, 1),
                {::sqlite3_column_int64(statement.get(), 2), ::sqlite3_column_int64(statement.get(), 3)});
        }
    }
    return *m_files;
}

std::optional<qint64> QchFile::packedSize(const QString& name)
{
    const auto found = files().constFind(name);
    return found == files().cend() ? std::nullopt : std::optional(found->size);
}

Result<QByteArray, FileError> QchFile::read(const QString& name, qint64 most)
{
    const auto found = files().constFind(name);
    if (found == files().cend()) {
        return FileError::NotFound;
    }
    const auto statement = prepare("SELECT Data FROM FileDataTable WHERE Id = ?");
    if (statement != nullptr) {
        ::sqlite3_bind_int64(statement.get(), 1, found->id);
    }
    constexpr qint64 head = 4; // bytes that say how long it is
    if (!step(statement)) {
        return FileError::Unreadable;
    }
    const QByteArrayView data(static_cast<const char*>(::sqlite3_column_blob(statement.get(), 0)),
                              ::sqlite3_column_bytes(statement.get(), 0));
    if (data.size() < head) {
        return data.isEmpty() ? Result<QByteArray, FileError>(QByteArray()) : FileError::Unreadable;
    }
    const qint64 size = qFromBigEndian<quint32>(data.data());
    if (size > LargestFile) {
        return FileError::Unreadable; // the limit of files is another one
    }
    const auto bytes = inflated(data.sliced(head), Compression::Zlib, std::min(size, most), most < size);
    return bytes ? Result<QByteArray, FileError>(*bytes) : FileError::Unreadable;
}

/// Packages that belong together stand in one folder.
QString QchFile::elsewhere(const QString& name)
{
    if (name.section(u'/', 0, 0) == folder()) {
        return {};
    }
    const QString beside = findPage(QFileInfo(m_path).path(), name);
    return beside.isNull() ? packedPageOnMachine(name) : beside;
}

QString QchFile::findPage(const QString& directory, const QString& name)
{
    const QString folder = name.section(u'/', 0, 0);
    const QString package =
        folder.isEmpty() || name.section(u'/', 1).isEmpty() ? QString() : packageWith(directory, folder);
    return package.isNull() ? QString() : package + u'/' + name;
}
