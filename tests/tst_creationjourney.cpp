#include "calendarcells.h"
#include "clientfixture.h"
#include "hands.h"
#include "localstorage.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QtTest>

#include <algorithm>

using namespace orvex;
using namespace support;

/// The operator creates schedules of each type in the running client and opens them in the editor.
class TestCreationJourney : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_client = std::make_unique<ClientFixture>(); }
    void cleanupTestCase() { m_client.reset(); }

    void shouldCreateFixedSchedule_data() { Operator::addDevices(); }
    void shouldCreateFixedSchedule()
    {
        const QString name = QStringLiteral("Fixed by %1").arg(QLatin1String(QTest::currentDataTag()));
        const auto person = startWizard("rbFixed", 0, name);
        person.enterTime("deShiftEnd", "1830");
        person.press("cbSubLastHour");
        const auto stored = finish(person, name);
        QCOMPARE(scheduleText(stored), name + ": 0 0 0 0 1 - - | 8-12 13-18.5 | 8-12 13-17.5");
        QCOMPARE(stored.useHolidays, 1);
        checkInEditor(person, name, [&] {
            QCOMPARE(person.widget<QComboBox>("cbScheduleType")->currentText(), "Фиксированный");
            QCOMPARE(person.widget<QTableView>("tvMode")->model()->rowCount(), 7);
        });
    }

    void shouldCreateShiftSchedule_data() { Operator::addDevices(); }
    void shouldCreateShiftSchedule()
    {
        const QString name = QStringLiteral("Shift by %1").arg(QLatin1String(QTest::currentDataTag()));
        const auto person = startWizard("rbShift", 1, name);
        for (int i = 0; i < 3; ++i)
            person.press("tbAddShift");
        for (const int row : {0, 1}) {
            fillCell(person, row, 0, "0800");
            fillCell(person, row, 1, "2000");
            person.toggleCell("twSchedule", row + 2, 4);
        }
        const auto stored = finish(person, name);
        QCOMPARE(scheduleText(stored), name + ": 0 0 - - | 8-20");
        QCOMPARE(stored.startDate, QDate::currentDate());
        checkInEditor(person, name, [&] {
            QCOMPARE(person.widget<QComboBox>("cbScheduleType")->currentText(), "Сменный");
            QCOMPARE(person.widget<QTableView>("tvMode")->model()->rowCount(), 4);
            QCOMPARE(person.widget<QDateEdit>("deStartDate")->date(), QDate::currentDate());
        });
    }

    void shouldCreateFreeSchedule_data() { Operator::addDevices(); }
    void shouldCreateFreeSchedule()
    {
        const QString name = QStringLiteral("Free by %1").arg(QLatin1String(QTest::currentDataTag()));
        const auto person = startWizard("rbUnregul", 3, name);
        person.press("cbFreeUseStart");
        person.enterTime("freeStartEdit", "0900");
        person.press("cbFreeUseFinish");
        person.enterTime("freeFinishEdit", "1800");
        person.press("cbFreeUseBreak");
        person.enterText("freeBreakEdit", "60");
        person.press("cbFreeUseNorm");
        const auto stored = finish(person, name);
        QCOMPARE(scheduleText(stored), name + ": 9-18 8-1");
        checkInEditor(person, name, [&] {
            QCOMPARE(person.widget<QTimeEdit>("freeStartEdit")->time(), QTime(9, 0));
            QCOMPARE(person.widget<QTimeEdit>("freeFinishEdit")->time(), QTime(18, 0));
            QCOMPARE(person.widget<QSpinBox>("freeNormHEdit")->value(), 8);
            QCOMPARE(person.widget<QSpinBox>("freeBreakEdit")->value(), 60);
        });
    }

    void shouldCreateCalendarSchedule_data() { Operator::addDevices(); }
    void shouldCreateCalendarSchedule()
    {
        const QString name = QStringLiteral("Year by %1").arg(QLatin1String(QTest::currentDataTag()));
        const auto person = startWizard("rbCalendar", 2, name);
        person.chooseForDays(QDate(QDate::currentDate().year(), 2, 3), 1, "Задать смену", "Д День");
        const auto stored = finish(person, name);
        const int year = QDate::currentDate().year();
        QCOMPARE(stored.startDate, QDate(year, 1, 1));
        checkInEditor(person, name, [&] {
            QCOMPARE(person.widget<QSpinBox>("sbYear")->value(), year);
            const auto &days = *person.widget<QTableView>("calendarView")->model();
            QTRY_COMPARE(shiftOn(days, QDate(year, 2, 3)), m_client->store.dayShift);
        });
    }

private:
    /// Opens the wizard on the page of a type, the one at \a place of the list of types.
    Operator startWizard(const char *type, int place, const QString &name)
    {
        const bool mouse = QTest::currentDataTag() != QByteArray("keyboard");
        const Operator person(mouse);
        activateWindow(&m_client->window());
        list()->setFocus();
        pressKey(Qt::Key_Insert);
        m_wizard = m_client->window().findChild<QWizard *>();
        if (!m_wizard || !QTest::qWaitFor([this] { return QApplication::activeWindow() == m_wizard; }))
            qFatal("The wizard does not open");
        if (mouse)
            person.press(type);
        for (int i = 0; !mouse && i < place; ++i)
            pressKey(Qt::Key_Down);
        person.continueWizard();
        person.enterText("leScheduleName", name);
        return person;
    }

    static void fillCell(const Operator &person, int row, int column, const QString &digits)
    {
        person.openCell("twSchedule", row, column);
        QTest::keyClicks(focusWidget(), digits);
        pressKey(Qt::Key_Return);
    }

    /// Leaves the last page and returns the stored schedule.
    SCHEDULE_DATA finish(const Operator &person, const QString &name)
    {
        leaveWizard(person, name);
        const auto schedules = LocalStorage::instance()->schedules();
        const auto stored = std::find_if(schedules.cbegin(), schedules.cend(),
                                         [&name](const auto &schedule) { return schedule.name == name; });
        return stored != schedules.cend() && stored->state == ScheduleStateActive ? *stored : SCHEDULE_DATA();
    }

    void leaveWizard(const Operator &person, const QString &name)
    {
        person.continueWizard();
        QTRY_COMPARE(person.widget<QLabel>("messageLabel")->text(), "Создание графика успешно завершено!");
        person.continueWizard();
        QTRY_VERIFY(!m_wizard);
        const auto selectedName = [this] {
            const auto rows = list()->selectionModel()->selectedRows(1);
            return rows.size() == 1 ? rows.first().data().toString() : QString();
        };
        QTRY_COMPARE(selectedName(), name);
    }

    /// Opens the editor on the selected schedule, runs the checks and cancels it.
    void checkInEditor(const Operator &person, const QString &name, const std::function<void()> &check)
    {
        const auto checkAll = [&](QDialog &) {
            QCOMPARE(person.widget<QLineEdit>("leScheduleName")->text(), name);
            check();
        };
        m_client->edit(person, checkAll, list()->currentIndex().row());
        QVERIFY(!QApplication::activeModalWidget());
    }

    [[nodiscard]] QTableView *list() const { return m_client->table(); }

    std::unique_ptr<ClientFixture> m_client;
    QPointer<QWizard> m_wizard;
};

QTEST_MAIN(TestCreationJourney)
#include "tst_creationjourney.moc"
