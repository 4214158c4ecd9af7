#include "datanames.h"
#include "sampleobjects.h"
#include "samplerecords.h"
#include "scheduleutil.h"
#include "testcolumns.h"

#include <QtTest>

namespace {

using Times = QList<orvex::SCHEDULE_SHIFT_TIME>;

/// "8:30" in seconds.
qint32 seconds(const QString &time)
{
    const QStringList parts = time.split(':');
    return parts.at(0).toInt() * 3600 + parts.value(1).toInt() * 60;
}

/// "8-12 13-17" as intervals.
Times times(const QString &text)
{
    Times list;
    const QStringList intervals = text.split(' ', Qt::SkipEmptyParts);
    for (const QString &interval : intervals)
        list.append({-1, seconds(interval.section('-', 0, 0)), seconds(interval.section('-', 1, 1))});
    return list;
}

orvex::SCHEDULE_CALENDAR_DAY leapDay(quint32 shiftId, qint32 mode = orvex::DayByShift)
{
    return support::calendarDay({2024, 2, 29}, shiftId, mode);
}

} // namespace

class TestScheduleUtil : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        addShift(1, {{10, "8-12"}, {11, "13-17"}});
        addShift(2, {{12, "20-8"}});
        addShift(3, {{14, "13-17"}, {13, "8-12"}}); // identifiers against the order of the day
        addShift(4, {});
        m_shifts[5].parameters.insert(db::param::INTERVALS, QStringLiteral("10,999,,x,11"));
    }

    void shouldFindTheEndsOfWeekAndMonth_data()
    {
        support::addColumns<QDate, QDate, QDate>({"date", "monday", "last"});
        QTest::newRow("a Monday") << QDate(2026, 3, 9) << QDate(2026, 3, 9) << QDate(2026, 3, 31);
        QTest::newRow("a Sunday after New Year") << QDate(2023, 1, 1) << QDate(2022, 12, 26) << QDate(2023, 1, 31);
        QTest::newRow("29 February") << QDate(2024, 2, 29) << QDate(2024, 2, 26) << QDate(2024, 2, 29);
        QTest::newRow("a common February") << QDate(2023, 2, 1) << QDate(2023, 1, 30) << QDate(2023, 2, 28);
        QTest::newRow("no date") << QDate() << QDate() << QDate();
    }

    void shouldFindTheEndsOfWeekAndMonth()
    {
        QFETCH(QDate, date);
        QTEST(ScheduleUtil::mondayOf(date), "monday");
        QTEST(ScheduleUtil::lastOfMonth(date), "last");
    }

    void shouldCalculateTheTimesOfAShift_data()
    {
        support::addColumns<QString, qint32, qint32, qint32, qint32, qint32>(
            {"intervals", "start", "finish", "norm", "gaps", "night"});
        const auto row = [](const char *name, const char *intervals, const char *start, const char *finish,
                            const char *norm, const char *gaps, const char *night) {
            QTest::newRow(name) << intervals << seconds(start) << seconds(finish) << seconds(norm) << seconds(gaps)
                                << seconds(night);
        };
        row("nothing", "", "0", "0", "0", "0", "0");
        row("empty intervals", "0-0 0-0", "0", "0", "0", "0", "0");
        row("day with a lunch break", "8-12 13-17", "8", "17", "8", "1", "0");
        row("three parts, unordered", "18-20 6-9 11-13:30", "6", "20", "7:30", "6:30", "0");
        row("an empty interval between", "8-12 0-0 13-17", "8", "17", "8", "1", "0");
        row("without a gap", "8-12 12-16", "8", "16", "8", "0", "0");
        row("overlapping", "8-13 12-16", "8", "16", "9", "0", "0");
        row("an interval inside another at the end", "8-18 9-10", "8", "18", "11", "0", "0");
        row("an interval inside another", "8-18 9-10 17-20", "8", "20", "14", "0", "0");
        row("night", "20-8", "20", "8", "12", "0", "8");
        row("night with a break on the next day", "20-1 2-8", "20", "8", "11", "1", "7");
        row("evening ends at midnight", "16-0", "16", "24", "8", "0", "2");
        row("midnight between two parts", "16-0 1-3", "16", "3", "10", "1", "4");
        row("starts at midnight", "0-8", "0", "8", "8", "0", "6");
        row("whole day from midnight to midnight", "0-24", "0", "24", "24", "0", "8");
        row("24 hours from the morning", "8-8", "8", "8", "24", "0", "8");
        row("24 hours with a break over midnight", "9-22 23-5 6-9", "9", "9", "22", "2", "6");
        row("edges of the night", "6-22", "6", "22", "16", "0", "0");
        row("one minute before and after the night limits", "5:59-22:01", "5:59", "22:01", "16:02", "0", "0:02");
        row("beyond the end of the night", "23-7", "23", "7", "8", "0", "7");
        row("almost two days", "23:59-23:58", "23:59", "23:58", "23:59", "0", "7:59");
    }

    void shouldCalculateTheTimesOfAShift()
    {
        QFETCH(QString, intervals);
        const Times list = times(intervals);
        QTEST(ScheduleUtil::startTime(list), "start");
        QTEST(ScheduleUtil::finishTime(list), "finish");
        QTEST(ScheduleUtil::normTime(list), "norm");
        QTEST(ScheduleUtil::breakTime(list), "gaps");
        QTEST(ScheduleUtil::nightTime(list), "night");
        const orvex::SCHEDULE_SHIFT shift{1, 0, list};
        QTEST(shift.start(), "start");
        QTEST(shift.finish(), "finish");
        QTEST(shift.break_time(), "gaps");
    }

    void shouldLimitInvalidTimes()
    {
        const qint32 huge = std::numeric_limits<qint32>::max();
        const qint32 tiny = std::numeric_limits<qint32>::min();
        QCOMPARE(ScheduleUtil::normTime({{1, tiny, huge}}), 86400);
        QCOMPARE(ScheduleUtil::normTime({{1, tiny, -1}}), 0);
        Times many;
        for (int i = 0; i < 100000; ++i)
            many.append({i, 8 * 3600, 8 * 3600});
        QVERIFY(ScheduleUtil::normTime(many) > 0);
        QVERIFY(ScheduleUtil::nightTime(many) > 0);
        QCOMPARE(ScheduleUtil::startTime(many), 8 * 3600);
        QCOMPARE(ScheduleUtil::finishTime(many), 8 * 3600);
        QCOMPARE(ScheduleUtil::breakTime(many), 0);
    }

    void shouldCalculateTheTimesOfACalendarDay_data()
    {
        support::addColumns<quint32, int, qint32, qint32, qint32, qint32, qint32>(
            {"shift", "mode", "norm", "start", "finish", "gaps", "night"});
        const auto row = [](const char *name, quint32 shift, int mode, const char *norm, const char *start,
                            const char *finish, const char *gaps, const char *night) {
            QTest::newRow(name) << shift << mode << seconds(norm) << seconds(start) << seconds(finish) << seconds(gaps)
                                << seconds(night);
        };
        row("by its shift", 1, orvex::DayByShift, "8", "8", "17", "1", "0");
        row("night shift", 2, orvex::DayByShift, "12", "20", "8", "0", "8");
        row("intervals out of order", 3, orvex::DayByShift, "8", "8", "17", "1", "0");
        row("before a holiday", 1, orvex::DayPreHoliday, "7", "8", "17", "1", "0");
        row("day off with a shift", 1, orvex::DayOff, "0", "0", "0", "0", "0");
        row("public holiday", 1, orvex::DayHoliday, "0", "0", "0", "0", "0");
        row("no shift", 0, orvex::DayByShift, "0", "0", "0", "0", "0");
        row("no shift before a holiday", 0, orvex::DayPreHoliday, "0", "0", "0", "0", "0");
        row("unknown shift", 77, orvex::DayByShift, "0", "0", "0", "0", "0");
        row("identifier -1", 0xffffffff, orvex::DayByShift, "0", "0", "0", "0", "0");
        row("shift without intervals", 4, orvex::DayByShift, "0", "0", "0", "0", "0");
        row("missing intervals", 5, orvex::DayByShift, "8", "8", "17", "1", "0");
    }

    void shouldCalculateTheTimesOfACalendarDay()
    {
        QFETCH(quint32, shift);
        QFETCH(int, mode);
        const auto day = leapDay(shift, mode);
        QTEST(ScheduleUtil::dayNormTime(day, &m_shifts, &m_intervals), "norm");
        QTEST(ScheduleUtil::dayStartTime(day, &m_shifts, &m_intervals), "start");
        QTEST(ScheduleUtil::dayFinishTime(day, &m_shifts, &m_intervals), "finish");
        QTEST(ScheduleUtil::dayBreakTime(day, &m_shifts, &m_intervals), "gaps");
        QTEST(ScheduleUtil::dayNightTime(day, &m_shifts, &m_intervals), "night");
        QCOMPARE(ScheduleUtil::isHoliday(day), mode == orvex::DayOff || mode == orvex::DayHoliday);
    }

    void shouldPreferTheDaysOwnIntervals()
    {
        auto day = leapDay(1);
        day.intervals = {{22 * 3600, 2 * 3600}};
        QCOMPARE(ScheduleUtil::dayNormTime(day, &m_shifts, &m_intervals), 4 * 3600);
        QCOMPARE(ScheduleUtil::dayNightTime(day, &m_shifts, &m_intervals), 4 * 3600);
        QCOMPARE(ScheduleUtil::dayStartTime(day, &m_shifts, &m_intervals), 22 * 3600);
        QCOMPARE(ScheduleUtil::dayNormTime(day, nullptr, nullptr), 4 * 3600);
        day.intervals = {{8 * 3600, 8 * 3600 + 1800}};
        day.dayMode = orvex::DayPreHoliday;
        QCOMPARE(ScheduleUtil::dayNormTime(day, &m_shifts, &m_intervals), 0);
    }

    void shouldTreatAMissingGuideAsEmpty()
    {
        QCOMPARE(ScheduleUtil::dayNormTime(leapDay(1), nullptr, &m_intervals), 0);
        QCOMPARE(ScheduleUtil::dayNormTime(leapDay(1), &m_shifts, nullptr), 0);
    }

private:
    void addShift(quint32 id, const QList<QPair<quint32, QString>> &intervals)
    {
        QStringList ids;
        for (const auto &interval : intervals) {
            const auto time = times(interval.second).constFirst();
            m_intervals.insert(interval.first, support::guideInterval(interval.first, time.start, time.finish));
            ids.append(QString::number(interval.first));
        }
        m_shifts.insert(id, support::guideShift(id, {}, {}, ids.join(',')));
    }

    orvex::ObjectHash m_shifts;
    orvex::ObjectHash m_intervals;
};

QTEST_APPLESS_MAIN(TestScheduleUtil)
#include "tst_scheduleutil.moc"
