#include "options.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

#include <cstdio>
#include <cstdlib>

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("Options", source);
}

[[noreturn]] void refuse(const QString &reason)
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
        refuse(text("Значение параметра --show должно иметь вид ИМЯ или ИМЯ:НОМЕР, а не «%1».").arg(value));
}

} // namespace

Options Options::fromCommandLine()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(text("Клиент системы учёта рабочего времени."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption store(QStringLiteral("store"), text("Открыть хранилище в этом файле."), text("файл"));
    const QCommandLineOption plugins(QStringLiteral("plugins"), text("Загрузить подключаемые модули из этой папки."),
                                     text("папка"),
                                     QCoreApplication::applicationDirPath() + QStringLiteral("/../plugins"));
    const QCommandLineOption theme(QStringLiteral("theme"), text("Оформление: light, dark или system."), text("тема"));
    const QCommandLineOption show(QStringLiteral("show"),
                                  text("Открыть страницу, например scheduleview, и на ней объект с этим номером."),
                                  text("имя[:номер]"));
    const QCommandLineOption pictures(QStringLiteral("pictures"),
                                      text("Записать изображение каждой вкладки в эту папку и завершить работу."),
                                      text("папка"));
    parser.addOptions({store, plugins, theme, show, pictures});
    parser.process(*QCoreApplication::instance());
    const QStringList superfluous = parser.positionalArguments();
    if (!superfluous.isEmpty())
        refuse(text("Лишний параметр «%1». Список параметров выводит --help.").arg(superfluous.first()));

    Options options;
    if (parser.isSet(store))
        options.store = store::StoreAddress::file(parser.value(store));
    options.plugins = QDir::cleanPath(parser.value(plugins));
    options.pictures = parser.value(pictures);
    if (parser.isSet(theme)) {
        options.theme = themeNamed(parser.value(theme));
        if (!options.theme)
            refuse(text("Параметр --theme принимает light, dark или system, а не «%1».").arg(parser.value(theme)));
    }
    if (parser.isSet(show))
        readShow(parser.value(show), options);
    return options;
}

store::StoreAddress Options::usualStore()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return store::StoreAddress::file(data + QStringLiteral("/orvex/orvex.db"));
}
