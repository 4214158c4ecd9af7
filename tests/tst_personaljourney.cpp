#include "clientfixture.h"

#include <QLabel>
#include <QMessageBox>
#include <QTabBar>
#include <QTreeView>

/// An operator's way through the running client and a real store: find an employee by typing, mark a month with a
/// repeated pattern, save, change three days, save, delete.
class TestPersonalJourney : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        const QDate today = QDate::currentDate();
        m_month = QDate(today.year(), today.month(), 1);
        m_monday = m_month.addDays((8 - m_month.dayOfWeek()) % 7);
        m_client = std::make_unique<ClientFixture>();
        auto *tabs = m_client->window().findChild<QTabBar *>("pageTabs");
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    }

    void cleanup() { m_client.reset(); }

    void shouldBeDoneWithOneDevice_data() { Person::addDevices(); }
    void shouldBeDoneWithOneDevice()
    {
        QFETCH(bool, mouse);
        const Person person(mouse);
        person.order("actionAddPersonalSchedule", Qt::Key_Insert);
        QVERIFY(wizard());
        hand::activate(*wizard());
        findTheEmployee(person, mouse);
        QCOMPARE(wizard()->currentId(), 1);
        const QString put = QStringLiteral("Задать смену");
        person.mark(m_monday, 1, put, QStringLiteral("Д День"));
        person.mark(m_monday.addDays(1), 1, put, QStringLiteral("Н Ночь"));
        person.mark(m_monday, 4, QStringLiteral("Применить периодичность"), QStringLiteral("До конца месяца"));
        person.goOn();
        QTRY_VERIFY(wizard()->button(QWizard::FinishButton)->isEnabled());
        QCOMPARE(person.see<QLabel>("messageLabel")->text(), QStringLiteral("Создание графика успешно завершено!"));
        person.goOn();
        QTRY_VERIFY(!wizard());
        checkCreated();
        takeThreeDaysOff(person);

        hand::activate(m_client->window());
        hand::whenOpen(
            [&](QDialog &dialog) { person.push(qobject_cast<QMessageBox *>(&dialog)->button(QMessageBox::Ok)); });
        person.order("actionDelPersonalSchedule", Qt::Key_Delete);
        QTRY_COMPARE(table()->model()->rowCount(), 0);
    }

private:
    [[nodiscard]] QTableView *table() const { return m_client->table(); }
    [[nodiscard]] QWizard *wizard() const { return m_client->window().findChild<QWizard *>(); }

    void findTheEmployee(const Person &person, bool mouse)
    {
        if (mouse)
            person.reach(person.see("searchEdit"));
        hand::type(QStringLiteral("петр"));
        if (mouse) {
            auto *tree = person.see<QTreeView>("employeeView");
            const auto found = tree->model()->match(tree->model()->index(0, 0), Qt::DisplayRole,
                                                    m_client->store.otherEmployee, 1, Qt::MatchRecursive);
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(found.value(0)).center());
        } else {
            hand::press(Qt::Key_Down);
        }
        person.goOn();
    }

    void checkCreated()
    {
        QTRY_COMPARE(table()->selectionModel()->selectedRows().size(), 1);
        const QModelIndex row = table()->currentIndex();
        const QString employee = QStringLiteral("Петрова Анна");
        const QString month = QLocale().standaloneMonthName(m_month.month(), QLocale::LongFormat);
        QCOMPARE(row.siblingAtColumn(1).data().toString(),
                 QStringLiteral("%1 %2 %3").arg(employee, month).arg(m_month.year()));
        QCOMPARE(row.siblingAtColumn(3).data().toString(), employee);
        const auto shifts = storedShifts();
        for (QDate date = m_month; date.month() == m_month.month(); date = date.addDays(1))
            QCOMPARE(shifts.value(date), patternShift(date));
    }

    void takeThreeDaysOff(const Person &person)
    {
        hand::activate(m_client->window());
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(table()));
        m_client->edit(person, [&](QDialog &) {
            const auto &days = *person.see<QTableView>("calendarView");
            QTRY_COMPARE(hand::cell(days, m_monday).data(CalendarShiftRole).toUInt(), m_client->store.dayShift);
            person.mark(m_monday, 3, QStringLiteral("Задать смену"), QStringLiteral("Выходной"));
            person.accept();
        });
        QTRY_COMPARE(storedShifts().value(m_monday.addDays(1)), 0u);
        const auto shifts = storedShifts();
        for (QDate date = m_monday; date.month() == m_month.month(); date = date.addDays(1))
            QCOMPARE(shifts.value(date), m_monday.daysTo(date) < 3 ? 0 : patternShift(date));
    }

    [[nodiscard]] QMap<QDate, quint32> storedShifts()
    {
        orvex::StorageChange all;
        if (!m_client->store.database.snapshot(all).ok() || all.schedules.isEmpty())
            return {};
        const QList<qint32> ids{qint32(all.schedules.cbegin().key())};
        const auto reply = m_client->store.database.execute(
            StoreFixture::request(request::GetScheduleCalendar, ids, m_month, m_month.addMonths(1).addDays(-1)));
        QList<qint32> read;
        QDate first;
        QDate last;
        QHash<qint32, QList<orvex::SCHEDULE_CALENDAR_DAY>> days;
        QMap<QDate, quint32> shifts;
        if (readPayload(reply.payload(), read, first, last, days)) {
            for (const auto &day : days.value(ids.first()))
                shifts.insert(day.date, day.shiftId);
        }
        return shifts;
    }

    [[nodiscard]] quint32 patternShift(const QDate &date) const
    {
        const auto days = m_monday.daysTo(date);
        if (days < 0)
            return 0;
        return days % 4 == 0 ? m_client->store.dayShift : days % 4 == 1 ? m_client->store.nightShift : 0;
    }

    std::unique_ptr<ClientFixture> m_client;
    QDate m_month; ///< its first day
    QDate m_monday; ///< the first one of the month
};

QTEST_MAIN(TestPersonalJourney)
#include "tst_personaljourney.moc"
