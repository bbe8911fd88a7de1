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
        const FileLock lockOfOther(lockFor(database.filePath()), std::chrono::milliseconds(0));
        if (lockOfOther.isHeld()) {
            remove(database.filePath());
        }
    }
}
