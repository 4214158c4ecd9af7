#include "settings.h"

#include <QFile>
#include <QSaveFile>

#include <new>

namespace {

/// Whether a line holds a value in Qt's binary form. The client writes none, and Qt may crash on a damaged one.
bool isBinary(const QByteArray &line)
{
    const QByteArray text = line.toLower();
    return text.contains("@variant(") || text.contains("\\x40variant(");
}

/// Removes the lines that cannot be read safely; the other settings stay. Returns whether there were any.
bool removeBinaryLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QByteArray kept;
    bool removed = false;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine();
        if (isBinary(line))
            removed = true;
        else
            kept += line;
    }
    if (!removed)
        return false;
    QSaveFile whole(path);
    if (whole.open(QIODevice::WriteOnly) && whole.write(kept) == kept.size() && whole.commit())
        qWarning("Damaged settings were removed from %s.", qPrintable(path));
    else
        qWarning("Damaged settings cannot be removed from %s.", qPrintable(path));
    return true;
}

} // namespace

Settings::Settings()
    : m_settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("orvex"), QStringLiteral("client"))
{
    // QSettings has not parsed the file yet: it does so with the first access.
    if (removeBinaryLines(m_settings.fileName()))
        m_settings.sync();
}

Settings *Settings::instance()
{
    static Settings settings;
    return &settings;
}

QVariant Settings::value(const QString &key, const QVariant &defaultValue) const
{
    // A damaged file may contain a list with a huge count, for which Qt runs out of memory.
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
    removeBinaryLines(m_settings.fileName());
    m_settings.sync();
    const bool synced = m_settings.status() == QSettings::NoError;
    if (!synced)
        qWarning("The settings in %s cannot be written or parsed.", qPrintable(m_settings.fileName()));
    return synced;
}
