#include "bulkwriter.h"
#include "datanames.h"
#include "storefile.h"
#include "storefixture.h"

#include <QCryptographicHash>
#include <QtTest>

#include <algorithm>

using namespace support;

using orvex::SCHEDULE_CALENDAR_DAY;
using orvex::SCHEDULE_DATA;
using orvex::SCHEDULE_SHIFT;

namespace {

using Days = QList<SCHEDULE_CALENDAR_DAY>;

const QDate NewYear(2024, 1, 1);
const QDate LeapDay(2024, 2, 29);
const QDate YearEnd(2024, 12, 31);

SCHEDULE_DATA workingWeek()
{
    SCHEDULE_DATA record = newSchedule(QStringLiteral("Пятидневка"));
    record.color = QStringLiteral("#00ff7f");
    record.startDate = LeapDay;
    record.useHolidays = 1;
    record.comment = QStringLiteral("по приказу");
    record.freeStart = 1;
    record.freeFinish = 2;
    record.freeNorm = 24 * 3600 + 59 * 60;
    record.freeBreak = 86400;
    SCHEDULE_SHIFT half = shift({{28800, 43200}, {46800, 86400}});
    half.flags = 5;
    record.shifts = {half, half};
    for (int i = 0; i < 5; ++i)
        record.days.append(workingDay(i % 2));
    record.days += {{-1, -1, -1, false}, {-1, -1, -1, true}}; // the sixth is neither off nor has a shift
    return record;
}

SCHEDULE_DATA personal(quint32 employee, const QDate &month = NewYear)
{
    return personalSchedule(0, QStringLiteral("Иванов январь"), employee, month);
}

} // namespace

