#include "calendarmonthwidget.h"
#include "calendarwidget.h"
#include "clientcache.h"
#include "datanames.h"
#include "dialoghandler.h"
#include "finishwizardpage.h"
#include "hands.h"
#include "personalcalendarwizardspage.h"
#include "personalschedulewizard.h"
#include "requests.h"
#include "sampleguide.h"
#include "sampleobjects.h"
#include "sampleorganisation.h"
#include "samplerecords.h"
#include "testcolumns.h"
#include "tqdatastream.h"
#include "viewfixture.h"

#include <QLabel>
#include <QTableView>
#include <QTextEdit>
#include <QTreeView>
#include <QtTest>

#include <memory>

using namespace orvex;
using namespace support;

namespace {

using Days = QList<SCHEDULE_CALENDAR_DAY>;

const QDate August(2026, 8, 1);

} // namespace

/// Personal schedules on the page: the requests and their replies.
class TestPersonalView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia)); }

    void init()
    {
        organisation::fill();
        m_fixture = std::make_unique<ViewFixture>();
        m_fixture->view->onTabActivated(1);
    }

    void cleanup() { m_fixture.reset(); }

    void shouldCreateScheduleOfWizard()
    {
        organisation::storeEmployees({employee(organisation::Markup, "<b>Сидоров</b> %1 %3", {}, organisation::Plant)});
        openWizard(organisation::Markup, August);
        auto *calendar = wizard()->findChild<CalendarMonthWidget *>();
        const Days days{calendarDay(August, guide::Day), calendarDay(August.addDays(30), guide::Night)};
        calendar->setDays(days);
        next();
        QVERIFY(!isFinished());
        const auto added = m_fixture->requests(request::AddSchedule);
        QCOMPARE(added.size(), 1);
        SCHEDULE_DATA expected;
        expected.name = "<b>Сидоров</b> %1 %3 август 2026";
        expected.type = SchedulePersonal;
        expected.startDate = August;
        expected.workerId = organisation::Markup;
        expected.color = wizard()->calendarPage()->color();
        QCOMPARE(ViewFixture::recordOf(added.first()), expected);

        m_fixture->reply(added.first(), 1, writePayload(qint32(60)));
        const auto stored = m_fixture->requests(request::UpdateScheduleCalendar);
        QCOMPARE(stored.size(), 1);
        QCOMPARE(stored.first().payload(), writePayload(qint32(60), August, QDate(2026, 8, 31), days));
        m_fixture->reply(stored.first(), 1);
        QTRY_VERIFY(isFinished());
        QCOMPARE(outcome(), "Создание графика успешно завершено!");
    }

    void shouldRefuseSecondScheduleOfMonth_data()
    {
        addColumns<quint32, QDate, ScheduleMode, bool>({"employee", "start", "type", "refused"});
        QTest::newRow("the same month") << organisation::Petrov << August << SchedulePersonal << true;
        QTest::newRow("another employee") << organisation::Ivanova << August << SchedulePersonal << false;
        QTest::newRow("another month") << organisation::Petrov << August.addMonths(1) << SchedulePersonal << false;
        QTest::newRow("another day of the month")
            << organisation::Petrov << August.addDays(1) << SchedulePersonal << false;
        QTest::newRow("another type") << organisation::Petrov << August << ScheduleCalendar << false;
    }

    void shouldRefuseSecondScheduleOfMonth()
    {
        QFETCH(QDate, start);
        QFETCH(ScheduleMode, type);
        QFETCH(bool, refused);
        auto known = personalSchedule(50, "Прежний", organisation::Petrov, start);
        known.type = type;
        QFETCH(quint32, employee);
        known.workerId = employee;
        storeSchedules({known});
        openWizard(organisation::Petrov, August);
        if (refused)
            QTest::ignoreMessage(QtWarningMsg, "found double for personal schedule 21 QDate(\"2026-08-01\")");
        next();
        QCOMPARE(m_fixture->requests(request::AddSchedule).size(), refused ? 0 : 1);
        if (!refused)
            return;
        QTRY_VERIFY(isFinished());
        QCOMPARE(outcome(), "Индивидуальный график для Петров Пётр за августа 2026 уже существует");
        QVERIFY(m_fixture->popups.isEmpty());
    }

    void shouldNotCreateScheduleForRemovedEmployee()
    {
        openWizard(organisation::Petrov, August);
        // The tree still has the employee: the feed removes the two entries one after the other.
        storeEmployees({}, {organisation::Petrov});
        QTest::ignoreMessage(QtWarningMsg, "employee of personal schedule not found 21");
        emit wizard()->createPersonalSchedule();
        QTRY_COMPARE(outcome(), "Сотрудник удалён, индивидуальный график не создан");
        QVERIFY(m_fixture->requests(request::AddSchedule).isEmpty());
    }

    void shouldRequestPhotoForWizard()
    {
        openWizard(organisation::Petrov, August);
        QTRY_COMPARE(m_fixture->requests(request::GetBlobDataChange).size(), 1);
        const auto asked = m_fixture->requests(request::GetBlobDataChange).first();
        const QList<_BLOB_DATA_RESQUEST> photo{{organisation::Petrov, db::param::PHOTO, {}}};
        QCOMPARE(asked.payload(), writePayload(photo));
    }

    void shouldIgnoreDaysOfOtherYearsInEditor_data()
    {
        addColumns<int, int>({"id", "year"});
        QTest::newRow("month") << 50 << 2026;
        QTest::newRow("year") << 51 << QDate::currentDate().year();
    }

    void shouldIgnoreDaysOfOtherYearsInEditor()
    {
        QFETCH(int, id);
        QFETCH(int, year);
        storeSchedules(
            {personalSchedule(50, "Месяц", organisation::Petrov, August), schedule(51, "Год", ScheduleCalendar)});
        const QDate date(year, 8, 3);
        const DialogHandler handler(QDialogButtonBox::Cancel, [&](QDialog &dialog) {
            QTRY_COMPARE(daysRequests().size(), 1);
            QTest::ignoreMessage(QtWarningMsg, "read calendar days error 6");
            m_fixture->reply(daysRequests().first(), ResultNoConnection);
            m_fixture->view->sendGetCalandarDays(id, year + 1);
            m_fixture->reply(daysRequests().last(), ResultSuccess, daysReply(id, date.addYears(1)));

            reconnect();
            QCOMPARE(daysRequests().size(), 1);
            m_fixture->reply(daysRequests().first(), ResultSuccess, daysReply(id, date));
            const auto *calendar = dialog.findChild<CalendarWidget *>("calendarWidget");
            QVERIFY(calendar->isEnabled());
            QCOMPARE(calendar->days().size(), 1);
            QCOMPARE(calendar->days().first().date, date);
            reconnect();
            QVERIFY(daysRequests().isEmpty());
        });
        m_fixture->view->editSchedule(id);
        QVERIFY(handler.hasOpened());
    }

    void shouldIgnoreDaysOfOtherYearsInPanel()
    {
        storeSchedules({personalSchedule(50, "Август", organisation::Petrov, August)});
        table()->selectRow(0);
        QTRY_COMPARE(daysRequests().size(), 1);
        const auto *panel = m_fixture->view->findChild<QTextEdit *>();
        const QString empty = panel->toPlainText();
        m_fixture->view->sendGetCalandarDays(50, 2027);
        m_fixture->reply(daysRequests().last(), ResultSuccess, daysReply(50, August.addYears(1)));
        QCOMPARE(panel->toPlainText(), empty);
        m_fixture->reply(daysRequests().first(), ResultSuccess, daysReply(50, August));
        QVERIFY(panel->toPlainText() != empty);
    }

