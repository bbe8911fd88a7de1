// SPDX-License-Identifier: MIT
#include "machine/machinecache.h"

#include "formats/regularfile.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QStandardPaths>

namespace {

constexpr int Format = 1;
constexpr qint64 LargestFile = 20'000'000; // bytes

/// What stands in the array of a place.
enum Field { TimeField, HelpSetField, HelpSetTimeField, TitleField, FolderField, PagesField };

const QString FormatKey = QStringLiteral("format");
const QString PlacesKey = QStringLiteral("places");

qint64 timeOf(const QString& name)
{
    const QFileInfo info(name);
    return info.exists() ? info.lastModified().toMSecsSinceEpoch() : -1;
}

} // namespace

MachineCache::MachineCache(const QString& file) : m_file(file)
{
    load();
}

QString MachineCache::usualFile()
{
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return cache.isEmpty() ? QString() : cache + QStringLiteral("/Orvanel/Quenda/machine.json");
}

void MachineCache::load()
{
    const auto read = readRegularFile(m_file, LargestFile);
    const auto root = QJsonDocument::fromJson(read.ok() ? read.value() : QByteArray()).object();
    if (root[FormatKey].toInt() != Format) {
        return;
    }
    const auto places = root[PlacesKey].toObject();
    for (auto place = places.begin(); place != places.end(); ++place) {
        const auto fields = place->toArray();
        Entry entry;
        entry.time = fields.at(TimeField).toInteger();
        entry.helpSetTime = fields.at(HelpSetTimeField).toInteger();
        entry.place = {fields.at(HelpSetField).toString(), fields.at(TitleField).toString(),
                       fields.at(FolderField).toString(), fields.at(PagesField).toInt()};
        m_entries.insert(place.key(), entry);
    }
}

std::optional<MachineCache::Place> MachineCache::find(const QString& name)
{
    const auto entry = m_entries.find(name);
    if (entry == m_entries.end() || entry->time != timeOf(name) ||
        (!entry->place.helpSet.isEmpty() && entry->helpSetTime != timeOf(entry->place.helpSet))) {
        return std::nullopt;
    }
    entry->isUsed = true;
    return entry->place;
}

void MachineCache::insert(const QString& name, const Place& place)
{
    m_entries.insert(name, {place, timeOf(name), place.helpSet.isEmpty() ? 0 : timeOf(place.helpSet), true});
    m_isChanged = true;
}

void MachineCache::save(bool isComplete) const
{
    if (!m_isChanged || m_file.isEmpty() || !QDir().mkpath(QFileInfo(m_file).path())) {
        return;
    }
    QJsonObject places;
    for (auto entry = m_entries.begin(); entry != m_entries.end(); ++entry) {
        if (entry->isUsed || !isComplete) {
            const auto& place = entry->place;
            places.insert(entry.key(), QJsonArray{entry->time, place.helpSet, entry->helpSetTime, place.title,
                                                  place.folder, place.pages});
        }
    }
    QSaveFile file(m_file);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(QJsonDocument(QJsonObject{{FormatKey, Format}, {PlacesKey, places}})
                       .toJson(QJsonDocument::Compact));
        file.commit();
    }
}
