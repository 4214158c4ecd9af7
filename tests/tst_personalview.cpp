#include "calendarmonthwidget.h"
#include "finishwizardpage.h"
#include "organisationfixture.h"
#include "personalcalendarwizardspage.h"
#include "personalschedulewizard.h"
#include "requests.h"
#include "tqdatastream.h"
#include "viewfixture.h"

#include <QLabel>
#include <QTableView>
#include <QTreeView>
#include <QtTest>

#include <memory>

using namespace orvex;
using namespace scheduledata;

namespace {

using Days = QList<SCHEDULE_CALENDAR_DAY>;

const QDate August(2026, 8, 1);

} // namespace

/// The second tab's way with personal schedules: what it asks of the store, and what it makes of the answers.
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

    void shouldSendWhatTheWizardDescribes()
    {
        const auto worker = organisation::employee(organisation::Markup, QStringLiteral("<b>Сидоров</b> %1 %3"), {},
                                                   organisation::Plant);
        organisation::storeEmployees({worker});
        openWizard(organisation::Markup, August);
        auto *calendar = wizard()->findChild<CalendarMonthWidget *>();
        const Days days{guide::day(August, guide::Day), guide::day(August.addDays(30), guide::Night)};
        calendar->setDays(days);
        next();
        QVERIFY(!isFinished());
        const auto added = m_fixture->requests(request::AddSchedule);
        QCOMPARE(added.size(), 1);
        SCHEDULE_DATA expected;
        expected.name = QStringLiteral("<b>Сидоров</b> %1 %3 август 2026");
        expected.type = SchedulePersonal;
        expected.startDate = August;
        expected.workerId = organisation::Markup;
        expected.color = wizard()->calendarPage()->color();
        QCOMPARE(ViewFixture::recordOf(added.first()), expected);

        m_fixture->reply(added.first(), 1, writePayload(qint32(60)));
        const auto stored = m_fixture->requests(request::UpdateScheduleCalendar);
        QCOMPARE(stored.size(), 1);
        qint32 id = 0;
        QDate first;
        QDate last;
        Days sent;
        QVERIFY(readPayload(stored.first().payload(), id, first, last, sent));
        QCOMPARE(id, 60);
        QCOMPARE(first, August);
        QCOMPARE(last, QDate(2026, 8, 31));
        QCOMPARE(sent, days);
        m_fixture->reply(stored.first(), 1);
        QTRY_VERIFY(isFinished());
        QCOMPARE(outcome(), QStringLiteral("Создание графика успешно завершено!"));
    }

    void shouldRefuseOnlyADouble_data()
    {
        QTest::addColumn<quint32>("employee");
        QTest::addColumn<QDate>("start");
        QTest::addColumn<ScheduleMode>("type");
        QTest::addColumn<bool>("refused");
        QTest::newRow("the same month") << organisation::Petrov << August << SchedulePersonal << true;
        QTest::newRow("another employee") << organisation::Ivanova << August << SchedulePersonal << false;
        QTest::newRow("another month") << organisation::Petrov << August.addMonths(1) << SchedulePersonal << false;
        QTest::newRow("another day of the month")
            << organisation::Petrov << August.addDays(1) << SchedulePersonal << false;
        QTest::newRow("another type") << organisation::Petrov << August << ScheduleCalendar << false;
    }

    void shouldRefuseOnlyADouble()
    {
        QFETCH(QDate, start);
        QFETCH(ScheduleMode, type);
        QFETCH(bool, refused);
        auto known = personal(50, QStringLiteral("Прежний"), organisation::Petrov, start);
        known.type = type;
        QFETCH(quint32, employee);
        known.workerId = employee;
        store({known});
        openWizard(organisation::Petrov, August);
        if (refused)
            QTest::ignoreMessage(QtWarningMsg, "found double for personal schedule 21 QDate(\"2026-08-01\")");
        next();
        QCOMPARE(m_fixture->requests(request::AddSchedule).size(), refused ? 0 : 1);
        if (!refused)
            return;
        QTRY_VERIFY(isFinished());
        QCOMPARE(outcome(), QStringLiteral("Индивидуальный график для Петров Пётр за августа 2026 уже существует"));
        QVERIFY(m_fixture->popups.isEmpty());
    }

    void shouldNotCreateForAnEmployeeWhoIsGone()
    {
        openWizard(organisation::Petrov, August);
        // The organisation's tree still holds the employee: this notice comes between two of the feed's.
        storeWorkers({}, {organisation::Petrov});
        QTest::ignoreMessage(QtWarningMsg, "employee of personal schedule not found 21");
        emit wizard()->createPersonalSchedule();
        QTRY_COMPARE(outcome(), QStringLiteral("Сотрудник удалён, индивидуальный график не создан"));
        QVERIFY(m_fixture->requests(request::AddSchedule).isEmpty());
    }

    void shouldFetchThePhotoForTheWizard()
    {
        openWizard(organisation::Petrov, August);
        QTRY_COMPARE(m_fixture->requests(request::GetBlobDataChange).size(), 1);
        const auto asked = m_fixture->requests(request::GetBlobDataChange).first();
        QList<_BLOB_DATA_RESQUEST> blobs;
        QVERIFY(readPayload(asked.payload(), blobs));
        QCOMPARE(blobs.size(), 1);
        QCOMPARE(blobs.first().id, organisation::Petrov);
        QCOMPARE(blobs.first().name, QString(db::param::PHOTO));
    }

private:
    [[nodiscard]] QTableView *table() const { return m_fixture->table(); }
    [[nodiscard]] PersonalScheduleWizard *wizard() const
    {
        return m_fixture->view->findChild<PersonalScheduleWizard *>();
    }
    /// As far as the month of the employee.
    void openWizard(quint32 employee, const QDate &month)
    {
        QTest::keyClick(table(), Qt::Key_Insert);
        QVERIFY(wizard() && wizard()->isVisible() && wizard()->isModal());
        auto *tree = wizard()->findChild<QTreeView *>(QStringLiteral("employeeView"));
        const auto found = tree->model()->match(tree->model()->index(0, 0), Qt::DisplayRole, employee, 1,
                                                Qt::MatchExactly | Qt::MatchRecursive);
        tree->setCurrentIndex(found.value(0));
        next();
        wizard()->findChild<CalendarMonthWidget *>()->setDate(month);
    }

    void next() { QTest::mouseClick(wizard()->button(QWizard::NextButton), Qt::LeftButton); }
    [[nodiscard]] QString outcome() const
    {
        return wizard()->finishPage()->findChild<QLabel *>("messageLabel")->text();
    }
    [[nodiscard]] bool isFinished() const { return wizard()->button(QWizard::FinishButton)->isEnabled(); }
    std::unique_ptr<ViewFixture> m_fixture;
};

QTEST_MAIN(TestPersonalView)
#include "tst_personalview.moc"
