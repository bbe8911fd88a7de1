// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

#include <optional>

/// What was found out about the places of a machine, with the times of their files and folders, so that it
/// need not be looked up again. It may be deleted at any time, and is of no use where it cannot be written.
class MachineCache {
public:
    /// Null for none; then nothing is kept.
    explicit MachineCache(const QString& file);
    /// In the user's cache; null when there is none.
    [[nodiscard]] static QString usualFile();

    struct Place {
        QString helpSet; ///< that it stands for; null when there is none
        QString title;   ///< that the help set gives itself; null when it has none
        QString folder;  ///< canonical path of that of its pages; null for none
        int pages = 0;
    };
    /// None when the place or its help set has changed since.
    [[nodiscard]] std::optional<Place> find(const QString& name);
    void insert(const QString& name, const Place& place);
    /// Places that nobody asked for are forgotten, once all have been looked at.
    void save(bool isComplete) const;

private:
    struct Entry {
        Place place;
        qint64 time = 0;        ///< of the last change, milliseconds since 1970
        qint64 helpSetTime = 0; ///< of the help set
        bool isUsed = false;
    };
    void load();

    QString m_file;
    QHash<QString, Entry> m_entries;
    bool m_isChanged = false;
};
