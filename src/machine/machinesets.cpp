// SPDX-License-Identifier: MIT
#include "machine/machinesets.h"

#include "machine/machinecache.h"
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
    Finder(const MachinePlaces& places, const std::stop_token& stop)
        : m_places(places), m_stop(stop), m_cache(places.cacheFile)
    {
    }

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
        m_cache.save(!m_stop.stop_requested());
        auto sets = withoutFoldersOfBooks();
        std::sort(sets.begin(), sets.end(), [](const auto& a, const auto& b) {
            return QString::compare(a.title, b.title, Qt::CaseInsensitive) < 0;
        });
        return sets;
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
            add(folder + u'/' + name, {}, {});
        }
    }

    /// A folder beside a Qt help file of its name holds the same pages.
    static QString richest(const QString& helpSet)
    {
        const QString packed = helpSet + QStringLiteral(".qch");
        return QFileInfo::exists(packed) ? packed : helpSet;
    }

    MachineCache::Place look(const QString& name)
    {
        if (auto known = m_cache.find(name)) {
            return *known;
        }
        MachineCache::Place place;
        if (!sourceError(name)) {
            place.helpSet = richest(placeOf(name).helpSet);
            place.title = sourceTitle(place.helpSet);
            place.title = place.title == place.helpSet ? QString() : place.title.simplified();
            place.folder = QFileInfo(pagesFolder(place.helpSet)).canonicalFilePath();
            place.pages = pageCount(place.helpSet, m_stop);
        }
        if (!m_stop.stop_requested()) {
            m_cache.insert(name, place);
        }
        return place;
    }

    void add(const QString& name, const QString& title, const QString& section)
    {
        if (m_stop.stop_requested() || m_found.size() >= MostSets) {
            return;
        }
        const auto place = look(name);
        const QString canonical = QFileInfo(place.helpSet).canonicalFilePath();
        if (place.helpSet.isEmpty() || canonical.isEmpty() || m_known.contains(canonical)) {
            return;
        }
        m_known.insert(canonical);
        // What a set of many documents calls itself says more than the name of one of them.
        const QString shown = place.title.size() < ShortTitle ? title : place.title;
        const QString own = place.title.isEmpty() ? place.helpSet : place.title;
        m_found.push_back({{shown.isEmpty() ? own : shown, sourceKindName(place.helpSet), place.helpSet,
                            section, place.pages},
                           place.folder,
                           place.folder == canonical});
    }

    /// Of a book and the folder of its pages, the book is the richer one.
    std::vector<MachineSet> withoutFoldersOfBooks()
    {
        QSet<QString> ofBooks;
        for (const auto& found : m_found) {
            if (!found.isFolder && !found.folder.isEmpty()) {
                ofBooks.insert(found.folder);
            }
        }
        std::vector<MachineSet> sets;
        for (auto& found : m_found) {
            if (!found.isFolder || !ofBooks.contains(found.folder)) {
                sets.push_back(std::move(found.set));
            }
        }
        return sets;
    }

    struct Found {
        MachineSet set;
        QString folder; ///< of its pages, canonical; empty for none
        bool isFolder;  ///< the set is that folder
    };

    static constexpr qsizetype ShortTitle = 8; ///< characters; such as "Index"

    const MachinePlaces& m_places;
    const std::stop_token& m_stop;
    MachineCache m_cache;
    std::vector<Found> m_found;
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
    return {data, userFolders, MachineCache::usualFile()};
}

std::vector<MachineSet> findMachineSets(const MachinePlaces& places, const std::stop_token& stop)
{
    return Finder(places, stop).find();
}
