#include "bench_store.h"

#include "cache.h"
#include "localstorage.h"
#include "newstore.h"
#include "records.h"
#include "sqlfiles.h"
#include "storelink.h"
#include "tq5sdkdata.h"
#include "tqplugininterface.h"
#include "tqserverinterface.h"

#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <QUuid>

#include <algorithm>

namespace {

constexpr int Pairs = 300;
const QDate FirstDay(2023, 1, 1);
const QDate LastDay(2023, 12, 31);

/// A minimal plug-in that can send requests.
class Plugin final : public QObject, public TQPluginInterface
{
public:
    [[nodiscard]] QString pluginName() const override { return QStringLiteral("bench"); }
    [[nodiscard]] quint32 pluginVersion() const override { return 1; }
    [[nodiscard]] QString pluginBuild() const override { return {}; }
    QWidget *widget() override { return nullptr; }
    QObject *object() override { return this; }
};

/// A client without a window: requests, replies and changes.
class Client
{
public:
    explicit Client(const store::StoreAddress &address)
    {
        QEventLoop loop;
        m_server.setTransport([this](const Command &command) { m_link.submit(command); });
        QObject::connect(&m_link, &store::StoreLink::replied, &m_server, &TQServerInterface::deliver);
        QObject::connect(&m_link, &store::StoreLink::failed,
                         [](const QString &text) { qFatal("%s", qPrintable(text)); });
        QObject::connect(&m_link, &store::StoreLink::changed, orvex::LocalStorage::instance(),
                         &orvex::LocalStorage::apply);
        QObject::connect(&m_link, &store::StoreLink::opened, &loop, [&](const orvex::StorageChange &snapshot) {
            orvex::LocalStorage::instance()->apply(snapshot);
            m_server.setConnected(true);
            loop.quit();
        });
        m_plugin.init(&m_server, QStringLiteral("bench"));
        m_sdk = new tq5sdk::Data(&m_plugin, QStringLiteral("session"));
        m_link.open(address);
        loop.exec();
    }

    /// Milliseconds from \a send to the reply of its request.
    template <class Send> double run(Send send)
    {
        QEventLoop loop;
        const std::function<void(Command &)> replied = [&loop](Command &reply) {
            if (!reply.isSuccess())
                qFatal("a request failed: %d", reply.result());
            loop.quit();
        };
        return bench::milliseconds([&] {
            send(*m_sdk, replied);
            loop.exec();
        });
    }

private:
    TQServerInterface m_server;
    store::StoreLink m_link;
    Plugin m_plugin;
    tq5sdk::Data *m_sdk = nullptr; ///< the plug-in's child
};

/// The engine's own shell, which runs the statements.
class Shell
{
public:
    explicit Shell(const QString &file)
    {
        // Line-buffered, because the shell buffers the output to a pipe.
        m_shell.start(QStringLiteral("stdbuf"),
                      {QStringLiteral("-oL"), QStringLiteral("sqlite3"), QStringLiteral("-bail"), file});
        m_script = "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; PRAGMA foreign_keys = ON;\n"
                   "PRAGMA busy_timeout = 5000;\n";
        (void)run();
    }
    ~Shell()
    {
        m_shell.closeWriteChannel();
        m_shell.waitForFinished();
    }
    Q_DISABLE_COPY(Shell)

    void add(const QString &name, const QHash<QString, QString> &values = {})
    {
        QString sql = store::sqlfiles::statement(QStringLiteral("sqlite"), name);
        // Longer names first, because one name may be the start of another.
        QStringList names = values.keys();
        std::sort(names.begin(), names.end(), [](const auto &a, const auto &b) { return a.size() > b.size(); });
        for (const QString &parameter : qAsConst(names))
            sql.replace(parameter, values.value(parameter));
        addSql(sql);
    }
    void addSql(const QString &sql) { m_script += sql.toUtf8() + ";\n"; }

