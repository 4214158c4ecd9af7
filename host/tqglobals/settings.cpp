#include "settings.h"

#include <new>

Settings::Settings()
    : m_settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("orvex"), QStringLiteral("client"))
{
}

Settings *Settings::instance()
{
    static Settings settings;
    return &settings;
}

QVariant Settings::value(const QString &key, const QVariant &defaultValue) const
{
    // A damaged file may hold a list with an absurd count, for which Qt runs out of memory.
    try {
        return m_settings.value(key, defaultValue);
    } catch (const std::bad_alloc &) {
        qWarning("The setting %s cannot be read.", qPrintable(key));
        return defaultValue;
    }
}

void Settings::setValue(const QString &key, const QVariant &value)
{
    m_settings.setValue(key, value);
}

bool Settings::sync()
{
    m_settings.sync();
    return m_settings.status() == QSettings::NoError;
}
