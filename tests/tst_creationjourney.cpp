#include "clientfixture.h"
#include "localstorage.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QSpinBox>

using namespace orvex;

namespace {

constexpr int Hour = 3600;

QString intervalsOf(const SCHEDULE_DATA &schedule)
{
    QStringList texts;
    for (const auto &shift : schedule.shifts) {
        for (const auto &time : shift.times)
            texts.append(QStringLiteral("%1-%2").arg(time.start / 60.0 / 60).arg(time.finish / 60.0 / 60));
    }
    return texts.join(QLatin1Char(' '));
}

QString daysOf(const SCHEDULE_DATA &schedule)
{
    QStringList texts;
    for (const auto &day : schedule.days)
        texts.append(day.dayOff ? QStringLiteral("-") : QString::number(day.shift));
    return texts.join(QLatin1Char(' '));
}

} // namespace

/// From the add key to the stored schedule and back into the editor, in the running client on a real store.
class TestCreationJourney : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_client = std::make_unique<ClientFixture>(); }
    void cleanupTestCase() { m_client.reset(); }

    void shouldCreateAFixedSchedule_data() { Person::addDevices(); }
    void shouldCreateAFixedSchedule()
    {
        const QString name = QStringLiteral("Fixed by %1").arg(QLatin1String(QTest::currentDataTag()));
        const auto person = startWizard("rbFixed", 0, name);
        person.typeTime("deShiftEnd", QStringLiteral("1830"));
        person.push("cbSubLastHour");
        SCHEDULE_DATA stored;
        finish(person, name, &stored);
        QCOMPARE(stored.type, ScheduleFixed);
        QCOMPARE(intervalsOf(stored), QStringLiteral("8-12 13-18.5 8-12 13-17.5"));
        QCOMPARE(daysOf(stored), QStringLiteral("0 0 0 0 1 - -"));
        QCOMPARE(stored.useHolidays, 1);
        lookIntoEditor(person, name, [&] {
            QCOMPARE(person.see<QComboBox>("cbScheduleType")->currentText(), QStringLiteral("Фиксированный"));
            QCOMPARE(person.see<QTableView>("tvMode")->model()->rowCount(), 7);
        });
    }

    void shouldCreateAShiftSchedule_data() { Person::addDevices(); }
    void shouldCreateAShiftSchedule()
    {
        const QString name = QStringLiteral("Shift by %1").arg(QLatin1String(QTest::currentDataTag()));
        const auto person = startWizard("rbShift", 1, name);
        for (int i = 0; i < 3; ++i)
            person.push("tbAddShift");
        for (const int row : {0, 1}) {
            fillCell(person, row, 0, QStringLiteral("0800"));
            fillCell(person, row, 1, QStringLiteral("2000"));
            person.tick("twSchedule", row + 2, 4);
        }
        SCHEDULE_DATA stored;
        finish(person, name, &stored);
        QCOMPARE(stored.type, ScheduleShift);
        QCOMPARE(intervalsOf(stored), QStringLiteral("8-20"));
        QCOMPARE(daysOf(stored), QStringLiteral("0 0 - -"));
        QCOMPARE(stored.startDate, QDate::currentDate());
        lookIntoEditor(person, name, [&] {
            QCOMPARE(person.see<QComboBox>("cbScheduleType")->currentText(), QStringLiteral("Сменный"));
            QCOMPARE(person.see<QTableView>("tvMode")->model()->rowCount(), 4);
            QCOMPARE(person.see<QDateEdit>("deStartDate")->date(), QDate::currentDate());
        });
    }

    void shouldCreateAFreeSchedule_data() { Person::addDevices(); }
    void shouldCreateAFreeSchedule()
    {
        const QString name = QStringLiteral("Free by %1").arg(QLatin1String(QTest::currentDataTag()));
        const auto person = startWizard("rbUnregul", 3, name);
        person.push("cbFreeUseStart");
        person.typeTime("freeStartEdit", QStringLiteral("0900"));
        person.push("cbFreeUseFinish");
        person.typeTime("freeFinishEdit", QStringLiteral("1800"));
        person.push("cbFreeUseBreak");
        person.type("freeBreakEdit", QStringLiteral("60"));
        person.push("cbFreeUseNorm");
        SCHEDULE_DATA stored;
        finish(person, name, &stored);
        QCOMPARE(stored.type, ScheduleFree);
        QCOMPARE(stored.freeStart, 9 * Hour);
        QCOMPARE(stored.freeFinish, 18 * Hour);
        QCOMPARE(stored.freeBreak, Hour);
        QCOMPARE(stored.freeNorm, 8 * Hour);
        lookIntoEditor(person, name, [&] {
            QCOMPARE(person.see<QTimeEdit>("freeStartEdit")->time(), QTime(9, 0));
            QCOMPARE(person.see<QTimeEdit>("freeFinishEdit")->time(), QTime(18, 0));
            QCOMPARE(person.see<QSpinBox>("freeNormHEdit")->value(), 8);
            QCOMPARE(person.see<QSpinBox>("freeBreakEdit")->value(), 60);
        });
    }

    void shouldCreateACalendarSchedule_data() { Person::addDevices(); }
    void shouldCreateACalendarSchedule()
    {
        const QString name = QStringLiteral("Year by %1").arg(QLatin1String(QTest::currentDataTag()));
        const auto person = startWizard("rbCalendar", 2, name);
        person.mark(QDate(QDate::currentDate().year(), 2, 3), 1, QStringLiteral("Задать смену"),
                    QStringLiteral("Д День"));
        SCHEDULE_DATA stored;
        finish(person, name, &stored);
        QCOMPARE(stored.type, ScheduleCalendar);
        const int year = QDate::currentDate().year();
        QCOMPARE(stored.startDate, QDate(year, 1, 1));
        lookIntoEditor(person, name, [&] {
            QCOMPARE(person.see<QSpinBox>("sbYear")->value(), year);
            const auto &days = *person.see<QTableView>("calendarView");
            QTRY_COMPARE(hand::cell(days, QDate(year, 2, 3)).data(CalendarShiftRole).toUInt(),
                         m_client->store.dayShift);
        });
    }