    /// The duration of the statements in milliseconds.
    double run()
    {
        const QByteArray script = ".output /dev/null\n" + m_script + ".output stdout\nSELECT 'end';\n";
        m_script.clear();
        return bench::milliseconds([&] {
            m_shell.write(script);
            while (!m_shell.readAllStandardOutput().contains("end")) {
                if (!m_shell.waitForReadyRead(60000))
                    qFatal("sqlite3: %s", m_shell.readAllStandardError().constData());
            }
        });
    }

private:
    QProcess m_shell;
    QByteArray m_script;
};

QString quoted(const QString &text)
{
    return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QStringLiteral("''")) + QLatin1Char('\'');
}

void beginRequest(Shell &shell, const QString &id)
{
    shell.addSql(QStringLiteral("BEGIN IMMEDIATE"));
    shell.add(QStringLiteral("request_find"),
              {{QStringLiteral(":request_id"), id}, {QStringLiteral(":login"), QStringLiteral("'bench'")}});
    shell.add(QStringLiteral("roles"));
}

void endRequest(Shell &shell, const QString &id)
{
    shell.add(QStringLiteral("request_insert"),
              {{QStringLiteral(":request_id"), id},
               {QStringLiteral(":login"), QStringLiteral("'bench'")},
               {QStringLiteral(":result"), QStringLiteral("1")},
               {QStringLiteral(":reply"), QStringLiteral("x''")},
               {QStringLiteral(":now"), QStringLiteral("'2024-01-01T00:00:00.000Z'")}});
    shell.addSql(QStringLiteral("COMMIT"));
}

/// The statements with which the store updates \a record.
void addUpdate(Shell &shell, const orvex::SCHEDULE_DATA &record)
{
    const QString id = quoted(QUuid::createUuid().toString(QUuid::WithoutBraces));
    beginRequest(shell, id);
    shell.add(QStringLiteral("schedule_update"),
              {{QStringLiteral(":name"), quoted(record.name)},
               {QStringLiteral(":type"), QString::number(record.type)},
               {QStringLiteral(":color"), quoted(record.color)},
               {QStringLiteral(":start_date"), QStringLiteral("NULL")},
               {QStringLiteral(":use_holidays"), QString::number(record.useHolidays)},
               {QStringLiteral(":free_start"), QStringLiteral("0")},
               {QStringLiteral(":free_finish"), QStringLiteral("0")},
               {QStringLiteral(":free_norm"), QStringLiteral("0")},
               {QStringLiteral(":free_break"), QStringLiteral("0")},
               {QStringLiteral(":comment"), quoted(record.comment)},
               {QStringLiteral(":worker_id"), QStringLiteral("NULL")},
               {QStringLiteral(":mode"), quoted(store::records::modeText(record))},
               {QStringLiteral(":login"), QStringLiteral("'bench'")},
               {QStringLiteral(":now"), QStringLiteral("'2024-01-01T00:00:00.000Z'")},
               {QStringLiteral(":id"), QString::number(record.id)},
               {QStringLiteral(":version"), QString::number(record.version)}});
    endRequest(shell, id);
}

QList<orvex::SCHEDULE_CALENDAR_DAY> year(quint32 shift, qint64 revision)
{
    QList<orvex::SCHEDULE_CALENDAR_DAY> days;
    for (QDate date = FirstDay; date <= LastDay; date = date.addDays(1)) {
        orvex::SCHEDULE_CALENDAR_DAY day;
        day.date = date;
        day.shiftId = shift;
        day.dayMode = orvex::DayByShift;
        day.revision = revision;
        days.append(day);
    }
    return days;
}

