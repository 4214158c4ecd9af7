#include "calendarcells.h"
#include "calendarwizardpage.h"
#include "clientcache.h"
#include "finishwizardpage.h"
#include "hands.h"
#include "requests.h"
#include "sampleguide.h"
#include "samplerecords.h"
#include "schedulewizard.h"
#include "testcolumns.h"
#include "tqdatastream.h"
#include "viewfixture.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableView>
#include <QtTest>

using namespace orvex;
using namespace support;

namespace {

const QString Waiting = "Выполняется создание графика работ...";
const QString Success = "Создание графика успешно завершено!";
const QString Failure = "Во время создания графика работ произошла ошибка!";
const QString AddError = "Ошибка добавления графика работ";

} // namespace

class TestScheduleCreation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init()
    {
        clearCache();
        guide::fill();
        storeSchedules({schedule(1, "Бухгалтерия"), schedule(2, "Новый график работы 4")});
        m_fixture = std::make_unique<ViewFixture>();
    }

    void cleanup() { m_fixture.reset(); }

    void shouldProposeNextName_data()
    {
        addColumns<QStringList, QString>({"names", "proposal"});
        const QString base = "Новый график работы";
        QTest::newRow("none") << QStringList{"Архив"} << base + " 1";
        QTest::newRow("without a number") << QStringList{base} << base + " 1";
        QTest::newRow("with gaps") << QStringList{base + " 2", base + " 7"} << base + " 8";
        QTest::newRow("blanks around") << QStringList{base + "   12  "} << base + " 13";
        QTest::newRow("text after the number") << QStringList{base + " 3 склад", base + " 2"} << base + " 3";
        QTest::newRow("in the middle of a name") << QStringList{"Мой " + base + " 5"} << base + " 1";
        QTest::newRow("other case") << QStringList{base.toUpper() + " 5"} << base + " 1";
        QTest::newRow("below zero") << QStringList{base + " -4"} << base + " 1";
        QTest::newRow("the largest number") << QStringList{base + " 2147483647"} << base + " 2147483648";
    }

    void shouldProposeNextName()
    {
        QFETCH(QStringList, names);
        storeSchedules({}, {1, 2});
        QList<SCHEDULE_DATA> records;
        for (const QString &name : names)
            records.append(schedule(10 + records.size(), name));
        storeSchedules(records);
        QTEST(m_fixture->view->newScheduleName(), "proposal");
    }

    void shouldSendRecordOfType_data()
    {
        addColumns<QString, ScheduleMode, QDate, int>({"button", "type", "startDate", "days"});
        const QDate today = QDate::currentDate();
        QTest::newRow("fixed") << "rbFixed" << ScheduleFixed << today.addDays(1 - today.dayOfWeek()) << 7;
        QTest::newRow("shift") << "rbShift" << ScheduleShift << today << 1;
        QTest::newRow("free, with the date of the shift page") << "rbUnregul" << ScheduleFree << today << 0;
        QTest::newRow("calendar") << "rbCalendar" << ScheduleCalendar << QDate(today.year(), 1, 1) << 0;
    }

    void shouldSendRecordOfType()
    {
        QFETCH(QString, button);
        const QString name = "\"<b>Смена</b>\" 🙂'); --" + QString(10000, QLatin1Char('x'));
        auto *wizard = openWizard();
        QCOMPARE(wizard->windowModality(), Qt::WindowModal);
        fill(wizard, button.toLatin1().constData());
        auto *nameEdit = findWidget<QLineEdit>(*wizard->currentPage(), "leScheduleName");
        QCOMPARE(nameEdit->text(), "Новый график работы 5");
        nameEdit->setText(name);
        next(wizard);
        QCOMPARE(m_fixture->sent.size(), 1);
        QCOMPARE(m_fixture->sent.first().name(), request::AddSchedule);
        const auto record = ViewFixture::recordOf(m_fixture->sent.first());
        QTEST(record.type, "type");
        QTEST(record.startDate, "startDate");
        QCOMPARE(record.useHolidays, record.type == ScheduleCalendar ? 0 : 1);
        QTEST(record.days.size(), "days");
        QCOMPARE(record.name, name);
        QCOMPARE(shown(wizard), Waiting);
    }

    void shouldReportFailedRequest_data()
    {
        addColumns<QString, int, QString>({"button", "result", "log"});
        QTest::newRow("fixed") << "rbFixed" << int(ResultNoRights) << "create schedule error 4";
        QTest::newRow("calendar") << "rbCalendar" << int(ResultStorageError) << "create schedule error 7";
        QTest::newRow("no identifier") << "rbCalendar" << int(ResultSuccess) << "broken create schedule reply";
    }

    void shouldReportFailedRequest()
    {
        QFETCH(QString, button);
        QFETCH(int, result);
        QFETCH(QString, log);
        auto *wizard = openWizard();
        fill(wizard, button.toLatin1().constData());
        next(wizard);
        expectWarning(log);
        m_fixture->reply(m_fixture->sent.first(), result,
                         writePayload(QString("Уже есть."), QString("Выберите другое.")));
        QTRY_COMPARE(shown(wizard), AddError);
        if (result != ResultSuccess)
            QCOMPARE(shown(wizard, "detailsLabel"), "Уже есть. Выберите другое.");
        QVERIFY(wizard->button(QWizard::FinishButton)->isEnabled());
        QCOMPARE(m_fixture->popups, QStringList{AddError});
        QCOMPARE(m_fixture->sent.size(), 1);
    }

    void shouldStoreDaysOfAllYears()
    {
        auto *wizard = openWizard();
        fill(wizard, "rbCalendar");
        markFirstDay(wizard, 2027);
        markFirstDay(wizard, 2028);
        next(wizard);
        m_fixture->reply(m_fixture->sent.first(), ResultSuccess, writePayload(qint32(31)));
        QCOMPARE(m_fixture->sent.size(), 2);
        const QList<SCHEDULE_CALENDAR_DAY> days{calendarDay({2027, 1, 1}, guide::Day),
                                                calendarDay({2028, 1, 1}, guide::Day)};
        QCOMPARE(m_fixture->sent.last().payload(),
                 writePayload(qint32(31), QDate(2028, 1, 1), QDate(2028, 12, 31), days));

        QCoreApplication::processEvents();
        QCOMPARE(shown(wizard), Waiting);
        m_fixture->reply(m_fixture->sent.last(), ResultSuccess);
        QTRY_COMPARE(shown(wizard), Success);
        QVERIFY(m_fixture->popups.isEmpty());
    }

    void shouldReportMissingDays()
    {
        auto *wizard = openWizard();
        fill(wizard, "rbCalendar", "Год <b>" + QString(10000, QLatin1Char('x')));
        markFirstDay(wizard, 2028);
        next(wizard);
        const auto *finish = wizard->button(QWizard::FinishButton);
        QVERIFY(finish->isVisible() && !finish->isEnabled());
        QVERIFY(!wizard->button(QWizard::BackButton)->isVisible());
        QVERIFY(!wizard->button(QWizard::CancelButton)->isVisible());
        m_fixture->reply(m_fixture->sent.first(), ResultSuccess, writePayload(qint32(32)));
        expectWarning("create schedule days error 7");
        m_fixture->reply(m_fixture->sent.last(), ResultStorageError);
        QTRY_COMPARE(shown(wizard), Failure);
        for (const char *name : {"messageLabel", "detailsLabel"}) {
            QVERIFY(findWidget<QLabel>(*wizard->finishPage(), name)->isVisible());
            QCOMPARE(findWidget<QLabel>(*wizard->finishPage(), name)->textFormat(), Qt::PlainText);
        }
        const QString details = shown(wizard, "detailsLabel");
        QVERIFY(details.startsWith("График работ «Год <b>xxx"));
        QVERIFY(details.contains("дни не сохранены"));
        QVERIFY(details.size() < 250);
        QCOMPARE(m_fixture->popups, QStringList{AddError});
        clickButton(*wizard, QWizard::FinishButton);
        QVERIFY(!wizard->isVisible());
    }

    void shouldReportOutcomeOnlyToItsWizard()
    {
        QPointer<ScheduleWizard> wizard = openWizard();
        fill(wizard, "rbCalendar", "Год");
        markFirstDay(wizard, 2028);
        next(wizard);
        wizard->close();
        QTRY_VERIFY(!wizard);

        // The outcome must not reach another open wizard.
        QSignalSpy finished(m_fixture->view.get(), &ScheduleView::createScheduleFinished);
        auto *other = openWizard();
        fill(other, "rbFixed");
        next(other);
        QCOMPARE(m_fixture->sent.size(), 2);
        m_fixture->reply(m_fixture->sent.at(0), ResultSuccess, writePayload(qint32(33)));
        QCOMPARE(m_fixture->sent.size(), 3);
        expectWarning("create schedule days error 6");
        m_fixture->reply(m_fixture->sent.at(2), ResultNoConnection);
        QCOMPARE(finished.size(), 1);
        QCOMPARE(finished.first().first().toBool(), false);
        QCOMPARE(m_fixture->popups.size(), 2);
        QCOMPARE(m_fixture->popups.first(), AddError);
        QVERIFY(m_fixture->popups.last().startsWith("График работ «Год» создан, но его дни не сохранены"));
        QCoreApplication::processEvents();
        QCOMPARE(shown(other), Waiting);
        m_fixture->reply(m_fixture->sent.at(1), ResultSuccess, writePayload(qint32(34)));
        QTRY_COMPARE(shown(other), Success);
    }

