// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>

/// The settings store, held under an advisory lock for as long as the object lives, so that reading, changing
/// and writing of concurrent processes do not mix. The kernel drops the lock with the process; where no lock
/// file can be made, work goes on without one. A thread must not hold two of these at once.
class SettingsStore {
public:
    enum class Access {
        Read,  ///< leaves no trace on disk
        Write, ///< keeps everyone else out
    };

    explicit SettingsStore(Access access);
    ~SettingsStore();
    Q_DISABLE_COPY_MOVE(SettingsStore)

    /// `name` is the key without its group.
    [[nodiscard]] bool contains(const char* name) const;
    [[nodiscard]] QVariant value(const char* name, const QVariant& fallback = {}) const;
    void setValue(const char* name, const QVariant& value);
    /// Writes what has been set; false when the store could not be written.
    bool sync();

    /// Path of the store, for messages.
    [[nodiscard]] QString fileName() const { return m_settings.fileName(); }

private:
    // Locked before the settings are read: they note size and time of the file only after reading it, and
    // would take what another process wrote in between for what they have read.
    int m_lock;
    QSettings m_settings;
};
