#include "database.h"
#include "datanames.h"
#include "requests.h"
#include "scheduleutil.h"
#include "storefile.h"
#include "storerequest.h"
#include "testcolumns.h"
#include "tqdatastream.h"

#include <QCryptographicHash>
#include <QFile>
#include <QImage>
#include <QLocale>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using namespace support;

namespace {

struct Run
{
    int exitCode = -1;
    QString output;
    QString errors;
};

Run orvexctl(const QStringList &arguments)
{
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C")); // as in a scheduled job
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(ORVEXCTL), arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

/// Whether a message is a whole Russian sentence.
bool isSentence(const QString &text)
{
    static const QRegularExpression russian(QStringLiteral("[А-Яа-я]{3}"));
    return russian.match(text).hasMatch() && text.trimmed().endsWith('.');
}

/// The content of a store as a client reads it.
struct Content
{
    explicit Content(const QString &path)
    {
        require(database.open(store::StoreAddress::file(path)));
        require(database.snapshot(all));
    }

    [[nodiscard]] orvex::ObjectHash objects(const QString &dataName) const { return all.objects.value(dataName); }
    [[nodiscard]] QList<orvex::ObjectInfo> currentEmployees() const
    {
        auto employees = objects(orvex::SUBJECT_DATANAME).values();
        const auto isFormer = [](const auto &e) { return !e.parameter(db::param::OBJECTSTATE).isEmpty(); };
        employees.erase(std::remove_if(employees.begin(), employees.end(), isFormer), employees.end());
        return employees;
    }
    [[nodiscard]] QList<orvex::SCHEDULE_DATA> schedules(orvex::ScheduleMode type) const
    {
        auto list = all.schedules.values();
        const auto isOther = [type](const auto &schedule) { return schedule.type != type; };
        list.erase(std::remove_if(list.begin(), list.end(), isOther), list.end());
        return list;
    }
    store::Database database;
    orvex::StorageChange all;
};

} // namespace

class TestOrvexctl : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_sample = createStore("Новая папка/sample.db");
        const Run run = orvexctl({"sample", m_sample});
        QVERIFY2(run.exitCode == 0, qPrintable(run.errors));
        QVERIFY(isSentence(run.output));
    }

    void shouldRefuseAndChangeNothing_data()
    {
        addColumns<QStringList, int, QString>({"arguments", "exitCode", "expected"});
        const auto row = [](const char *name, const QStringList &arguments, int exitCode, const char *expected) {
            QTest::newRow(name) << arguments << exitCode << QString(expected);
        };
        row("nothing", {}, 2, "orvexctl --help");
        row("unknown command", {"explode", m_sample}, 2, "explode");
        row("no file", {"init"}, 2, "init FILE");
        row("two files", {"init", path("a"), path("b")}, 2, "init FILE");
        row("unknown option", {"sample", m_sample, "--people", "5"}, 2, "people");
        row("option without a value", {"sample", m_sample, "--months"}, 2, "нужно значение");
        row("no number", {"sample", m_sample, "--months", "three"}, 2, "от 1 до 60");
        row("too few", {"sample", m_sample, "--employees", "0"}, 2, "от 1 до 100000");
        row("too many", {"sample", m_sample, "--employees", "99999999999"}, 2, "от 1 до 100000");
        row("no role", {"grant", m_sample}, 2, "FILE ROLE");
        row("not a role", {"grant", m_sample, "everything"}, 1, "everything");
        row("store that exists", {"init", m_sample}, 1, "sample.db уже есть");
        row("sample for a filled store", {"sample", m_sample}, 1, "уже есть данные");
        row("dump to a file that exists", {"dump", m_sample, m_sample}, 1, "sample.db уже есть");
        row("copy to a file that exists", {"backup", m_sample, m_sample}, 1, "sample.db уже есть");
        const QString foreign = createStore("foreign.db");
        executeStatement(foreign, QStringLiteral("PRAGMA application_id = 0"));
        row("copy of another application's file", {"backup", foreign, path("a")}, 1, "foreign.db");
    }

    void shouldRefuseAndChangeNothing()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, expected);
        const QByteArray before = contents(m_sample);
        const Run run = orvexctl(arguments);
        QTEST(run.exitCode, "exitCode");
        QVERIFY2(isSentence(run.errors) && run.errors.contains(expected), qPrintable(run.errors));
        QCOMPARE(run.output, QString());
        QVERIFY(contents(m_sample) == before);
        QVERIFY(!QFile::exists(path("a")));
    }

    void shouldFillTheYearOfCalendarSchedules()
    {
        Content content(m_sample);
        qint64 holidays = 0;
        for (const auto &schedule : content.schedules(orvex::ScheduleCalendar)) {
            QCOMPARE(schedule.startDate, QDate(QDate::currentDate().year(), 1, 1));
            checkDays(content, schedule, ScheduleUtil::lastOfYear(schedule.startDate), holidays);
        }
        QVERIFY(holidays >= 4);
    }

    void shouldGiveSomeEmployeesPersonalSchedules()
    {
        Content content(m_sample);
        const QLocale russian(QLocale::Russian);
        const QDate thisMonth(QDate::currentDate().year(), QDate::currentDate().month(), 1);
        const auto personal = content.schedules(orvex::SchedulePersonal);
        qint64 holidays = 0;
        QHash<quint32, QSet<QDate>> months;
        int coloured = 0;
        for (const auto &schedule : personal) {
            const auto employee = content.objects(orvex::SUBJECT_DATANAME).value(schedule.workerId);
            QCOMPARE(schedule.name,
                     QStringLiteral("%1 %2 %3")
                         .arg(employee.parameter(db::param::NAME),
                              russian.standaloneMonthName(schedule.startDate.month()),
                              QString::number(schedule.startDate.year())));
            months[schedule.workerId].insert(schedule.startDate);
            coloured += !schedule.color.isEmpty();
            checkDays(content, schedule, ScheduleUtil::lastOfMonth(schedule.startDate), holidays);
        }
        QVERIFY(months.count() > 15 && months.count() < 60);
        for (const auto &of : std::as_const(months))
            QCOMPARE(of, QSet<QDate>({thisMonth.addMonths(-1), thisMonth, thisMonth.addMonths(1)}));
        QVERIFY(coloured > 0 && coloured < personal.count());
    }

    void shouldStoreAPhotoOfEveryEmployee()
    {
        Content content(m_sample);
        QList<orvex::_BLOB_DATA_RESQUEST> wanted;
        const auto employees = content.currentEmployees();
        for (const auto &employee : employees)
            wanted.append({employee.id, db::param::PHOTO, {}});
        QHash<quint32, QHash<QString, QByteArray>> blobs;
        QVERIFY(
            readPayload(content.database.execute(storeRequest(request::GetBlobDataChange, wanted)).payload(), blobs));
        QCOMPARE(blobs.count(), wanted.count());
        QSet<QByteArray> different;
        for (const auto &blob : std::as_const(blobs)) {
            const QByteArray data = blob.value(db::param::PHOTO);
            QCOMPARE(QImage::fromData(data).size(), QSize(240, 320));
            different.insert(QCryptographicHash::hash(data, QCryptographicHash::Md5));
        }
        QVERIFY(different.count() >= wanted.count() * 9 / 10);
    }

    void shouldWriteTheSameSampleAgain()
    {
        const QString file = createStore("again.db");
        QCOMPARE(orvexctl({"sample", file}).exitCode, 0);
        const Content first(m_sample);
        const Content second(file);
        QVERIFY(first.all.schedules == second.all.schedules);
        QVERIFY(first.objects(orvex::SUBJECT_DATANAME) == second.objects(orvex::SUBJECT_DATANAME));
    }

    void shouldWriteASampleOfTheRequestedSize()
    {
        const QString file = createStore("large.db");
        QCOMPARE(orvexctl({"sample", file, "--employees", "900", "--months=1"}).exitCode, 0);
        const Content content(file);
        QSet<QString> numbers;
        QHash<quint32, int> teams;
        const auto employees = content.currentEmployees();
        for (const auto &employee : employees) {
            numbers.insert(employee.parameter(db::param::WORKERNUM));
            ++teams[employee.parameter(db::param::PARENT).toUInt()];
            const auto schedule = content.all.schedules.value(employee.parameter(db::param::SCHEDULE).toUInt());
            QVERIFY(schedule.id > 0 && schedule.type != orvex::SchedulePersonal);
        }
        QCOMPARE(numbers.count(), 900);
        QVERIFY(*std::max_element(teams.cbegin(), teams.cend()) <= 40);
        const auto schedules = content.schedules(orvex::SchedulePersonal);
        for (const auto &schedule : schedules)
            QCOMPARE(schedule.startDate.month(), QDate::currentDate().month());
    }

    void shouldGrantAndRevokeARole()
    {
        const QString file = createStore("roles.db");
        const QString role = QStringLiteral("RL_SCHEDULE_UPDATE");
        const auto granted = [&] {
            QStringList roles;
            Content content(file);
            const auto outcome = content.database.roles(roles);
            return outcome.ok() && roles.contains(role);
        };
        QVERIFY(granted());
        for (const QString command : {"revoke", "revoke", "grant", "grant"}) {
            QCOMPARE(orvexctl({command, file, role}).exitCode, 0);
            QCOMPARE(granted(), command == "grant");
        }
    }

    void shouldCheckCopyUpgradeDumpAndLoadAStore()
    {
        const QString copy = path("copy.db");
        const QString document = path("dump.json");
        const QString loaded = path("loaded.db");
        for (const QStringList &arguments :
             {QStringList{"check", m_sample}, QStringList{"backup", m_sample, copy}, QStringList{"check", copy},
              QStringList{"upgrade", copy}, QStringList{"dump", copy, document},
              QStringList{"load", loaded, document}}) {
            const Run run = orvexctl(arguments);
            QVERIFY2(run.exitCode == 0, qPrintable(arguments.first() + run.errors));
            QVERIFY(isSentence(run.output));
        }
        QCOMPARE(orvexctl({"dump", loaded}).output.toUtf8(), contents(document));
    }

    void shouldReportFaultsAndExitWithOne()
    {
        const QString file = path("faulty.db");
        QCOMPARE(orvexctl({"backup", m_sample, file}).exitCode, 0);
        executeStatement(file,
                         QStringLiteral("UPDATE subject SET unit_id = 4711 WHERE id = (SELECT max(id) FROM subject)"));
        const Run run = orvexctl({"check", file});
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.output.contains("4711") && run.output.contains("orvexctl dump"), qPrintable(run.output));
        QVERIFY(isSentence(run.errors));
    }

