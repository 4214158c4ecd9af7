#include "calendarcells.h"
#include "clientfixture.h"
#include "dialoghandler.h"
#include "hands.h"

#include <QLabel>
#include <QMessageBox>
#include <QTabBar>
#include <QTreeView>
#include <QtTest>

using namespace support;

/// The operator finds an employee, fills a month with a repeated pattern, saves, changes three days and deletes the
/// schedule.
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
        clickTab(m_client->window().findChild<QTabBar *>("pageTabs"), 1);
    }

    void cleanup() { m_client.reset(); }

    void shouldCreateEditAndDeleteSchedule_data() { Operator::addDevices(); }
    void shouldCreateEditAndDeleteSchedule()
    {
        QFETCH(bool, mouse);
        const Operator person(mouse);
        person.trigger("actionAddPersonalSchedule", Qt::Key_Insert);
        QVERIFY(wizard());
        activateWindow(wizard());
        findEmployee(person, mouse);
        QCOMPARE(wizard()->currentId(), 1);
        const QString put = "Задать смену";
        person.chooseForDays(m_monday, 1, put, "Д День");
        person.chooseForDays(m_monday.addDays(1), 1, put, "Н Ночь");
        person.chooseForDays(m_monday, 4, "Применить периодичность", "До конца месяца");
        person.continueWizard();
        QTRY_VERIFY(wizard()->button(QWizard::FinishButton)->isEnabled());
        QCOMPARE(person.widget<QLabel>("messageLabel")->text(), "Создание графика успешно завершено!");
        person.continueWizard();
        QTRY_VERIFY(!wizard());
        checkCreated();
        takeThreeDaysOff(person);

        activateWindow(&m_client->window());
        const DialogHandler handler(QDialogButtonBox::NoButton, [&](QDialog &question) {
            person.press(dynamic_cast<QMessageBox &>(question).button(QMessageBox::Ok));
        });
        person.trigger("actionDelPersonalSchedule", Qt::Key_Delete);
        QTRY_COMPARE(table()->model()->rowCount(), 0);
    }

private:
    [[nodiscard]] QTableView *table() const { return m_client->table(); }
    [[nodiscard]] QWizard *wizard() const { return m_client->window().findChild<QWizard *>(); }

    void findEmployee(const Operator &person, bool mouse)
    {
        if (mouse)
            person.focus(person.widget("searchEdit"));
        typeText(focusWidget(), "петр");
        if (mouse) {
            auto *tree = person.widget<QTreeView>("employeeView");
            clickCell(tree, findRow(*tree->model(), m_client->store.otherEmployee));
        } else {
            pressKey(Qt::Key_Down);
        }
        person.continueWizard();
    }

    void checkCreated()
    {
        QTRY_COMPARE(table()->selectionModel()->selectedRows().size(), 1);
        const QModelIndex row = table()->currentIndex();
        const QString employee = "Петрова Анна";
        const QString month = QLocale().standaloneMonthName(m_month.month(), QLocale::LongFormat);
        QCOMPARE(row.siblingAtColumn(1).data().toString(),
                 QStringLiteral("%1 %2 %3").arg(employee, month).arg(m_month.year()));
        QCOMPARE(row.siblingAtColumn(3).data().toString(), employee);
        const auto shifts = storedShifts();
        for (QDate date = m_month; date.month() == m_month.month(); date = date.addDays(1))
            QCOMPARE(shifts.value(date), patternShift(date));
    }

    void takeThreeDaysOff(const Operator &person)
    {
        activateWindow(&m_client->window());
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(table()));
        m_client->edit(person, [&](QDialog &) {
            const auto &days = *person.widget<QTableView>("calendarView")->model();
            QTRY_COMPARE(shiftOn(days, m_monday), m_client->store.dayShift);
            person.chooseForDays(m_monday, 3, "Задать смену", "Выходной");
            person.acceptDialog();
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
            storeRequest(request::GetScheduleCalendar, ids, m_month, m_month.addMonths(1).addDays(-1)));
        QList<qint32> read;
        QDate first;
        QDate last;
        QHash<qint32, QList<orvex::SCHEDULE_CALENDAR_DAY>> days;
        return readPayload(reply.payload(), read, first, last, days) ? shiftsByDate(days.value(ids.first()))
                                                                     : QMap<QDate, quint32>();
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