/// The behaviour that all engines have in common.
class StoreContractTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data()
    {
        QTest::addColumn<QString>("engine");
        QTest::newRow("SQLite") << QStringLiteral("sqlite");
    }

    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia)); }
    void init()
    {
        QFETCH_GLOBAL(QString, engine);
        m_store = std::make_unique<StoreFixture>(engine);
    }

    void shouldReturnTheStoredRecord()
    {
        const SCHEDULE_DATA sent = workingWeek();
        const SCHEDULE_DATA stored = m_store->add(sent);

        SCHEDULE_DATA expected = sent;
        expected.id = 1;
        expected.state = orvex::ScheduleStateActive;
        expected.version = 1;
        for (int i = 0; i < expected.shifts.size(); ++i) {
            expected.shifts[i].id = i + 1;
            expected.shifts[i].times[0].id = 1;
            expected.shifts[i].times[1].id = 2;
        }
        for (int i = 0; i < expected.days.size(); ++i) {
            expected.days[i].id = i + 1;
            expected.days[i].shiftId = expected.days[i].shift < 0 ? -1 : expected.days[i].shift + 1;
        }
        QCOMPARE(writePayload(stored), writePayload(expected));
        QVERIFY(m_store->add(newSchedule(QStringLiteral("Без даты"))).startDate.isNull());
    }

    void shouldRefuseAnInvalidRecord_data()
    {
        QTest::addColumn<SCHEDULE_DATA>("record");
        const auto row = [](const char *name, auto change) {
            SCHEDULE_DATA record = workingWeek();
            change(record);
            QTest::newRow(name) << record;
        };
        row("blank name", [](auto &r) { r.name = QStringLiteral(" \t"); });
        row("type below the known", [](auto &r) { r.type = orvex::ScheduleMode(-1); });
        row("type above the known", [](auto &r) { r.type = orvex::ScheduleMode(5); });
        row("colour by name", [](auto &r) { r.color = QStringLiteral("red"); });
        row("colour with a line end", [](auto &r) { r.color = QStringLiteral("#00ff7f\n"); });
        row("negative limit", [](auto &r) { r.freeStart = -1; });
        row("limit past midnight", [](auto &r) { r.freeBreak = 86401; });
        row("interval past midnight", [](auto &r) { r.shifts[1].times[1].finish = 86401; });
        row("negative interval", [](auto &r) { r.shifts[0].times[0].start = -1; });
        row("day with a shift after the last", [](auto &r) { r.days[3].shift = 2; });
        row("day with a shift before the first", [](auto &r) { r.days[3].shift = -2; });
        row("year of five digits", [](auto &r) { r.startDate = QDate(10000, 1, 1); });
        row("unknown employee", [](auto &r) { r.workerId = 4711; });
        row("personal without employee", [](auto &r) { r.type = orvex::SchedulePersonal; });
        row("personal without month", [](auto &r) {
            r = personal(1);
            r.startDate = {};
        });
    }

    void shouldRefuseAnInvalidRecord()
    {
        QFETCH(SCHEDULE_DATA, record);
        const Command added = run(request::AddSchedule, record);
        QCOMPARE(added.result(), int(ResultInvalidData));
        QVERIFY2(!refusal(added).isEmpty(), "the reply has no text");

        const SCHEDULE_DATA good = m_store->add(workingWeek());
        record.id = good.id;
        record.version = good.version;
        QCOMPARE(run(request::UpdateSchedule, record).result(), int(ResultInvalidData));
        QCOMPARE(writePayload(m_store->stored(quint32(good.id))), writePayload(good));
    }

    void shouldRefuseACorruptPayload()
    {
        // A valid payload followed by more bytes is corrupt, too.
        const QByteArray ids = writePayload(QList<quint32>(), 0);
        const QByteArray calendar = writePayload(QList<qint32>(), NewYear, YearEnd, qint8(0));
        for (const QString name :
             {request::AddSchedule, request::UpdateSchedule, request::RemoveSchedules, request::GetScheduleCalendar,
              request::UpdateScheduleCalendar, request::GetBlobDataChange}) {
            Command command = storeRequest(name, 0);
            for (const QByteArray &payload : {QByteArray("\x7f\xff\xff\xff short", 10), ids, calendar}) {
                command.setPayload(payload);
                const int result = m_store->database.execute(command).result();
                QVERIFY2(result == ResultInvalidData, qPrintable(name));
            }
        }
        QCOMPARE(run(request::GetScheduleCalendar, QList<qint32>(), NewYear, QDate()).result(), int(ResultInvalidData));
    }

    void shouldNotOverwriteAnotherClientsUpdate()
    {
        const SCHEDULE_DATA read = m_store->add(workingWeek());
        SCHEDULE_DATA first = read;
        first.name = QStringLiteral("Первый");
        QVERIFY(run(request::UpdateSchedule, first).isSuccess());

        SCHEDULE_DATA second = read;
        second.name = QStringLiteral("Второй");
        const Command refused = run(request::UpdateSchedule, second);
        QCOMPARE(refused.result(), int(ResultChangedMeanwhile));
        QVERIFY2(refusal(refused).contains(m_store->database.login()), qPrintable(refusal(refused)));

        SCHEDULE_DATA stored = m_store->stored(quint32(read.id));
        QCOMPARE(stored.name, first.name);
        QCOMPARE(stored.version, read.version + 1);

        stored.id = 4711;
        QCOMPARE(run(request::UpdateSchedule, stored).result(), int(ResultNotFound));
    }

    void shouldAllowOnePersonalSchedulePerEmployeeAndMonth()
    {
        const SCHEDULE_DATA january = m_store->add(personal(m_store->employee));
        const Command duplicate = run(request::AddSchedule, personal(m_store->employee));
        QCOMPARE(duplicate.result(), int(ResultInvalidData));
        QVERIFY2(
            refusal(duplicate).startsWith("У сотрудника «Иванов Иван» уже есть индивидуальный график за январь 2024."),
            qPrintable(refusal(duplicate)));

        m_store->add(personal(m_store->otherEmployee));
        SCHEDULE_DATA other = m_store->add(personal(m_store->employee, NewYear.addDays(1)));
        other.startDate = NewYear;
        QCOMPARE(run(request::UpdateSchedule, other).result(), int(ResultInvalidData));
        // A record does not conflict with itself or with a removed one.
        QVERIFY(run(request::UpdateSchedule, january).isSuccess());
        QVERIFY(run(request::RemoveSchedules, QList<quint32>{quint32(january.id)}).isSuccess());
        m_store->add(personal(m_store->employee));
    }

    void shouldRemoveAllSchedulesOrNone()
    {
        const auto first = quint32(m_store->add(workingWeek()).id);
        const auto second = quint32(m_store->add(workingWeek()).id);
        const auto kept = quint32(m_store->add(workingWeek()).id);
        const QList<quint32> employees{m_store->employee, m_store->otherEmployee};
        store::BulkWriter writer(m_store->database);
        writer.setCalendarDays(first, {calendarDay(NewYear, m_store->dayShift)});
        for (const quint32 employee : employees)
            writer.setMainSchedule(employee, first);
        QVERIFY(writer.commit().ok());

        QCOMPARE(run(request::RemoveSchedules, QList<quint32>{first, 4711}).result(), int(ResultNotFound));
        QCOMPARE(m_store->stored(first).id, qint32(first));

        (void)changes();
        QVERIFY(run(request::RemoveSchedules, QList<quint32>{first, second, first}).isSuccess());
        auto change = changes();
        std::sort(change.removedSchedules.begin(), change.removedSchedules.end());
        QCOMPARE(change.removedSchedules, (QList<quint32>{first, second}));
        // Its days and references are removed, and its identifier is not used again.
        const auto changed = change.objects.value(orvex::SUBJECT_DATANAME);
        for (const quint32 employee : employees)
            QCOMPARE(changed.value(employee).parameter(db::param::SCHEDULE), QString());
        QVERIFY(calendar(qint32(first)).isEmpty());
        QVERIFY(m_store->add(workingWeek()).id > qint32(kept));
        QCOMPARE(m_store->stored(kept).id, qint32(kept));
    }

    void shouldAnswerARepeatedRequestFromTheLog()
    {
        const Command add = storeRequest(request::AddSchedule, workingWeek());
        const Command first = m_store->database.execute(add);
        QVERIFY(first.isSuccess());
        const Command second = m_store->database.execute(add);
        QCOMPARE(second.result(), first.result());
        QCOMPARE(second.payload(), first.payload());
        QCOMPARE(second.id(), add.id());
        orvex::StorageChange all;
        QVERIFY(m_store->database.snapshot(all).ok());
        QCOMPARE(all.schedules.size(), 1);

        // A repeated update succeeds although its version is stale by now.
        const Command update = storeRequest(request::UpdateSchedule, all.schedules.value(1));
        QVERIFY(m_store->database.execute(update).isSuccess());
        QVERIFY(m_store->database.execute(update).isSuccess());
        QCOMPARE(m_store->stored(1).version, qint64(2));

        Command nameless = add;
        nameless.setId({});
        QCOMPARE(m_store->database.execute(nameless).result(), int(ResultInvalidData));
    }

    void shouldStoreCalendarDaysByTheirOwnDates()
    {
        const qint32 id = m_store->add(newSchedule(QStringLiteral("Год"), orvex::ScheduleCalendar)).id;
        SCHEDULE_CALENDAR_DAY own = calendarDay(LeapDay, 0);
        own.intervals = {{3600, 7200}, {82800, 3600}};
        const QDate beyond(2031, 7, 1);
        const Days days{calendarDay(YearEnd, m_store->nightShift), own, calendarDay(NewYear, m_store->dayShift),
                        calendarDay(NewYear, m_store->nightShift), calendarDay(beyond, m_store->dayShift)};
        QCOMPARE(save(id, days), int(ResultSuccess));

        own.revision = 1;
        Days stored{calendarDay(NewYear, m_store->dayShift, orvex::DayByShift, 1), own, // the first of a date wins
                    calendarDay(YearEnd, m_store->nightShift, orvex::DayByShift, 1)};
        QVERIFY(calendar(id) == stored);
        QCOMPARE(calendar(id, beyond, beyond).size(), 1);
        QVERIFY(calendar(id, {}, {}).isEmpty()); // the year 0
        QCOMPARE(m_store->stored(quint32(id)).version, qint64(2));

        // Days that are not named stay; a cleared one stays as a row.
        stored[0].clear();
        QCOMPARE(save(id, {stored.at(0)}), int(ResultSuccess));
        stored[0].revision = 2;
        QVERIFY(calendar(id) == stored);
    }

    void shouldRefuseInvalidCalendarDays_data()
    {
        QTest::addColumn<SCHEDULE_CALENDAR_DAY>("day");
        SCHEDULE_CALENDAR_DAY bad = calendarDay(NewYear, 0);
        bad.intervals = {{0, 86401}};
        QTest::newRow("no date") << calendarDay({}, 0);
        QTest::newRow("unknown shift") << calendarDay(NewYear, 4711);
        QTest::newRow("shift of all bits") << calendarDay(NewYear, quint32(-1));
        QTest::newRow("interval past midnight") << bad;
        QTest::newRow("unknown mode") << calendarDay(NewYear, 0, 4);
        bad = calendarDay(NewYear, 0, orvex::DayHoliday);
        bad.overlayMode = orvex::DayHoliday;
        bad.storedMode = -1;
        QTest::newRow("unknown mode under a holiday") << bad;
    }

    void shouldRefuseInvalidCalendarDays()
    {
        QFETCH(SCHEDULE_CALENDAR_DAY, day);
        const qint32 id = m_store->add(workingWeek()).id;
        QCOMPARE(save(id, {calendarDay(YearEnd, m_store->dayShift), day}), int(ResultInvalidData));
        QVERIFY(calendar(id).isEmpty());
        QCOMPARE(save(4711, {}), int(ResultNotFound));
    }

    void shouldNotOverwriteAnotherClientsDays()
    {
        const qint32 id = m_store->add(newSchedule(QStringLiteral("Год"), orvex::ScheduleCalendar)).id;
        QCOMPARE(save(id, {calendarDay(LeapDay, m_store->dayShift)}), int(ResultSuccess));

        const Days tooOld{calendarDay(NewYear, m_store->nightShift),
                          calendarDay(LeapDay, m_store->nightShift, orvex::DayByShift, 0)};
        const Days fromNowhere{calendarDay(NewYear, m_store->nightShift),
                               calendarDay(YearEnd, m_store->nightShift, orvex::DayByShift, 7)};
        for (const Days &days : {tooOld, fromNowhere}) {
            QCOMPARE(save(id, days), int(ResultChangedMeanwhile));
            QVERIFY(calendar(id) == Days{calendarDay(LeapDay, m_store->dayShift, orvex::DayByShift, 1)});
        }
        QCOMPARE(save(id, {calendarDay(LeapDay, m_store->nightShift, orvex::DayByShift, 1)}), int(ResultSuccess));
    }

    void shouldNotStoreUnchangedDaysAgain()
    {
        const qint32 id = m_store->add(newSchedule(QStringLiteral("Год"), orvex::ScheduleCalendar)).id;
        QCOMPARE(save(id, {calendarDay(NewYear, m_store->dayShift), calendarDay(LeapDay, m_store->dayShift)}),
                 int(ResultSuccess));
        Days days = calendar(id);
        days[1].shiftId = m_store->nightShift;
        QCOMPARE(save(id, days), int(ResultSuccess));
        days = calendar(id);
        QCOMPARE(days.at(0).revision, qint64(1));
        QCOMPARE(days.at(1).revision, qint64(2));

        // Nothing to store: no change for other clients.
        (void)changes();
        QCOMPARE(save(id, days), int(ResultSuccess));
        QVERIFY(changes().isEmpty());
    }

    void shouldApplyHolidaysToWorkedDays()
    {
        {
            store::BulkWriter writer(m_store->database);
            writer.setProductionDay({NewYear, orvex::DayHoliday, QStringLiteral("Новый год")});
            writer.setProductionDay({NewYear.addDays(1), orvex::DayHoliday, {}});
            writer.setProductionDay({LeapDay, orvex::DayPreHoliday, {}});
            writer.setProductionDay({LeapDay.addDays(1), orvex::DayOff, {}});
            writer.setProductionDay({YearEnd, orvex::DayByShift, {}});
            QVERIFY(writer.commit().ok());
        }
        SCHEDULE_DATA record = newSchedule(QStringLiteral("Год"), orvex::ScheduleCalendar);
        const qint32 without = m_store->add(record).id;
        record.useHolidays = 1;
        const qint32 with = m_store->add(record).id;
        SCHEDULE_CALENDAR_DAY off;
        off.date = NewYear.addDays(1);
        const Days days{calendarDay(NewYear, m_store->dayShift), off, calendarDay(LeapDay, m_store->dayShift),
                        calendarDay(LeapDay.addDays(1), m_store->dayShift), calendarDay(YearEnd, m_store->dayShift)};
        QCOMPARE(save(without, days), int(ResultSuccess));
        QCOMPARE(save(with, days), int(ResultSuccess));

        const auto modes = [](const Days &list) {
            QList<int> result;
            for (const auto &day : list)
                result << day.dayMode << day.overlayMode;
            return result;
        };
        QCOMPARE(modes(calendar(without)), (QList<int>{1, -1, 0, -1, 1, -1, 1, -1, 1, -1}));
        Days read = calendar(with);
        QCOMPARE(modes(read), (QList<int>{2, 2, 0, -1, 3, 3, 0, 0, 1, -1}));

        // An applied mode that is sent back is not stored; a mode that the operator has chosen is.
        read[2].dayMode = orvex::DayHoliday;
        QCOMPARE(save(with, read), int(ResultSuccess));
        m_store->sql(QStringLiteral("DELETE FROM production_day"));
        QCOMPARE(modes(calendar(with)), (QList<int>{1, -1, 0, -1, 2, -1, 1, -1, 1, -1}));
        QCOMPARE(calendar(with).at(0).revision, qint64(1));
    }

    void shouldRequireTheRightOfARequest()
    {
        // Stored in bulk, so that this client does not count as its creator.
        store::BulkWriter writer(m_store->database);
        const quint32 id = writer.addSchedule(workingWeek());
        QVERIFY(writer.commit().ok());
        const Days days{calendarDay(NewYear, m_store->dayShift)};
        const QList<qint32> ids{qint32(id)};
        const QList<std::pair<QString, Command>> requests{
            {"CREATE", storeRequest(request::AddSchedule, workingWeek())},
            {"UPDATE", storeRequest(request::UpdateSchedule, m_store->stored(id))},
            {"SHOW", storeRequest(request::GetScheduleCalendar, ids, NewYear, YearEnd)},
            {"UPDATE", storeRequest(request::UpdateScheduleCalendar, qint32(id), NewYear, YearEnd, days)},
            {"SHOW", storeRequest(request::GetBlobDataChange, QList<orvex::_BLOB_DATA_RESQUEST>())},
            {"DELETE", storeRequest(request::RemoveSchedules, QList<quint32>{id})}};
        QStringList all;
        QVERIFY(m_store->database.roles(all).ok());
        QCOMPARE(all.size(), 4);
        for (const auto &[right, command] : requests) {
            const QString role = QStringLiteral("RL_SCHEDULE_") + right;
            QStringList others = all;
            QVERIFY(others.removeOne(role));
            grantOnly(others);
            QVERIFY2(m_store->database.execute(command).result() == ResultNoRights, qPrintable(command.name()));
            grantOnly({role});
            QVERIFY2(m_store->database.execute(command).isSuccess(), qPrintable(command.name()));
        }
    }

    void shouldLetACreatorStoreTheDaysOnce()
    {
        QFETCH_GLOBAL(QString, engine);
        StoreFixture replacement(engine);
        store::Database other;
        qint32 foreign = 0;
        QVERIFY(other.open(m_store->address()).ok());
        QVERIFY(readPayload(other.execute(storeRequest(request::AddSchedule, workingWeek())).payload(), foreign));
        grantOnly({QStringLiteral("RL_SCHEDULE_CREATE")});
        const qint32 own = m_store->add(workingWeek()).id;
        QVERIFY(m_store->database.open(m_store->address()).ok()); // as after a lost connection

        QCOMPARE(save(foreign, {calendarDay(NewYear, m_store->dayShift)}), int(ResultNoRights));
        // Another store at the address, where the identifier is another user's schedule.
        replacement.add(workingWeek());
        QCOMPARE(replacement.add(workingWeek()).id, own);
        replacement.sql(QStringLiteral("DELETE FROM granted_role WHERE role <> 'RL_SCHEDULE_CREATE'"));
        QVERIFY(m_store->database.open(replacement.address()).ok());
        QCOMPARE(save(own, {calendarDay(NewYear, replacement.dayShift)}), int(ResultNoRights));
        QVERIFY(m_store->database.open(m_store->address()).ok());

        QCOMPARE(save(own, {calendarDay(NewYear, 4711)}), int(ResultInvalidData));
        QCOMPARE(save(own, {calendarDay(NewYear, m_store->dayShift)}), int(ResultSuccess));
        QCOMPARE(save(own, {calendarDay(LeapDay, m_store->dayShift)}), int(ResultNoRights));
    }

    void shouldSendOnlyBlobsThatDiffer()
    {
        const QString photo = QStringLiteral("PT_PHOTO");
        const QByteArray data("\x00\xffpng", 5);
        const auto md5 = [](const QByteArray &bytes) {
            return QCryptographicHash::hash(bytes, QCryptographicHash::Md5);
        };
        (void)changes();
        {
            store::BulkWriter writer(m_store->database);
            writer.setBlob(m_store->employee, photo, QByteArray("old"));
            writer.setBlob(m_store->employee, photo, data);
            QVERIFY(writer.commit().ok());
        }
        QCOMPARE(changes().changedBlobs.value(m_store->employee), QStringList{photo});

        using Blobs = QHash<quint32, QHash<QString, QByteArray>>;
        const auto ask = [&](quint32 id, const QByteArray &known) {
            Blobs blobs;
            const QList<orvex::_BLOB_DATA_RESQUEST> asked{{id, photo, known}};
            if (!readPayload(run(request::GetBlobDataChange, asked).payload(), blobs))
                qFatal("The reply cannot be read");
            return blobs;
        };
        QCOMPARE(ask(m_store->employee, {}).value(m_store->employee).value(photo), data);
        QCOMPARE(ask(m_store->employee, md5("old")).size(), 1);
        QVERIFY(ask(m_store->employee, md5(data)).isEmpty());
        // A wrong stored checksum must not cause the data to be sent every time.
        m_store->sql(QStringLiteral("UPDATE blob SET md5 = data"));
        QVERIFY(ask(m_store->employee, md5(data)).isEmpty());
        // A removed one is sent as an empty one, but only to a client that has a copy.
        QVERIFY(ask(m_store->otherEmployee, {}).isEmpty());
        QVERIFY(ask(m_store->otherEmployee, md5("old")).value(m_store->otherEmployee).contains(photo));
        QVERIFY(ask(m_store->otherEmployee, md5({})).isEmpty());
    }

    void shouldReportEachChangeOnce()
    {
        const auto kept = m_store->add(workingWeek());
        const auto removed = m_store->add(workingWeek());
        (void)changes();
        QVERIFY(changes().isEmpty());

        (void)m_store->database.somethingChanged();
        QVERIFY(!m_store->database.somethingChanged());
        m_store->sql(QStringLiteral("UPDATE schedule SET name = 'x'"));
        m_store->sql(QStringLiteral("UPDATE schedule SET name = 'y'"));
        m_store->sql(QStringLiteral("DELETE FROM schedule WHERE id = %1").arg(removed.id));
        QVERIFY(m_store->database.somethingChanged());

        const auto change = changes();
        QVERIFY(!change.full);
        QCOMPARE(change.schedules.size(), 1);
        QCOMPARE(change.schedules.value(quint32(kept.id)).name, QStringLiteral("y"));
        QCOMPARE(change.removedSchedules, QList<quint32>{quint32(removed.id)});
        QVERIFY(change.objects.isEmpty() && change.removedObjects.isEmpty());
        QVERIFY(changes().isEmpty());
    }

    void shouldReportObjectsUnderTheirDataNames()
    {
        const QString subjects = orvex::SUBJECT_DATANAME;
        const QString tree = orvex::ORGSTRUCTURE_DATANAME;
        const QString shifts = orvex::SCHEDULE_SHIFT_DATANAME;
        const QString intervals = orvex::SHIFT_INTERVAL_DATANAME;
        orvex::StorageChange all;
        QVERIFY(m_store->database.snapshot(all).ok());
        QVERIFY(all.full);
        QCOMPARE(all.objects.value(subjects).size(), 2);
        QCOMPARE(all.objects.value(tree).size(), 4);
        const auto employee = all.objects.value(tree).value(m_store->employee);
        QCOMPARE(employee.type, QString(db::orgstructure::WORKER));
        QCOMPARE(employee.parameter(db::param::PARENT).toUInt(), m_store->department);
        QCOMPARE(employee.parameter(db::param::WORKERNUM), QStringLiteral("17"));
        QCOMPARE(all.objects.value(tree).value(m_store->department).type, QString(db::orgstructure::DEPARTMENT));
        const auto day = all.objects.value(shifts).value(m_store->dayShift);
        QCOMPARE(day.parameter(db::param::CODE), QStringLiteral("Д"));
        const auto ids = day.parameter(db::param::INTERVALS).split(QLatin1Char(','));
        QCOMPARE(ids.size(), 2);
        QCOMPARE(all.objects.value(intervals).value(ids.at(1).toUInt()).parameter(db::param::START),
                 QStringLiteral("46800"));

        // Removing an interval changes its shift, too.
        m_store->sql(QStringLiteral("DELETE FROM shift_interval WHERE id = %1").arg(ids.at(0)));
        auto change = changes();
        QCOMPARE(change.removedObjects.value(intervals), QList<quint32>{ids.at(0).toUInt()});
        QCOMPARE(change.objects.value(shifts).value(m_store->dayShift).parameter(db::param::INTERVALS), ids.at(1));
        QCOMPARE(change.objects.size(), 1);

        m_store->sql(QStringLiteral("UPDATE subject SET state = 'd' WHERE id = %1").arg(m_store->employee));
        m_store->sql(QStringLiteral("DELETE FROM subject WHERE id = %1").arg(m_store->otherEmployee));
        change = changes();
        for (const QString &name : {subjects, tree}) {
            QCOMPARE(change.objects.value(name).size(), 1);
            QCOMPARE(change.objects.value(name).value(m_store->employee).parameter(db::param::OBJECTSTATE),
                     QStringLiteral("d"));
            QCOMPARE(change.removedObjects.value(name), QList<quint32>{m_store->otherEmployee});
        }
    }

    void shouldReadEverythingIfTheLogIsNotSufficient_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::newRow("cut log") << "UPDATE feed_info SET cut_seq = (SELECT max(seq) FROM change_log)";
        QTest::newRow("other store in the same place") << "UPDATE feed_info SET feed_id = 'another'";
        QTest::newRow("older state of the store") << "DELETE FROM change_log WHERE seq > 1";
    }

    void shouldReadEverythingIfTheLogIsNotSufficient()
    {
        QFETCH(QString, statement);
        m_store->add(workingWeek());
        (void)changes();
        m_store->sql(QStringLiteral("UPDATE schedule SET name = 'x'"));
        m_store->sql(statement);
        const auto change = changes();
        QVERIFY(change.full);
        QCOMPARE(change.schedules.value(1).name, QStringLiteral("x"));
        QCOMPARE(change.scheduleIds, change.schedules.keys());
        QCOMPARE(change.objects.value(orvex::SUBJECT_DATANAME).size(), 2);
        QVERIFY(changes().isEmpty());
    }

    void shouldShortenALongLog()
    {
        store::Database slow;
        orvex::StorageChange change;
        QVERIFY(slow.open(m_store->address()).ok());
        QVERIFY(slow.snapshot(change).ok());
        const Command old = storeRequest(request::AddSchedule, workingWeek());
        QVERIFY(m_store->database.execute(old).isSuccess());
        // An old request is kept if there are few: the clock may have jumped, and the request may be sent again.
        m_store->time = m_store->time.addYears(5);
        QVERIFY(m_store->database.cutLogs().ok());
        QVERIFY(m_store->database.execute(old).isSuccess());
        QCOMPARE(changes().schedules.size(), 1);
        m_store->sql(QStringLiteral("WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10001) "
                                    "INSERT INTO request_log (request_id, login, result, reply, stored_at) "
                                    "SELECT i, '', 1, x'', '3000-01-01T00:00:00.000Z' FROM n"));
        m_store->sql(QStringLiteral("WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200000) "
                                    "INSERT INTO change_log (entity, id, op) SELECT 'schedule', 1, 'u' FROM n"));
        QCOMPARE(changes().schedules.size(), 1);
        QVERIFY(m_store->database.cutLogs().ok());
        QVERIFY(run(request::AddSchedule, workingWeek()).isSuccess());

        // A feed that has read the removed entries continues; the other one reads everything.
        change = changes();
        QVERIFY(!change.full);
        QCOMPARE(change.schedules.size(), 1);
        QVERIFY(slow.changes(change).ok());
        QVERIFY(change.full);
        QCOMPARE(change.schedules.size(), 2);
        // A request that is no longer in the log counts as a new one.
        QVERIFY(m_store->database.execute(old).isSuccess());
        QCOMPARE(changes().schedules.size(), 1);
    }

    void shouldWriteInBulkAllOrNothing()
    {
        {
            store::BulkWriter writer(m_store->database);
            QVERIFY(writer.addSchedule(workingWeek()) != 0);
        }
        {
            store::BulkWriter writer(m_store->database);
            const quint32 id = writer.addSchedule(workingWeek());
            writer.setCalendarDays(id, {calendarDay(NewYear, 4711)});
            QCOMPARE(writer.failure().code, int(ResultInvalidData));
            QCOMPARE(writer.addSchedule(workingWeek()), 0u);
            QVERIFY(!writer.commit().ok());
        }
        orvex::StorageChange all;
        QVERIFY(m_store->database.snapshot(all).ok());
        QVERIFY(all.schedules.isEmpty());

        store::BulkWriter writer(m_store->database);
        const quint32 id = writer.addSchedule(workingWeek());
        writer.setCalendarDays(id, {calendarDay(NewYear, m_store->dayShift)});
        writer.setCalendarDays(id, {calendarDay(NewYear, m_store->nightShift)});
        QVERIFY(writer.commit().ok());
        QCOMPARE(calendar(qint32(id)).at(0).shiftId, m_store->nightShift);
    }

    void shouldPrepareAStatementAgainAfterAFailure()
    {
        m_store->sql(QStringLiteral("ALTER TABLE schedule RENAME TO schedule_renamed"));
        QCOMPARE(run(request::AddSchedule, workingWeek()).result(), int(ResultStorageError));
        m_store->sql(QStringLiteral("ALTER TABLE schedule_renamed RENAME TO schedule"));
        const Command reply = run(request::AddSchedule, workingWeek());
        QVERIFY2(reply.isSuccess(), reply.payload().constData());
    }

    void shouldInterruptLoading()
    {
        const auto stop = std::make_shared<std::atomic_bool>(false);
        store::Database database(store::systemClock(), stop);
        QVERIFY(database.open(m_store->address()).ok());
        orvex::StorageChange all;
        QVERIFY(database.snapshot(all).ok());
        *stop = true;
        QCOMPARE(database.snapshot(all).code, int(ResultNoConnection));
        QVERIFY(all.isEmpty());
    }

private:
    template <class... T> Command run(const QString &name, const T &...values)
    {
        return m_store->database.execute(storeRequest(name, values...));
    }
    int save(qint32 schedule, const Days &days)
    {
        return run(request::UpdateScheduleCalendar, schedule, NewYear, YearEnd, days).result();
    }
    Days calendar(qint32 schedule, const QDate &first = NewYear, const QDate &last = YearEnd)
    {
        return storedDays(m_store->database, schedule, first, last);
    }

    orvex::StorageChange changes()
    {
        orvex::StorageChange change;
        require(m_store->database.changes(change));
        return change;
    }

    void grantOnly(const QStringList &roles)
    {
        m_store->sql(QStringLiteral("DELETE FROM granted_role"));
        for (const QString &role : roles)
            m_store->sql(QStringLiteral("INSERT INTO granted_role (role) VALUES ('%1')").arg(role));
    }

    std::unique_ptr<StoreFixture> m_store;
};

QTEST_GUILESS_MAIN(StoreContractTest)

#include "tst_store_contract.moc"
