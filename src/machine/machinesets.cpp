// SPDX-License-Identifier: MIT
#include "machine/machinesets.h"

#include "sources/registereddocument.h"
#include "sources/sources.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>

namespace {

constexpr size_t MostSets = 10'000;

class Finder {
public:
    Finder(const MachinePlaces& places, const std::stop_token& stop) : m_places(places), m_stop(stop) {}

    std::vector<MachineSet> find()
    {
        for (const auto& data : m_places.dataFolders) {
            addRegistered(data + QStringLiteral("/doc-base"));
            for (const auto& folder : packageFolders(data)) {
                addFiles(folder, QStringLiteral("*.qch"));
            }
            for (const auto* folder : {"/devhelp/books", "/gtk-doc/html"}) {
                addFolders(data + QLatin1StringView(folder));
            }
            addFolders(data + QStringLiteral("/doc"));
        }
        for (const auto& folder : m_places.userFolders) {
            add(folder, {}, {});
            addFiles(folder, QStringLiteral("*.qch"));
            addFiles(folder, QStringLiteral("*.cnt"));
            addFiles(folder, QStringLiteral("*.devhelp2"));
            addFolders(folder);
        }
        std::sort(m_sets.begin(), m_sets.end(), [](const auto& a, const auto& b) {
            return QString::compare(a.title, b.title, Qt::CaseInsensitive) < 0;
        });
        return std::move(m_sets);
    }

private:
    /// Sorted, so that of two shapes the same one is found each time.
    [[nodiscard]] QStringList entries(const QString& folder, const QString& pattern,
                                      QDir::Filters filters) const
    {
        const auto all = QDir(folder).entryList({pattern}, filters | QDir::NoDotAndDotDot, QDir::Name);
        return m_stop.stop_requested() ? QStringList() : all;
    }

    void addRegistered(const QString& folder)
    {
        for (const auto& name : entries(folder, QStringLiteral("*"), QDir::Files)) {
            const QString file = folder + u'/' + name;
            const auto document = m_stop.stop_requested() ? std::nullopt : readRegisteredDocument(file);
            const bool isShown = document && (document->format(QStringLiteral("html")) != nullptr ||
                                              document->format(QStringLiteral("text")) != nullptr);
            if (isShown) {
                add(file, document->title, document->section);
            }
        }
    }

    void addFiles(const QString& folder, const QString& pattern)
    {
        for (const auto& name : entries(folder, pattern, QDir::Files)) {
            add(folder + u'/' + name, {}, {});
        }
    }

    void addFolders(const QString& folder)
    {
        for (const auto& name : entries(folder, QStringLiteral("*"), QDir::Dirs)) {
            if (!sourceError(folder + u'/' + name)) {
                add(folder + u'/' + name, {}, {});
            }
        }
    }

    /// A folder beside a Qt help file of its name holds the same pages.
    static QString richest(const QString& helpSet)
    {
        const QString packed = helpSet + QStringLiteral(".qch");
        return QFileInfo::exists(packed) ? packed : helpSet;
    }

    void add(const QString& name, const QString& title, const QString& section)
    {
        if (m_stop.stop_requested() || m_sets.size() >= MostSets || sourceError(name)) {
            return;
        }
        const QString helpSet = richest(placeOf(name).helpSet);
        const QString canonical = QFileInfo(helpSet).canonicalFilePath();
        if (canonical.isEmpty() || m_known.contains(canonical)) {
            return;
        }
        m_known.insert(canonical);
        const QString own = sourceTitle(helpSet);
        // What a set of many documents calls itself says more than the name of one of them.
        const QString shown = own == helpSet || own.size() < ShortTitle ? title : own;
        m_sets.push_back({shown.isEmpty() ? own : shown, sourceKindName(helpSet), helpSet, section});
    }

    static constexpr qsizetype ShortTitle = 8; ///< characters; such as "Index"

    const MachinePlaces& m_places;
    const std::stop_token& m_stop;
    std::vector<MachineSet> m_sets;
    QSet<QString> m_known; ///< canonical paths
};

} // namespace

MachinePlaces machinePlaces(const QStringList& userFolders)
{
    QStringList data;
    for (const auto& folder : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        if (QFileInfo(folder).isDir()) {
            data.append(folder);
        }
    }
    return {data, userFolders};
}

std::vector<MachineSet> findMachineSets(const MachinePlaces& places, const std::stop_token& stop)
{
    return Finder(places, stop).find();
}