private:
    [[nodiscard]] QTableView *table() const { return m_fixture->table(); }

    [[nodiscard]] ScheduleWizard *openWizard()
    {
        m_fixture->action("actionAddSchedule")->trigger();
        const auto wizards = m_fixture->view->findChildren<ScheduleWizard *>();
        return wizards.isEmpty() ? nullptr : wizards.last();
    }

    /// Opens the page of a type; the next click on "Next" requests the schedule.
    void fill(ScheduleWizard *wizard, const char *type, const QString &name = {})
    {
        clickWidget(wizard->findChild<QRadioButton *>(type));
        next(wizard);
        if (!name.isEmpty())
            wizard->currentPage()->findChild<QLineEdit *>("leScheduleName")->setText(name);
    }

    [[nodiscard]] static QString shown(const ScheduleWizard *wizard, const char *label = "messageLabel")
    {
        return wizard->finishPage()->findChild<QLabel *>(label)->text();
    }

    static void markFirstDay(ScheduleWizard *wizard, int year)
    {
        wizard->calendarPage()->findChild<QSpinBox *>("sbYear")->setValue(year);
        auto *model = wizard->calendarPage()->findChild<QTableView *>("calendarView")->model();
        QVERIFY(putShift(model, {year, 1, 1}, guide::Day));
    }

    static void next(ScheduleWizard *wizard) { clickButton(*wizard, QWizard::NextButton); }

    std::unique_ptr<ViewFixture> m_fixture;
};

QTEST_MAIN(TestScheduleCreation)
#include "tst_schedulecreation.moc"
