#include "target.h"

#include "settings.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QWidget>

#include <fcntl.h>
#include <sys/stat.h>

// The settings file, which the operator may have edited, and the conversions that the client applies to its values.

namespace {

QString settingsFile()
{
    static const auto *folder = new QTemporaryDir(QFileInfo(QStringLiteral("/dev/shm")).isWritable()
                                                      ? QStringLiteral("/dev/shm/orvex-fuzz-")
                                                      : QDir::tempPath() + QStringLiteral("/orvex-fuzz-"));
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder->path());
    QDir(folder->path()).mkpath(QStringLiteral("orvex"));
    return folder->filePath(QStringLiteral("orvex/client.ini"));
}

} // namespace

QVector<QByteArray> fuzzSeeds()
{
    QWidget window;
    const QByteArray geometry = window.saveGeometry();
    const QString file = settingsFile() + QStringLiteral(".seed");
    {
        QSettings settings(file, QSettings::IniFormat);
        settings.setValue(QStringLiteral("client/geometry"), geometry);
        settings.setValue(QStringLiteral("client/store"), QStringLiteral("/home/Иван/store.db"));
        settings.setValue(QStringLiteral("client/page"), QStringLiteral("scheduleview"));
        settings.setValue(QStringLiteral("client/theme"), QSize(1, 2));
        settings.setValue(QStringLiteral("scheduleview/calendar_scale"), 7);
        settings.setValue(QStringLiteral("scheduleview/calendar_show_dow"), true);
    }
    QFile written(file);
    fuzz::require(written.open(QIODevice::ReadOnly), "the seed can be read");
    return {written.readAll(), QByteArray("[client]\ngeometry=@ByteArray(x)\ntheme=@Size(1 2)\npage=\"a, b\"\n"),
            QByteArray("[client]\ngeometry=@ByteArray(x)\n"
                       "page=@Variant(\\0\\0\\0\\t\\0\\0\\0\\x1\\0\\0\\0\\x2\\0\\0\\0\\x7)\n")};
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto *application = new QApplication(*argc, *argv);
    Q_UNUSED(application)
    (void)settingsFile();
    fuzz::silenceLogging();
    fuzz::writeSeeds();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // The file is read again only if its time has changed.
    static time_t time = 1;
    static auto *window = new QWidget;
    QFile file(settingsFile());
    fuzz::require(file.open(QIODevice::WriteOnly), "the settings can be written");
    file.write(reinterpret_cast<const char *>(data), qint64(size));
    file.close();
    const timespec times[] = {{++time, 0}, {time, 0}};
    utimensat(AT_FDCWD, QFile::encodeName(file.fileName()).constData(), times, 0);

    auto *settings = Settings::instance();
    (void)settings->sync();
    fuzz::accepted += settings->value(QStringLiteral("client/geometry"), 7) != QVariant(7);
    window->restoreGeometry(settings->value(QStringLiteral("client/geometry")).toByteArray());
    for (const char *key : {"client/store", "client/page", "client/theme", "client/narrowPageList",
                            "scheduleview/calendar_scale", "scheduleview/calendar_show_dow"}) {
        const QVariant value = settings->value(QLatin1String(key), 1);
        (void)value.toString();
        (void)value.toInt();
        (void)value.toBool();
    }
    return 0;
}
