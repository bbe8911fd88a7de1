// SPDX-License-Identifier: MIT
#include "fulltext/searchcache.h"

#include "system/filelock.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <vector>

namespace {

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

struct Kept {
    QString file;
    qint64 bytes;
    QDateTime lastUse;
};

} // namespace

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
    std::vector<Kept> databases;
    qint64 bytes = 0;
    for (const auto& database : QDir(directory()).entryInfoList({u'*' + suffix()}, QDir::Files)) {
        databases.push_back({database.filePath(), sizeOf(database), {}});
        bytes += databases.back().bytes;
    }
    // The order costs much where there are hundreds, and is seldom needed.
    if (bytes <= mostBytes) {
        return;
    }
    for (auto& database : databases) {
        database.lastUse = QFileInfo(lockFor(database.file)).lastModified();
    }
    std::sort(databases.begin(), databases.end(),
              [](const Kept& a, const Kept& b) { return a.lastUse > b.lastUse; });
    bytes = 0;
    for (const auto& database : databases) {
        bytes += database.bytes;
        if (bytes <= mostBytes || database.file == used) {
            continue;
        }
        const FileLock lockOfOther(lockFor(database.file), std::chrono::milliseconds(0));
        if (lockOfOther.isHeld()) {
            remove(database.file);
        }
    }
}
