#pragma once

#include "tqglobals_export.h"

#include <QSettings>
#include <QVariant>

/// The client's settings of this user: one INI file in the user's configuration folder. GUI thread only.
class TQGLOBALS_EXPORT Settings
{
public:
    /// The one of this program. What was set and not synced is written when the program ends.
    static Settings *instance();

    /// The value of a key; \a defaultValue where there is none, or none that can be read.
    [[nodiscard]] QVariant value(const QString &key, const QVariant &defaultValue = {}) const;
    /// Sets a value in memory; `sync()` brings it to the disk.
    void setValue(const QString &key, const QVariant &value);
    /// Writes what was set and reads what others wrote; false when the file could not be written or understood.
    bool sync();

private:
    Settings();

    QSettings m_settings;
};