private:
    [[nodiscard]] QTableView *table() const { return m_fixture->table(); }
    [[nodiscard]] PersonalScheduleWizard *wizard() const
    {
        return m_fixture->view->findChild<PersonalScheduleWizard *>();
    }
    [[nodiscard]] QList<Command> daysRequests() const { return m_fixture->requests(request::GetScheduleCalendar); }
    /// The reply for the year of a date with this one day.
    [[nodiscard]] static QByteArray daysReply(int id, const QDate &date)
    {
        return ViewFixture::daysReply(id, date.year(), {calendarDay(date, guide::Day)});
    }
    /// Drops the requests sent before.
    void reconnect()
    {
        m_fixture->server.setConnected(false);
        m_fixture->sent.clear();
        m_fixture->server.setConnected(true);
    }
    /// Opens the wizard on the month of the employee.
    void openWizard(quint32 employee, const QDate &month)
    {
        QTest::keyClick(table(), Qt::Key_Insert);
        QVERIFY(wizard() && wizard()->isVisible() && wizard()->isModal());
        auto *tree = wizard()->findChild<QTreeView *>("employeeView");
        tree->setCurrentIndex(findRow(*tree->model(), employee));
        next();
        wizard()->findChild<CalendarMonthWidget *>()->setDate(month);
    }

    void next() { clickButton(*wizard(), QWizard::NextButton); }
    [[nodiscard]] QString outcome() const
    {
        return wizard()->finishPage()->findChild<QLabel *>("messageLabel")->text();
    }
    [[nodiscard]] bool isFinished() const { return wizard()->button(QWizard::FinishButton)->isEnabled(); }
    std::unique_ptr<ViewFixture> m_fixture;
};

QTEST_MAIN(TestPersonalView)
#include "tst_personalview.moc"
