#include "backups.h"

#include "database.h"
#include "newfile.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace store::backups {

namespace {

QString nameWith(const StoreAddress &address, const QString &what)
{
    const QFileInfo file(address.filePath());
    const QString suffix = file.suffix().isEmpty() ? QString() : QLatin1Char('.') + file.suffix();
    return QStringLiteral("%1/%2-%3%4").arg(folder(address), file.completeBaseName(), what, suffix);
}

/// The date of a daily copy's name; null for any other file.
QDate dateOf(const StoreAddress &address, const QString &name)
{
    static const QRegularExpression date(QStringLiteral("-(\\d{4}-\\d{2}-\\d{2})(\\.[^.]*)?$"));
    const QDate found = QDate::fromString(date.match(name).captured(1), Qt::ISODate);
    const bool isDaily =
        found.isValid() && nameWith(address, found.toString(Qt::ISODate)) == folder(address) + QLatin1Char('/') + name;
    return isDaily ? found : QDate();
}

void removeOldest(const StoreAddress &address, const QDate &today)
{
    QDir dir(folder(address));
    QList<QDate> dates;
    for (const QString &name : dir.entryList(QDir::Files)) {
        if (const QDate date = dateOf(address, name); date.isValid())
            dates.append(date);
    }
    // What a clock that ran ahead has dated is the first to go.
    const auto goesFirst = [today](const QDate &a, const QDate &b) {
        return (a > today) != (b > today) ? a > today : a < b;
    };
    std::sort(dates.begin(), dates.end(), goesFirst);
    while (dates.size() > Kept)
        QFile::remove(nameWith(address, dates.takeFirst().toString(Qt::ISODate)));
}

/// What copying left behind when it was cut off.
void removeUnfinished(const StoreAddress &address, const QDateTime &now)
{
    const QDir dir(folder(address));
    for (const QFileInfo &file : dir.entryInfoList({QStringLiteral("*.partial-*")}, QDir::Files)) {
        if (std::abs(file.lastModified().secsTo(now)) > 24 * 3600)
            QFile::remove(file.filePath());
    }
}

} // namespace

QString folder(const StoreAddress &address)
{
    return QFileInfo(address.filePath()).path() + QStringLiteral("/backups");
}

QString dailyName(const StoreAddress &address, const QDateTime &now)
{
    return nameWith(address, now.toLocalTime().date().toString(Qt::ISODate));
}

QString nameBeforeUpgrade(const StoreAddress &address, int schema, const QDateTime &now)
{
    return nameWith(address,
                    QStringLiteral("schema-%1-%2")
                        .arg(schema)
                        .arg(now.toLocalTime().toString(QStringLiteral("yyyy-MM-dd-HHmmss"))));
}

Outcome makeDaily(const StoreAddress &address, const QDateTime &now)
{
    const QString name = dailyName(address, now);
    if (QFileInfo::exists(name))
        return {};
    if (Outcome made = makeFolder(folder(address)); !made.ok())
        return made;
    removeUnfinished(address, now);
    Outcome copied = Database::backUp(address, name);
    // Another client may have been faster.
    if (!copied.ok() && !QFileInfo::exists(name))
        return copied;
    removeOldest(address, now.toLocalTime().date());
    return {};
}

} // namespace store::backups