private:
    /// Opens the wizard on the page of a type.
    Person startWizard(const char *type, int place, const QString &name)
    {
        const bool mouse = QTest::currentDataTag() != QByteArray("keyboard");
        const Person person(mouse);
        hand::activate(m_client->window());
        list()->setFocus();
        hand::press(Qt::Key_Insert);
        m_wizard = m_client->window().findChild<QWizard *>();
        if (!m_wizard || !QTest::qWaitFor([this] { return QApplication::activeWindow() == m_wizard; }))
            qFatal("The wizard has not come up");
        if (mouse)
            person.push(type);
        for (int i = 0; !mouse && i < place; ++i)
            hand::press(Qt::Key_Down);
        person.goOn();
        person.type("leScheduleName", name);
        return person;
    }

    static void fillCell(const Person &person, int row, int column, const QString &digits)
    {
        person.open("twSchedule", row, column);
        QTest::keyClicks(hand::focus(), digits);
        hand::press(Qt::Key_Return);
    }

    /// Leaves the last page and hands out what the store has made of the schedule.
    void finish(const Person &person, const QString &name, SCHEDULE_DATA *stored)
    {
        person.goOn();
        QTRY_COMPARE(person.see<QLabel>("messageLabel")->text(), QStringLiteral("Создание графика успешно завершено!"));
        person.goOn();
        QTRY_VERIFY(!m_wizard);
        const auto selectedName = [this] {
            const auto rows = list()->selectionModel()->selectedRows(1);
            return rows.size() == 1 ? rows.first().data().toString() : QString();
        };
        QTRY_COMPARE(selectedName(), name);
        for (const auto &schedule : LocalStorage::instance()->schedules()) {
            if (schedule.name == name)
                *stored = schedule;
        }
        QVERIFY(stored->id > 0);
        QCOMPARE(stored->state, int(ScheduleStateActive));
    }

    /// Opens the editor on the selected schedule, has it read and cancels it.
    void lookIntoEditor(const Person &person, const QString &name, const std::function<void()> &read)
    {
        const auto look = [&](QDialog &) {
            QCOMPARE(person.see<QLineEdit>("leScheduleName")->text(), name);
            read();
        };
        m_client->edit(person, look, list()->currentIndex().row());
        QVERIFY(!QApplication::activeModalWidget());
    }

    [[nodiscard]] QTableView *list() const { return m_client->table(); }

    std::unique_ptr<ClientFixture> m_client;
    QPointer<QWizard> m_wizard;
};

QTEST_MAIN(TestCreationJourney)
#include "tst_creationjourney.moc"
