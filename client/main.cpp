#include "client.h"
#include "clientstyle.h"
#include "mainwindow.h"
#include "options.h"
#include "picturetaker.h"
#include "tqstyles.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QSettings>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTimer>
#include <QTranslator>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sys/socket.h>
#include <unistd.h>

namespace {

void exitWith(const QString &failure)
{
    if (!failure.isEmpty())
        std::fprintf(stderr, "%s\n", qUtf8Printable(failure));
    QCoreApplication::exit(failure.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE);
}

void takePictures(Client &client, const QString &folder)
{
    // The offscreen platform has a smaller screen and a larger font than a desktop with default settings.
    client.window().resize(1280, 720);
    if (QGuiApplication::platformName() == QLatin1String("offscreen") && qEnvironmentVariableIsEmpty("QT_FONT_DPI")) {
        QFont font = QApplication::font();
        font.setPointSize(9);
        QApplication::setFont(font);
    }
    auto *taker = new PictureTaker(client.window(), folder);
    QObject::connect(taker, &PictureTaker::finished, &client, exitWith);
    QObject::connect(&client, &Client::ready, taker, &PictureTaker::start, Qt::QueuedConnection);
    QObject::connect(&client, &Client::openingFailed, &client, exitWith, Qt::QueuedConnection);
}

int signalPipe[2];

void notifyMainLoop(int)
{
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(signalPipe[0], &byte, 1);
}

/// When the desktop session ends, the window is closed in the usual way, so that its state is saved.
void closeOnSignal(MainWindow &window)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0)
        return;
    auto *notifier = new QSocketNotifier(signalPipe[1], QSocketNotifier::Read, &window);
    QObject::connect(notifier, &QSocketNotifier::activated, &window, [&window, notifier] {
        notifier->setEnabled(false);
        window.close();
        QCoreApplication::quit();
    });
    std::signal(SIGTERM, notifyMainLoop);
    std::signal(SIGINT, notifyMainLoop);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // Integer factors keep lines sharp; fonts and icons scale with the densities in between.
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::RoundPreferFloor);
    const QApplication application(argc, argv);
    QApplication::setStyle(new ClientStyle);
    QApplication::setOrganizationName(QStringLiteral("orvex"));
    QApplication::setApplicationVersion(QStringLiteral(ORVEX_VERSION));

    QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
    QTranslator translator;
    if (translator.load(QStringLiteral("qtbase_ru"), QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&translator);

    const Options options = Options::fromCommandLine();
    // Pictures are taken with default settings and change none. Static: the settings are written when the program ends.
    static std::unique_ptr<QTemporaryDir> temporarySettings;
    if (!options.pictures.isEmpty()) {
        temporarySettings = std::make_unique<QTemporaryDir>();
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, temporarySettings->path());
    }
    tqstyles::install();
    Client client(options);
    closeOnSignal(client.window());
    if (!options.pictures.isEmpty())
        takePictures(client, options.pictures);
    QTimer::singleShot(0, &client, &Client::start);
    return QApplication::exec();
}
