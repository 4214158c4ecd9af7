#include "target.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <cstdlib>

namespace fuzz {

qint64 accepted = 0;

void quiet()
{
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type != QtFatalMsg)
            return;
        std::fprintf(stderr, "%s\n", qPrintable(text));
        std::abort();
    });
}

void writeSeeds()
{
    const QString folder = QString::fromLocal8Bit(qgetenv("ORVEX_FUZZ_SEEDS"));
    if (folder.isEmpty())
        return;
    QDir().mkpath(folder);
    int number = 0;
    for (const QByteArray &seed : fuzzSeeds()) {
        QFile file(QDir(folder).filePath(QString::number(number++)));
        require(file.open(QIODevice::WriteOnly) && file.write(seed) == seed.size(), "the seeds can be written");
    }
}

} // namespace fuzz
