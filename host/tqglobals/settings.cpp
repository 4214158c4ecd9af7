#include "settings.h"

#include <QFile>
#include <QSaveFile>

#include <new>

namespace {

/// Whether a line holds a value in Qt's binary form. None of the client's does, and Qt may crash when it reads a
/// damaged one.
bool isBinary(const QByteArray &line)
{
    const QByteArray text = line.toLower();
    return text.contains("@variant(") || text.contains("\\x40variant(");
}

/// Takes the lines that cannot be read safely out of the file; the other settings stay. True where there were any.
bool dropBinaryLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QByteArray kept;
    bool dropped = false;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine();
        if (isBinary(line))
            dropped = true;
        else
            kept += line;
    }
    if (!dropped)
        return false;
    QSaveFile whole(path);
    if (whole.open(QIODevice::WriteOnly) && whole.write(kept) == kept.size() && whole.commit())
        qWarning("Damaged settings were taken out of %s.", qPrintable(path));
    else
        qWarning("Damaged settings cannot be taken out of %s.", qPrintable(path));
    return true;
}

} // namespace

Settings::Settings()
    : m_settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("orvex"), QStringLiteral("client"))
{
    // Values are read when the first one is asked for, so not yet.
    if (dropBinaryLines(m_settings.fileName()))
        m_settings.sync();
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
    dropBinaryLines(m_settings.fileName());
    m_settings.sync();
    return m_settings.status() == QSettings::NoError;
}
