#pragma once

#include "tqglobals_export.h"

#include <QSettings>
#include <QVariant>

/// The client's settings of this user: one INI file in the user's configuration folder. GUI thread only.
class TQGLOBALS_EXPORT Settings
{
public:
    /// The only instance. Values that are not synced yet are written when the program ends.
    static Settings *instance();

    /// The value of \a key; \a defaultValue if there is none or it cannot be read.
    [[nodiscard]] QVariant value(const QString &key, const QVariant &defaultValue = {}) const;
    /// Sets a value in memory; `sync()` writes it to the disk.
    void setValue(const QString &key, const QVariant &value);
    /// Writes changed values and reads those changed by other processes; false, and a warning in the log, if the file
    /// cannot be written or parsed.
    bool sync();

private:
    Settings();

    QSettings m_settings;
};
