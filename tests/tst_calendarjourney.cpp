#include "clientfixture.h"

/// An operator puts shifts on a fortnight of a calendar schedule, repeats it to the end of the year, saves and opens
/// the schedule again, in the running client on a real store.
class TestCalendarJourney : public QObject
{
    Q_OBJECT

private slots:
    void shouldRepeatAFortnightToTheEndOfTheYear_data() { Person::addDevices(); }
    void shouldRepeatAFortnightToTheEndOfTheYear()
    {
        QFETCH(bool, mouse);
        const Person person(mouse);
        m_client = std::make_unique<ClientFixture>();
        auto schedule = StoreFixture::schedule(QStringLiteral("Вахта"), orvex::ScheduleCalendar);
        schedule.startDate = QDate(QDate::currentDate().year(), 1, 1);
        schedule = m_client->store.add(schedule);
        const QDate inMarch(schedule.startDate.year(), 3, 7);
        m_monday = inMarch.addDays(1 - inMarch.dayOfWeek());
        QTRY_COMPARE(m_client->table()->model()->rowCount(), 1);

        m_client->edit(person, [&](QDialog &) {
            QTRY_VERIFY(person.see("calendarView")->isEnabled());
            person.mark(m_monday, 5, QStringLiteral("Задать смену"), QStringLiteral("Д День"));
            person.mark(m_monday.addDays(7), 5, QStringLiteral("Задать смену"), QStringLiteral("Н Ночь"));
            person.mark(m_monday, 14, QStringLiteral("Применить периодичность"), QStringLiteral("До конца года"));
            checkMarks(*person.see<QTableView>("calendarView"));
            person.accept();
        });
        const qint64 version = schedule.version;
        const auto storedVersion = [&] { return m_client->store.stored(quint32(schedule.id)).version; };
        QTRY_VERIFY(storedVersion() >= version + 2); // the record, then the days

        m_client->edit(person, [&](QDialog &) {
            QTRY_VERIFY(person.see("calendarView")->isEnabled());
            checkMarks(*person.see<QTableView>("calendarView"));
        });
    }
    void cleanup() { m_client.reset(); }

private:
    void checkMarks(const QTableView &year) const
    {
        const QDate newYear(m_monday.year(), 1, 1);
        for (QDate date = newYear; date.year() == newYear.year(); date = date.addDays(1)) {
            const auto day = m_monday.daysTo(date);
            const auto week = day < 0 || day % 7 > 4 ? -1 : day % 14 / 7;
            const quint32 wanted = week < 0 ? 0 : week == 0 ? m_client->store.dayShift : m_client->store.nightShift;
            QCOMPARE(hand::cell(year, date).data(CalendarShiftRole).toUInt(), wanted);
        }
    }

    std::unique_ptr<ClientFixture> m_client;
    QDate m_monday; ///< of the first full week in March
};

QTEST_MAIN(TestCalendarJourney)
#include "tst_calendarjourney.moc"
