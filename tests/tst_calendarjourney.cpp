#include "calendarcells.h"
#include "clientfixture.h"

#include <QtTest>

using namespace support;

/// The operator puts shifts on two weeks of a calendar schedule, repeats them to the end of the year, saves and opens
/// the schedule again.
class TestCalendarJourney : public QObject
{
    Q_OBJECT

private slots:
    void shouldRepeatTwoWeeksToTheEndOfTheYear_data() { Operator::addDevices(); }
    void shouldRepeatTwoWeeksToTheEndOfTheYear()
    {
        QFETCH(bool, mouse);
        const Operator person(mouse);
        m_client = std::make_unique<ClientFixture>();
        auto schedule = newSchedule("Вахта", orvex::ScheduleCalendar);
        schedule.startDate = QDate(QDate::currentDate().year(), 1, 1);
        schedule = m_client->store.add(schedule);
        const QDate inMarch(schedule.startDate.year(), 3, 7);
        m_monday = inMarch.addDays(1 - inMarch.dayOfWeek());
        QTRY_COMPARE(m_client->table()->model()->rowCount(), 1);

        m_client->edit(person, [&](QDialog &) {
            QTRY_VERIFY(person.widget("calendarView")->isEnabled());
            const QString put = "Задать смену";
            person.chooseForDays(m_monday, 5, put, "Д День");
            person.chooseForDays(m_monday.addDays(7), 5, put, "Н Ночь");
            person.chooseForDays(m_monday, 14, "Применить периодичность", "До конца года");
            checkShifts(*person.widget<QTableView>("calendarView")->model());
            person.acceptDialog();
        });
        const qint64 version = schedule.version;
        const auto storedVersion = [&] { return m_client->store.stored(quint32(schedule.id)).version; };
        QTRY_VERIFY(storedVersion() >= version + 2); // the record, then the days

        m_client->edit(person, [&](QDialog &) {
            QTRY_VERIFY(person.widget("calendarView")->isEnabled());
            checkShifts(*person.widget<QTableView>("calendarView")->model());
        });
    }
    void cleanup() { m_client.reset(); }

private:
    void checkShifts(const QAbstractItemModel &year) const
    {
        const QDate newYear(m_monday.year(), 1, 1);
        for (QDate date = newYear; date.year() == newYear.year(); date = date.addDays(1)) {
            const auto day = m_monday.daysTo(date);
            const auto week = day < 0 || day % 7 > 4 ? -1 : day % 14 / 7;
            const quint32 wanted = week < 0 ? 0 : week == 0 ? m_client->store.dayShift : m_client->store.nightShift;
            QCOMPARE(shiftOn(year, date), wanted);
        }
    }

    std::unique_ptr<ClientFixture> m_client;
    QDate m_monday; ///< of the first full week in March
};

QTEST_MAIN(TestCalendarJourney)
#include "tst_calendarjourney.moc"
