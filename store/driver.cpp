#include "driver.h"

#include "sqlfiles.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace store {

Driver::~Driver() = default;

Outcome Driver::copy(const StoreAddress &address, const QString &target)
{
    Outcome outcome = connectTo(address, Access::Read);
    if (outcome.ok())
        outcome = copyTo(target);
    close();
    return outcome;
}

Outcome Driver::upgrade(const StoreAddress &address, const PrepareCopy &prepareCopy, Upgrade &done)
{
    Outcome outcome = connectTo(address, Access::Write);
    if (outcome.ok())
        outcome = upgradeConnected(address, prepareCopy, done);
    close();
    return outcome;
}

Outcome Driver::upgradeConnected(const StoreAddress &address, const PrepareCopy &prepareCopy, Upgrade &done)
{
    if (Outcome read = readSchema(done.from); !read.ok())
        return read;
    done.to = done.from;
    if (done.from < sqlfiles::schemaVersion(engine())) {
        QString target;
        Outcome outcome = prepareCopy(done.from, target);
        if (outcome.ok())
            outcome = copyTo(target);
        if (!outcome.ok())
            return outcome;
        done.copy = target;
        if (Outcome applied = applySteps(address, done.from); !applied.ok())
            return applied;
    }
    if (Outcome checked = checkIsNewest(address); !checked.ok())
        return checked;
    done.to = sqlfiles::schemaVersion(engine());
    return {};
}

Outcome Driver::open(const StoreAddress &address, Access access)
{
    Outcome outcome = connectTo(address, access);
    // Nothing is written before the schema is known.
    if (outcome.ok())
        outcome = checkIsNewest(address);
    if (outcome.ok())
        outcome = finishOpening(access);
    if (!outcome.ok())
        close();
    return outcome;
}

Outcome Driver::checkIsNewest(const StoreAddress &address)
{
    int version = 0;
    if (Outcome read = readSchema(version); !read.ok())
        return read;
    const int newest = sqlfiles::schemaVersion(engine());
    if (version == newest)
        return {};
    const bool isNewer = version > newest;
    const QString text = isNewer
        ? tr("Хранилище %1 создано более новой версией программы: его схема %2, а эта программа знает схему %3.")
        : tr("Хранилище %1 создано более старой версией программы: его схема %2, а нужна схема %3.");
    return {ResultInvalidData, text.arg(address.toText(), QString::number(version), QString::number(newest)),
            isNewer ? tr("Обновите программу.")
                    : tr("Выполните команду orvexctl upgrade: она сохранит копию и обновит хранилище.")};
}

Outcome Driver::applySteps(const StoreAddress &address, int from)
{
    for (int version = from + 1; version <= sqlfiles::schemaVersion(engine()); ++version) {
        const QSqlError error = applyStep(version);
        if (!error.isValid())
            continue;
        rollback();
        return {classify(error).code,
                tr("Не удалось привести хранилище %1 к схеме %2: %3.")
                    .arg(address.toText())
                    .arg(version)
                    .arg(error.databaseText()),
                tr("Хранилище осталось при схеме %1.").arg(version - 1)};
    }
    return {};
}

QSqlError Driver::applyStep(int version)
{
    QSqlError error = begin(Transaction::Write);
    for (const QString &statement : sqlfiles::schemaStep(engine(), version)) {
        if (!error.isValid())
            error = run(statement);
    }
    if (!error.isValid())
        error = writeSchema(version);
    return error.isValid() ? error : commit();
}

QSqlError Driver::writeSchema(int version)
{
    QSqlQuery query(database());
    if (!query.prepare(statement("schema_version_set")))
        return query.lastError();
    query.bindValue(QStringLiteral(":version"), version);
    return query.exec() ? QSqlError() : query.lastError();
}

QSqlError Driver::run(const QString &sql)
{
    QSqlQuery query(database());
    return query.exec(sql) ? QSqlError() : query.lastError();
}

QString Driver::statement(const char *name) const
{
    return sqlfiles::statement(engine(), QLatin1String(name));
}

} // namespace store
