#include "storefile.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace support {

QString tryStatement(const QString &file, const QString &statement)
{
    const QString connection = "test statement";
    QString error;
    {
        auto database = QSqlDatabase::addDatabase("QSQLITE", connection);
        database.setDatabaseName(file);
        database.open();
        QSqlQuery query(database);
        if (!query.exec(statement))
            error = QStringLiteral("%1: %2").arg(statement, query.lastError().text());
    }
    QSqlDatabase::removeDatabase(connection);
    return error;
}

void executeStatement(const QString &file, const QString &statement)
{
    const QString error = tryStatement(file, statement);
    if (!error.isEmpty())
        qFatal("%s", qPrintable(error));
}

QByteArray contents(const QString &file)
{
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

} // namespace support
