#include "calendarcells.h"
#include "clientfixture.h"

#include <QtTest>

using namespace support;

/// The operator assigns shifts to two weeks of a calendar schedule, repeats them to the end of the year, saves and
/// opens the schedule again.
class TestCalendarJourney : public QObject
{
    Q_OBJECT

private slots:
    void shouldRepeatTwoWeeksToEndOfYear_data() { Operator::addDevices(); }
    void shouldRepeatTwoWeeksToEndOfYear()
    {
        QFETCH(bool, mouse);
        const Operator person(mouse);
        ClientFixture client;
        auto schedule = newSchedule("Вахта", orvex::ScheduleCalendar);
        const QDate newYear(QDate::currentDate().year(), 1, 1);
        schedule.startDate = newYear;
        schedule = client.store.add(schedule);
        const QDate inMarch(newYear.year(), 3, 7);
        const QDate monday = inMarch.addDays(1 - inMarch.dayOfWeek()); // of the first full week
        QTRY_COMPARE(client.table()->model()->rowCount(), 1);
        const auto checkShifts = [&] {
            for (QDate date = newYear; date.year() == newYear.year(); date = date.addDays(1)) {
                const auto day = monday.daysTo(date);
                const auto week = day < 0 || day % 7 > 4 ? -1 : day % 14 / 7;
                const quint32 wanted = week < 0 ? 0 : week == 0 ? client.store.dayShift : client.store.nightShift;
                QCOMPARE(shiftOn(*person.widget<QTableView>("calendarView")->model(), date), wanted);
            }
        };

        client.edit(person, [&](QDialog &) {
            QTRY_VERIFY(person.widget("calendarView")->isEnabled());
            person.chooseForDays(monday, 5, "Задать смену", "Д День");
            person.chooseForDays(monday.addDays(7), 5, "Задать смену", "Н Ночь");
            person.chooseForDays(monday, 14, "Применить периодичность", "До конца года");
            checkShifts();
            person.acceptDialog();
        });
        const auto storedVersion = [&] { return client.store.stored(quint32(schedule.id)).version; };
        QTRY_VERIFY(storedVersion() >= schedule.version + 2); // the record, then the days

        client.edit(person, [&](QDialog &) {
            QTRY_VERIFY(person.widget("calendarView")->isEnabled());
            checkShifts();
        });
    }
};

QTEST_MAIN(TestCalendarJourney)
#include "tst_calendarjourney.moc"
