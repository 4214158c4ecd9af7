#include "client.h"
#include "clientstyle.h"
#include "picturetaker.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTimer>
#include <QTranslator>

#include <cstdio>
#include <cstdlib>

namespace {

void fail(const QString &text)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    QCoreApplication::exit(EXIT_FAILURE);
}

void takePictures(Client &client, const QString &folder)
{
    PictureTaker taker(client.window(), folder);
    const QString failure = taker.takeAll();
    if (failure.isEmpty())
        QCoreApplication::quit();
    else
        fail(failure);
}

} // namespace

int main(int argc, char **argv)
{
    // Without a display there is no density to follow: the offscreen platform makes one up.
    if (qgetenv("QT_QPA_PLATFORM") != "offscreen")
        QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const QApplication application(argc, argv);
    QApplication::setStyle(new ClientStyle);
    QApplication::setOrganizationName(QStringLiteral("orvex"));
    QApplication::setApplicationVersion(QStringLiteral(ORVEX_VERSION));

    QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
    QTranslator translator;
    if (translator.load(QStringLiteral("qtbase_ru"), QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&translator);

    const Options options = Options::fromCommandLine();
    tqstyles::install();
    Client client(options);
    if (!options.pictures.isEmpty()) {
        QObject::connect(
            &client, &Client::ready, &client, [&] { takePictures(client, options.pictures); }, Qt::QueuedConnection);
        QObject::connect(&client, &Client::openingFailed, &client, fail, Qt::QueuedConnection);
    }
    QTimer::singleShot(0, &client, &Client::start);
    return QApplication::exec();
}
