// SPDX-License-Identifier: MIT
#pragma once

#include "system/filelock.h"

#include <QSettings>
#include <QVariantMap>

/// The settings store. For writing it is held under an advisory lock for as long as the object lives, so that
/// reading, changing and writing of concurrent processes do not mix. The kernel drops the lock with the
/// process; where no lock file can be made, work goes on without one; while others keep the lock for seconds,
/// nothing is written. The file is replaced by a whole new one or stays as it is. A thread must not hold two
/// of these for writing at once.
class SettingsStore {
public:
    enum class Access {
        Read,  ///< waits for nobody and leaves no trace on disk
        Write, ///< keeps everyone else out
    };

    explicit SettingsStore(Access access);
    ~SettingsStore();
    Q_DISABLE_COPY_MOVE(SettingsStore)

    /// `name` is the key without its group.
    [[nodiscard]] bool contains(const char* name) const;
    [[nodiscard]] QVariant value(const char* name, const QVariant& fallback = {}) const;
    void setValue(const char* name, const QVariant& value);
    /// Writes what has been set, which value() does not give before; false when the store could not be
    /// written, and what has been set is lost.
    bool sync();

    /// Path of the store, for messages.
    [[nodiscard]] QString fileName() const { return m_settings.fileName(); }

private:
    FileLock m_lock;      // taken before the settings are read
    QSettings m_settings; ///< for reading
    QVariantMap m_changes;
};
