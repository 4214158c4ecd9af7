#include "target.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <cstdlib>

namespace fuzz {

qint64 accepted = 0;

void silenceLogging()
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

bool split(const uint8_t *data, size_t size, int count, int &reader, QByteArray &rest)
{
    constexpr size_t Longest = 1 << 20;
    if (size == 0 || size > Longest)
        return false;
    reader = data[0] % count;
    rest = QByteArray(reinterpret_cast<const char *>(data) + 1, int(size) - 1);
    return true;
}

QVector<QByteArray> numbered(const QVector<QByteArray> &inputs)
{
    QVector<QByteArray> result;
    for (int i = 0; i < inputs.size(); ++i)
        result.append(char(i) + inputs.at(i));
    return result;
}

int initialize()
{
    silenceLogging();
    writeSeeds();
    return 0;
}

} // namespace fuzz
