#include "stress.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QHash>
#include <QTextStream>

#include <algorithm>

using support::require;

namespace stress {

int number(const QStringList &arguments, const char *name, int otherwise)
{
    const int at = arguments.indexOf(QLatin1String(name));
    return at >= 0 ? arguments.value(at + 1).toInt() : otherwise;
}

void print(const QString &line)
{
    QTextStream(stdout) << line << Qt::endl;
}

void printFigures(const char *experiment, const QVector<QPair<const char *, qint64>> &figures)
{
    QStringList texts;
    for (const auto &[name, number] : figures)
        texts.append(QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(number));
    print(QLatin1String(experiment) + QStringLiteral(": ") + texts.join(QStringLiteral(", ")));
}

store::StoreAddress newStore(const QTemporaryDir &folder)
{
    const auto address = store::StoreAddress::file(folder.filePath(QStringLiteral("store.db")));
    require(store::Database::create(address));
    return address;
}

int countFaults(const store::StoreAddress &address)
{
    store::Database database;
    QList<store::Fault> found;
    require(database.open(address));
    require(database.check(found));
    for (const auto &fault : qAsConst(found))
        print(QStringLiteral("fault: ") + fault.text);
    return found.size();
}

QByteArray digest(const orvex::ScheduleHash &schedules)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    QList<quint32> ids = schedules.keys();
    std::sort(ids.begin(), ids.end());
    for (const quint32 id : qAsConst(ids))
        hash.addData(writePayload(schedules.value(id)));
    return hash.result().toHex();
}

} // namespace stress

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    using Experiment = int (*)(const QStringList &);
    static const QHash<QString, Experiment> experiments{
        {QStringLiteral("kill"), stress::killWriters},       {QStringLiteral("writer"), stress::writeUntilKilled},
        {QStringLiteral("powercut"), stress::cutPower},      {QStringLiteral("replies"), stress::interruptRequests},
        {QStringLiteral("writers"), stress::runManyWriters}, {QStringLiteral("client"), stress::writeAndFollow},
    };
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    const Experiment experiment = experiments.value(arguments.value(0));
    if (experiment)
        return experiment(arguments.mid(1));
    QTextStream(stderr) << "orvex_stress kill --times N | powercut --points N | replies --requests N | "
                           "writers --processes N --seconds S\n";
    return 2;
}
