// SPDX-License-Identifier: MIT
#include "fulltext/searchcache.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr auto RetryTime = std::chrono::milliseconds(50);

const QString& suffix()
{
    static const QString text = QStringLiteral(".search");
    return text;
}

QString directory()
{
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return cache.isEmpty() ? QString() : cache + QStringLiteral("/Orvanel/Quenda/search/");
}

/// With what the database library keeps beside it.
qint64 sizeOf(const QFileInfo& database)
{
    return database.size() + QFileInfo(database.filePath() + QStringLiteral("-wal")).size();
}

} // namespace

FileLock::FileLock(const QString& file, const std::stop_token& stop,
                   std::optional<std::chrono::milliseconds> patience)
    : m_file(::open(QFile::encodeName(file).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600))
{
    const auto begin = std::chrono::steady_clock::now();
    while (m_file >= 0 && ::flock(m_file, LOCK_EX | LOCK_NB) != 0) {
        if (stop.stop_requested() || (patience && std::chrono::steady_clock::now() - begin > *patience)) {
            return;
        }
        std::this_thread::sleep_for(RetryTime);
    }
    m_isHeld = m_file >= 0;
}

FileLock::~FileLock()
{
    if (m_file >= 0) {
        ::close(m_file);
    }
}

QString SearchCache::databaseFor(const QString& contentsFile)
{
    const QString dir = directory();
    if (dir.isEmpty() || !QDir().mkpath(dir)) {
        return {};
    }
    const QString canonical = QFileInfo(contentsFile).canonicalFilePath();
    const auto hash = QCryptographicHash::hash((canonical.isEmpty() ? contentsFile : canonical).toUtf8(),
                                               QCryptographicHash::Sha1);
    return dir + QString::fromLatin1(hash.toHex()) + suffix();
}

bool SearchCache::hasDatabase(const QString& contentsFile)
{
    const QString database = databaseFor(contentsFile);
    return !database.isEmpty() && QFileInfo::exists(database);
}

QString SearchCache::lockFor(const QString& database)
{
    return database + QStringLiteral("-lock");
}

void SearchCache::remove(const QString& database)
{
    for (const auto* end : {"", "-wal", "-shm", "-journal"}) {
        QFile::remove(database + QLatin1StringView(end));
    }
}

void SearchCache::keepSmall(const QString& used, qint64 mostBytes)
{
    // The time of the lock file is that of the last use.
    QFile mark(lockFor(used));
    if (mark.open(QIODevice::ReadWrite)) {
        mark.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
    }
    const auto lastUse = [](const QFileInfo& database) {
        return QFileInfo(lockFor(database.filePath())).lastModified();
    };
    auto databases = QDir(directory()).entryInfoList({u'*' + suffix()}, QDir::Files);
    std::sort(databases.begin(), databases.end(),
              [&](const auto& a, const auto& b) { return lastUse(a) > lastUse(b); });
    qint64 bytes = 0;
    for (const auto& database : databases) {
        bytes += sizeOf(database);
        if (bytes <= mostBytes || database.filePath() == used) {
            continue;
        }
        std::stop_source noWaiting;
        noWaiting.request_stop();
        const FileLock lockOfOther(lockFor(database.filePath()), noWaiting.get_token());
        if (lockOfOther.isHeld()) {
            remove(database.filePath());
        }
    }
}
