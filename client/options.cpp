#include "options.h"

#include <QCommandLineParser>
#include <QDir>
#include <QStandardPaths>

#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void exitWithError(const QString &reason)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(reason));
    std::exit(EXIT_FAILURE);
}

std::optional<tqstyles::Theme> themeNamed(const QString &name)
{
    if (name == QLatin1String("light"))
        return tqstyles::Theme::Light;
    if (name == QLatin1String("dark"))
        return tqstyles::Theme::Dark;
    if (name == QLatin1String("system"))
        return tqstyles::Theme::System;
    return {};
}

void readShow(const QString &value, Options &options)
{
    options.showName = value.section(QLatin1Char(':'), 0, 0);
    const QString id = value.section(QLatin1Char(':'), 1);
    bool isNumber = true;
    if (!id.isEmpty())
        options.showId = id.toInt(&isNumber);
    if (options.showName.isEmpty() || !isNumber)
        exitWithError(
            Options::tr("Значение параметра --show должно иметь вид ИМЯ или ИМЯ:НОМЕР, а не «%1».").arg(value));
}

} // namespace

Options Options::fromCommandLine()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(tr("Клиент системы учёта рабочего времени."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption store(QStringLiteral("store"), tr("Открыть хранилище в этом файле."), tr("файл"));
    const QCommandLineOption plugins(
        QStringLiteral("plugins"), tr("Загрузить подключаемые модули из этой папки."), tr("папка"),
        QDir(QCoreApplication::applicationDirPath()).absoluteFilePath(QStringLiteral(ORVEX_PLUGINS_FROM_BIN)));
    const QCommandLineOption theme(QStringLiteral("theme"), tr("Оформление: light, dark или system."), tr("тема"));
    const QCommandLineOption show(QStringLiteral("show"),
                                  tr("Открыть страницу, например scheduleview, и на ней объект с этим номером."),
                                  tr("имя[:номер]"));
    const QCommandLineOption pictures(QStringLiteral("pictures"),
                                      tr("Записать изображение каждой вкладки в эту папку и завершить работу."),
                                      tr("папка"));
    parser.addOptions({store, plugins, theme, show, pictures});
    parser.process(*QCoreApplication::instance());
    const QStringList superfluous = parser.positionalArguments();
    if (!superfluous.isEmpty())
        exitWithError(Options::tr("Лишний параметр «%1». Список параметров выводит --help.").arg(superfluous.first()));

    Options options;
    if (parser.isSet(store))
        options.store = store::StoreAddress::file(parser.value(store));
    options.plugins = QDir::cleanPath(parser.value(plugins));
    options.pictures = parser.value(pictures);
    if (parser.isSet(theme)) {
        options.theme = themeNamed(parser.value(theme));
        if (!options.theme)
            exitWithError(
                Options::tr("Параметр --theme принимает light, dark или system, а не «%1».").arg(parser.value(theme)));
    }
    if (parser.isSet(show))
        readShow(parser.value(show), options);
    return options;
}

store::StoreAddress Options::defaultStore()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return store::StoreAddress::file(data + QStringLiteral("/orvex/orvex.db"));
}