/// The statements with which the store saves a year of days.
void addYear(Shell &shell, quint32 schedule, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    const QString id = quoted(QUuid::createUuid().toString(QUuid::WithoutBraces));
    const QString number = QString::number(schedule);
    QJsonArray rows;
    for (const auto &day : days) {
        rows.append(QJsonObject{{QStringLiteral("date"), day.date.toString(Qt::ISODate)},
                                {QStringLiteral("shift"), qint64(day.shiftId)},
                                {QStringLiteral("mode"), day.dayMode},
                                {QStringLiteral("intervals"), QString()}});
    }
    beginRequest(shell, id);
    shell.add(QStringLiteral("guide_shifts_count"), {{QStringLiteral(":ids"), QStringLiteral("'[1]'")}});
    shell.add(QStringLiteral("schedule_head"), {{QStringLiteral(":id"), number}});
    shell.add(QStringLiteral("calendar_days"),
              {{QStringLiteral(":schedule_id"), number},
               {QStringLiteral(":first"), quoted(FirstDay.toString(Qt::ISODate))},
               {QStringLiteral(":last"), quoted(LastDay.toString(Qt::ISODate))}});
    shell.add(
        QStringLiteral("calendar_days_store"),
        {{QStringLiteral(":schedule_id"), number},
         {QStringLiteral(":days"), quoted(QString::fromUtf8(QJsonDocument(rows).toJson(QJsonDocument::Compact)))}});
    shell.add(QStringLiteral("schedule_touch"),
              {{QStringLiteral(":id"), number},
               {QStringLiteral(":login"), QStringLiteral("'bench'")},
               {QStringLiteral(":now"), QStringLiteral("'2024-01-01T00:00:00.000Z'")}});
    endRequest(shell, id);
}

orvex::SCHEDULE_DATA workingWeek()
{
    orvex::SCHEDULE_DATA record;
    record.name = QStringLiteral("Пятидневка");
    record.shifts = {{1, 0, {{1, 28800, 43200}, {2, 46800, 61200}}}};
    for (int day = 1; day <= 7; ++day)
        record.days.append({day, day <= 5 ? 0 : -1, day <= 5 ? 1 : -1, day > 5});
    return record;
}

/// Two guide shifts, a schedule for the client and one for the shell.
void fillSmall(store::BulkWriter &writer)
{
    for (const char *code : {"a", "b"})
        writer.addGuideShift({QLatin1String(code), QLatin1String(code), {}, {{28800, 61200}}});
    for (int i = 0; i < 2; ++i) {
        const quint32 id = writer.addSchedule(workingWeek());
        writer.setCalendarDays(id, year(1, 0));
    }
}

/// 1,000 common schedules, and the personal schedules of 5,000 employees for two years.
void fillLarge(store::BulkWriter &writer)
{
    const quint32 unit = writer.addUnit({0, store::UnitType::Root, QStringLiteral("Организация")});
    for (int i = 0; i < 1000; ++i) {
        auto record = workingWeek();
        record.name += QStringLiteral(" %1").arg(i);
        writer.addSchedule(record);
    }
    for (int employee = 0; employee < 5000; ++employee) {
        const QString name = QStringLiteral("Работник Номер %1").arg(employee);
        orvex::SCHEDULE_DATA record;
        record.type = orvex::SchedulePersonal;
        record.workerId = writer.addEmployee({name, QString::number(employee), {}, unit, 0, false});
        for (int month = 0; month < 24; ++month) {
            record.startDate = FirstDay.addMonths(month);
            record.name = QStringLiteral("%1 %2").arg(name, record.startDate.toString(QStringLiteral("MM.yyyy")));
            writer.addSchedule(record);
        }
    }
}

void clearCache()
{
    orvex::StorageChange nothing;
    nothing.full = true;
    bench::fillCache(nothing);
}

/// The longest time between two turns of this thread's event loop.
class StallTimer
{
public:
    StallTimer()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { tick(); });
        m_clock.start();
        m_timer.start(1);
    }
    void tick()
    {
        m_longest = std::max(m_longest, double(m_clock.nsecsElapsed()) / 1e6);
        m_clock.start();
    }
    [[nodiscard]] double longest() const { return m_longest; }