private:
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    QString createStore(const QString &name) const
    {
        if (orvexctl({"init", path(name)}).exitCode != 0)
            qFatal("%s cannot be created", qPrintable(name));
        return path(name);
    }

    /// Checks that each date from the start to \a last has one day, with a shift of the guide or none.
    static void checkDays(Content &content, const orvex::SCHEDULE_DATA &schedule, const QDate &last, qint64 &holidays)
    {
        const auto days = storedDays(content.database, schedule.id, schedule.startDate, last);
        const int count = int(schedule.startDate.daysTo(last)) + 1;
        QCOMPARE(days.count(), count);
        int worked = 0;
        for (int i = 0; i < count; ++i) {
            const auto &day = days.at(i);
            QCOMPARE(day.date, schedule.startDate.addDays(i));
            QVERIFY(day.shiftId == 0 ? ScheduleUtil::isHoliday(day)
                                     : content.objects(orvex::SCHEDULE_SHIFT_DATANAME).contains(day.shiftId));
            worked += day.shiftId != 0;
            holidays += day.dayMode == orvex::DayHoliday;
        }
        QVERIFY(worked > count / 10 && worked < count);
    }

    QTemporaryDir m_folder;
    QString m_sample;
};

QTEST_GUILESS_MAIN(TestOrvexctl)
#include "tst_orvexctl.moc"
