#include "backupnames.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace store::backups {

namespace {

QString nameWith(const StoreAddress &address, const QString &what)
{
    const QFileInfo file(address.filePath());
    const QString suffix = file.suffix().isEmpty() ? QString() : QLatin1Char('.') + file.suffix();
    return QStringLiteral("%1/%2-%3%4").arg(folder(address), file.completeBaseName(), what, suffix);
}

QString nameOf(const StoreAddress &address, const QDate &date)
{
    return nameWith(address, date.toString(Qt::ISODate));
}

} // namespace

QString folder(const StoreAddress &address)
{
    return QFileInfo(address.filePath()).path() + QStringLiteral("/backups");
}

QString dailyName(const StoreAddress &address, const QDateTime &now)
{
    return nameOf(address, now.toLocalTime().date());
}

QString nameBeforeUpgrade(const StoreAddress &address, int schema, const QDateTime &now)
{
    return nameWith(address,
                    QStringLiteral("schema-%1-%2")
                        .arg(schema)
                        .arg(now.toLocalTime().toString(QStringLiteral("yyyy-MM-dd-HHmmss"))));
}

QDate dateOfDaily(const StoreAddress &address, const QString &name)
{
    static const QRegularExpression date(QStringLiteral("-(\\d{4}-\\d{2}-\\d{2})(\\.[^.]*)?$"));
    const QDate found = QDate::fromString(date.match(name).captured(1), Qt::ISODate);
    const bool isDaily = found.isValid() && nameOf(address, found) == folder(address) + QLatin1Char('/') + name;
    return isDaily ? found : QDate();
}

} // namespace store::backups
