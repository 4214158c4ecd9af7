#include "subcommands.h"

#include "arguments.h"
#include "database.h"
#include "maintenance.h"
#include "sample.h"
#include "terminal.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <algorithm>
#include <cstdio>

namespace {

using store::Database;
using store::Outcome;
using terminal::done;
using terminal::finish;

int usageError(const QString &text)
{
    terminal::print(stderr, text + QLatin1Char(' ') + Text::tr("Все команды перечисляет orvexctl --help."));
    return ExitUsage;
}

struct Subcommand
{
    const char *name;
    const char *arguments;
    int positional; ///< number of required positional arguments
    QStringList options; ///< names; every option takes a value
    const char *summary;
    int (*run)(const Arguments &arguments);
    int optional = 0; ///< number of further positional arguments
};

int runInit(const Arguments &arguments)
{
    const auto address = arguments.store();
    return finish(Database::create(address), Text::tr("Создано пустое хранилище %1.").arg(address.toText()));
}

/// Reads an option into \a number, which keeps its value without the option. Returns false if it is not a number in the
/// range.
bool readNumber(const Arguments &arguments, const QString &option, int least, int most, int &number)
{
    if (!arguments.options.contains(option))
        return true;
    bool ok = false;
    number = arguments.options.value(option).toInt(&ok);
    return ok && number >= least && number <= most;
}

/// Fails if the store holds schedules or objects, which the sample would be mixed with.
Outcome checkEmpty(Database &database)
{
    orvex::StorageChange content;
    Outcome outcome = database.snapshot(content);
    if (!outcome.ok())
        return outcome;
    const bool empty = content.schedules.isEmpty()
        && std::all_of(content.objects.cbegin(), content.objects.cend(), [](const auto &o) { return o.isEmpty(); });
    if (empty)
        return {};
    return {ResultInvalidData, Text::tr("В хранилище уже есть данные, пример не записан."),
            Text::tr("Создайте для него пустое хранилище командой orvexctl init и повторите.")};
}

int runSample(const Arguments &arguments)
{
    constexpr int MaximumEmployees = 100000;
    constexpr int MaximumMonths = 60;
    SampleSize size;
    if (!readNumber(arguments, QStringLiteral("employees"), 1, MaximumEmployees, size.employees))
        return usageError(Text::tr("После --employees нужно число от 1 до %1.").arg(MaximumEmployees));
    if (!readNumber(arguments, QStringLiteral("months"), 1, MaximumMonths, size.months))
        return usageError(Text::tr("После --months нужно число от 1 до %1.").arg(MaximumMonths));
    Database database;
    SampleCounts counts;
    Outcome outcome = database.open(arguments.store());
    if (outcome.ok())
        outcome = checkEmpty(database);
    if (outcome.ok())
        outcome = writeSample(database, size, QDate::currentDate(), counts);
    return finish(outcome,
                  Text::tr("Записан пример организации: подразделений %1, сотрудников %2, смен %3, общих графиков %4, "
                           "индивидуальных графиков %5, фотографий %6.")
                      .arg(counts.units)
                      .arg(counts.employees)
                      .arg(counts.shifts)
                      .arg(counts.commonSchedules)
                      .arg(counts.personalSchedules)
                      .arg(counts.photos));
}

int setRole(const Arguments &arguments, bool granted)
{
    const QString role = arguments.positional.at(1);
    Database database;
    Outcome outcome = database.open(arguments.store());
    if (outcome.ok())
        outcome = database.setRoleGranted(role, granted);
    return finish(outcome, granted ? Text::tr("Право %1 выдано.").arg(role) : Text::tr("Право %1 отозвано.").arg(role));
}

int runGrant(const Arguments &arguments)
{
    return setRole(arguments, true);
}

int runRevoke(const Arguments &arguments)
{
    return setRole(arguments, false);
}

/// The subcommands that write the content of a store and its rights.
QList<Subcommand> contentSubcommands()
{
    static_assert(SampleSize::MaxPhotos == 300, "the help text below contains this number");
    return {
        {"init", "FILE", 1, {}, QT_TRANSLATE_NOOP("orvexctl", "создаёт пустое хранилище"), runInit},
        {"sample",
         "FILE [--employees N] [--months M]",
         1,
         {QStringLiteral("employees"), QStringLiteral("months")},
         QT_TRANSLATE_NOOP("orvexctl",
                           "заполняет пустое хранилище примером: N сотрудников (60), индивидуальные "
                           "графики на M месяцев (3), фотографии у первых 300 сотрудников"),
         runSample},
        {"grant",
         "FILE ROLE",
         2,
         {},
         QT_TRANSLATE_NOOP("orvexctl", "выдаёт право всем, кто открывает хранилище"),
         runGrant},
        {"revoke", "FILE ROLE", 2, {}, QT_TRANSLATE_NOOP("orvexctl", "отзывает право"), runRevoke},
    };
}

QList<Subcommand> maintenanceSubcommands()
{
    return {
        {"check",
         "FILE",
         1,
         {},
         QT_TRANSLATE_NOOP("orvexctl", "проверяет хранилище и называет каждую ошибку с тем, как её исправить"),
         runCheck},
        {"backup",
         "FILE TARGET",
         2,
         {},
         QT_TRANSLATE_NOOP("orvexctl", "записывает копию хранилища в новый файл, даже если с ним работают"),
         runBackup},
        {"upgrade",
         "FILE",
         1,
         {},
         QT_TRANSLATE_NOOP("orvexctl", "обновляет хранилище старой версии, его копия остаётся в папке backups"),
         runUpgrade},
        {"dump",
         "FILE [TARGET]",
         1,
         {},
         QT_TRANSLATE_NOOP("orvexctl", "выгружает всё хранилище одним документом JSON в новый файл или на вывод (-)"),
         runDump,
         1},
        {"load",
         "FILE [DUMP]",
         1,
         {},
         QT_TRANSLATE_NOOP("orvexctl", "создаёт хранилище из такого документа, из файла или со ввода (-)"),
         runLoad,
         1},
    };
}

const QList<Subcommand> &subcommands()
{
    static const QList<Subcommand> all = contentSubcommands() + maintenanceSubcommands();
    return all;
}

int printHelp()
{
    QString text = Text::tr("Управление хранилищем графиков.") + QStringLiteral("\n\n");
    for (const auto &command : subcommands()) {
        text += QStringLiteral("  orvexctl %1 %2\n      %3\n")
                    .arg(QLatin1String(command.name), QLatin1String(command.arguments), Text::tr(command.summary));
    }
    text += QStringLiteral("  orvexctl --help | --version\n\n");
    text += Text::tr("FILE — файл хранилища, ROLE — право, например RL_SCHEDULE_UPDATE.") + QLatin1Char('\n');
    return done(text + Text::tr("Код завершения: 0 — сделано, 1 — отказ, 2 — ошибка в командной строке."));
}

/// Parses the arguments of \a command. Returns false if they do not fit it; then \a error is the message for the
/// operator.
bool parse(const Subcommand &command, const QStringList &arguments, Arguments &parsed, QString &error)
{
    QCommandLineParser parser;
    for (const QString &name : command.options)
        parser.addOption(QCommandLineOption(name, {}, name));
    const bool understood = parser.parse(QStringList(QLatin1String(command.name)) + arguments);
    const QString usage =
        Text::tr("Верно так: orvexctl %1 %2.").arg(QLatin1String(command.name), QLatin1String(command.arguments));
    if (!parser.unknownOptionNames().isEmpty())
        error =
            Text::tr("Ключ «%1» неизвестен.").arg(parser.unknownOptionNames().constFirst()) + QLatin1Char(' ') + usage;
    else if (!understood)
        error = Text::tr("После последнего ключа нужно значение.") + QLatin1Char(' ') + usage;
    else if (parser.positionalArguments().size() < command.positional
             || parser.positionalArguments().size() > command.positional + command.optional)
        error = usage;
    if (!error.isEmpty())
        return false;
    parsed.positional = parser.positionalArguments();
    for (const QString &name : command.options) {
        if (parser.isSet(name))
            parsed.options.insert(name, parser.value(name));
    }
    return true;
}

} // namespace

int runSubcommand(const QStringList &arguments)
{
    if (arguments.isEmpty())
        return usageError(Text::tr("Не указана команда."));
    const QString &name = arguments.first();
    if (arguments.contains(QLatin1String("--help")) || name == QLatin1String("-h"))
        return printHelp();
    if (name == QLatin1String("--version") || name == QLatin1String("-v"))
        return done(QStringLiteral("orvexctl ") + QCoreApplication::applicationVersion());
    const auto command = std::find_if(subcommands().cbegin(), subcommands().cend(),
                                      [&](const Subcommand &c) { return name == QLatin1String(c.name); });
    if (command == subcommands().cend())
        return usageError(Text::tr("Команда «%1» неизвестна.").arg(name));
    Arguments parsed;
    QString error;
    if (!parse(*command, arguments.mid(1), parsed, error))
        return usageError(error);
    return command->run(parsed);
}
