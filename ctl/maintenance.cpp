#include "maintenance.h"

#include "arguments.h"
#include "database.h"
#include "newfile.h"
#include "terminal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

using store::Database;
using store::Outcome;
using terminal::done;
using terminal::finish;
using terminal::refused;

/// The absolute path in the second argument; empty for a standard stream.
QString documentOf(const Arguments &arguments)
{
    const QString name = arguments.positional.value(1, QStringLiteral("-"));
    return name == QLatin1String("-") ? QString() : QFileInfo(name).absoluteFilePath();
}

Outcome dumpToOpenFile(Database &database, QFile &file, const QString &name)
{
    Outcome outcome = database.dump(file);
    if (outcome.ok() && !file.flush())
        outcome = store::NewFile::cannotWrite(name, file.errorString());
    file.close();
    return outcome;
}

Outcome dumpToNewFile(Database &database, const QString &path)
{
    store::NewFile target(path);
    if (Outcome created = target.create(); !created.ok())
        return created;
    QFile file(target.partialPath());
    if (!file.open(QIODevice::WriteOnly))
        return store::NewFile::cannotWrite(path, file.errorString());
    const Outcome outcome = dumpToOpenFile(database, file, path);
    return outcome.ok() ? target.commit() : outcome;
}

Outcome dumpToOutput(Database &database)
{
    const QString name = QStringLiteral("-");
    QFile output;
    if (!output.open(stdout, QIODevice::WriteOnly))
        return store::NewFile::cannotWrite(name, output.errorString());
    return dumpToOpenFile(database, output, name);
}

} // namespace

int runCheck(const Arguments &arguments)
{
    Database database;
    QList<store::Fault> faults;
    Outcome outcome = database.open(arguments.store(), store::Access::Read);
    if (outcome.ok())
        outcome = database.check(faults);
    if (!outcome.ok())
        return refused(outcome.message());
    if (faults.isEmpty())
        return done(Text::tr("Хранилище %1 исправно.").arg(arguments.store().toText()));
    for (const auto &fault : qAsConst(faults))
        terminal::print(stdout, fault.text + QStringLiteral("\n    ") + fault.remedy);
    return refused(Text::tr("Хранилище %1: найдено ошибок: %2.").arg(arguments.store().toText()).arg(faults.size()));
}

int runBackup(const Arguments &arguments)
{
    const QString target = QFileInfo(arguments.positional.at(1)).absoluteFilePath();
    return finish(Database::backUp(arguments.store(), target),
                  Text::tr("Копия хранилища записана в файл %1.").arg(QDir::toNativeSeparators(target)));
}

int runUpgrade(const Arguments &arguments)
{
    store::Upgrade upgrade;
    const Outcome outcome = Database::upgrade(arguments.store(), upgrade);
    const QString copy =
        upgrade.copy.isEmpty() ? QString() : Text::tr("Прежнее хранилище сохранено в файле %1.").arg(upgrade.copy);
    if (!outcome.ok())
        return refused(QStringLiteral("%1 %2").arg(outcome.message(), copy).trimmed());
    if (upgrade.from == upgrade.to)
        return done(Text::tr("Хранилище уже новое: его схема %1.").arg(upgrade.to));
    return done(
        Text::tr("Хранилище обновлено со схемы %1 до схемы %2. %3").arg(upgrade.from).arg(upgrade.to).arg(copy));
}

int runDump(const Arguments &arguments)
{
    Database database;
    Outcome outcome = database.open(arguments.store(), store::Access::Read);
    const QString path = documentOf(arguments);
    if (outcome.ok())
        outcome = path.isEmpty() ? dumpToOutput(database) : dumpToNewFile(database, path);
    if (outcome.ok() && path.isEmpty())
        return ExitDone; // the output holds the document alone
    return finish(outcome, Text::tr("Хранилище выгружено в файл %1.").arg(QDir::toNativeSeparators(path)));
}

int runLoad(const Arguments &arguments)
{
    const QString path = documentOf(arguments);
    QFile document(path);
    const bool isOpen = path.isEmpty() ? document.open(stdin, QIODevice::ReadOnly) : document.open(QIODevice::ReadOnly);
    if (!isOpen) {
        return refused(Text::tr("Файл %1 не удалось прочитать: %2. Проверьте имя файла и права на него.")
                           .arg(QDir::toNativeSeparators(path), document.errorString()));
    }
    return finish(Database::createFromDump(arguments.store(), document),
                  Text::tr("Хранилище %1 создано из выгрузки.").arg(arguments.store().toText()));
}
