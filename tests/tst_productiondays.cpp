#include "productiondays.h"
#include "testcolumns.h"

#include <QtTest>

class TestProductionDays : public QObject
{
    Q_OBJECT

private slots:
    void shouldMatchTheOfficialCalendar_data()
    {
        const QString holidays = QStringLiteral("01.01-08.01 23.02 08.03 01.05 09.05 12.06 04.11");
        support::addColumns<int, QString, QString, QString, int>(
            {"year", "holidays", "moved", "shortened", "workingDays"});
        QTest::newRow("a working Saturday, one hour shorter") << 2025 << holidays << "02.05 08.05 13.06 03.11 31.12"
                                                              << "07.03 30.04 11.06 01.11" << 247;
        QTest::newRow("weekends moved by decree and by law") << 2026 << holidays << "09.01 09.03 11.05 31.12"
                                                             << "30.04 08.05 11.06 03.11" << 247;
        QTest::newRow("no decree in the table") << 2033 << holidays << "02.05 13.06"
                                                << "22.02 07.03 03.11" << 249;
    }

    void shouldMatchTheOfficialCalendar()
    {
        QFETCH(int, year);
        const auto days = productionDays(year);
        QMap<QDate, qint32> modes;
        QHash<qint32, QStringList> dates;
        for (const auto &day : days) {
            QVERIFY(!day.note.isEmpty());
            modes.insert(day.date, day.mode);
            if (day.mode != orvex::DayHoliday || day.date.month() > 1)
                dates[day.mode].append(day.date.toString(QStringLiteral("dd.MM")));
            else
                QVERIFY(day.date.day() <= 8);
        }
        QCOMPARE(modes.size(), days.size());
        int worked = 0;
        for (QDate date(year, 1, 1); date.year() == year; date = date.addDays(1)) {
            const qint32 usual = date.dayOfWeek() > Qt::Friday ? orvex::DayOff : orvex::DayByShift;
            const qint32 mode = modes.value(date, usual);
            worked += mode == orvex::DayByShift || mode == orvex::DayPreHoliday;
        }
        dates[orvex::DayHoliday].prepend(QStringLiteral("01.01-08.01"));
        QTEST(dates.value(orvex::DayHoliday).join(QLatin1Char(' ')), "holidays");
        QTEST(dates.value(orvex::DayOff).join(QLatin1Char(' ')), "moved");
        QTEST(dates.value(orvex::DayPreHoliday).join(QLatin1Char(' ')), "shortened");
        QTEST(worked, "workingDays");
    }
};

QTEST_APPLESS_MAIN(TestProductionDays)
#include "tst_productiondays.moc"