private:
    QElapsedTimer m_clock;
    QTimer m_timer;
    double m_longest = 0;
};

/// The longest stall while a client reads a store whose content it already has.
double stallOfReloading(const store::StoreAddress &address)
{
    StallTimer stall;
    Client client(address);
    bench::waitUntilSettled();
    stall.tick();
    return stall.longest();
}

struct RequestTimes
{
    // In milliseconds, one value per round.
    QVector<double> updates;
    QVector<double> shellUpdates;
    QVector<double> years;
    QVector<double> shellYears;
};

RequestTimes measureRequests(const store::StoreAddress &address)
{
    Client client(address);
    Shell shell(address.filePath());
    const auto schedule = [](quint32 id) { return orvex::LocalStorage::instance()->schedules().value(id); };
    orvex::SCHEDULE_DATA own = schedule(1);
    orvex::SCHEDULE_DATA shells = schedule(2);
    qint64 revision = 1;

    RequestTimes times;
    // Alternately, so that other load of the machine and its disk affects both times.
    for (int pair = 0; pair < Pairs; ++pair) {
        own.comment = shells.comment = QString::number(pair);
        times.updates.append(
            client.run([&own](tq5sdk::Data &sdk, const auto &reply) { sdk.updateSchedule(own, reply); }));
        addUpdate(shell, shells);
        times.shellUpdates.append(shell.run());

        const quint32 shift = quint32(2 - pair % 2); // alternates
        const auto days = year(shift, revision++);
        times.years.append(client.run([&days](tq5sdk::Data &sdk, const auto &reply) {
            sdk.updateScheduleCalendar(1, FirstDay, LastDay, days, reply);
        }));
        addYear(shell, 2, days);
        times.shellYears.append(shell.run());
        // One for the update, one for the days.
        own.version += 2;
        shells.version += 2;
    }
    return times;
}

} // namespace

namespace bench {

void benchRequests(Report &report)
{
    if (QStandardPaths::findExecutable(QStringLiteral("sqlite3")).isEmpty())
        qFatal("the shell sqlite3 is not installed");
    QTemporaryDir folder;
    const auto times = measureRequests(newStore(folder, fillSmall));
    report.atMost(QStringLiteral("Request through the SDK / the same SQL in the sqlite3 shell: an update"),
                  median(times.updates) / median(times.shellUpdates), 1.5);
    report.atMost(QStringLiteral("  a year of 365 days"), median(times.years) / median(times.shellYears), 1.25);
    report.add(QStringLiteral("  one update through the SDK"), median(times.updates), QStringLiteral("ms"));
    report.add(QStringLiteral("  one year of days through the SDK"), median(times.years), QStringLiteral("ms"));
    clearCache();
}

void benchLoading(Report &report)
{
    QTemporaryDir folder;
    const auto address = newStore(folder, fillLarge);
    QVector<double> times;
    QVector<double> stalls;
    QVector<double> reloadStalls;
    for (int round = 0; round < 5; ++round) {
        clearCache();
        StallTimer stall;
        const double time = milliseconds([&] { Client client(address); });
        stall.tick();
        if (orvex::LocalStorage::instance()->schedules().size() != 121000)
            qFatal("not all schedules were loaded");
        times.append(time / 1000);
        stalls.append(stall.longest());
        reloadStalls.append(stallOfReloading(address));
    }
    report.add(QStringLiteral("121,000 schedules loaded into the client"), median(times), QStringLiteral("s"));
    report.atMost(QStringLiteral("  longest stall of the GUI thread meanwhile"), median(stalls), 16,
                  QStringLiteral("ms"));
    report.atMost(QStringLiteral("  the same when they are read again, as after a lost connection"),
                  median(reloadStalls), 16, QStringLiteral("ms"));
    clearCache();
}

} // namespace bench
