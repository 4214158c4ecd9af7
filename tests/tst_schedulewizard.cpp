#include "calendarwizardpage.h"
#include "fixedwizardpage.h"
#include "freewizardpage.h"
#include "hands.h"
#include "sampleguide.h"
#include "samplerecords.h"
#include "schedulefactory.h"
#include "schedulenamewidget.h"
#include "schedulewizard.h"
#include "shiftwizardpage.h"
#include "testcolumns.h"
#include "typewizardpage.h"
#include "wizardpageids.h"

#include <QAbstractButton>
#include <QDateTimeEdit>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>

using namespace orvex;
using namespace support;

namespace {

/// Days and shifts of a new schedule, as \c scheduleText without the name.
QString textOf(const SCHEDULE_DATA &schedule)
{
    const auto isNumbered = [](const auto &day) { return day.shiftId != -1; };
    if (std::any_of(schedule.days.cbegin(), schedule.days.cend(), isNumbered))
        return "a day has the number of a shift";
    return scheduleText(schedule).mid(schedule.name.size() + 2);
}

void typeTime(QDateTimeEdit *edit, const QString &digits)
{
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_Home);
    edit->setSelectedSection(QDateTimeEdit::HourSection);
    QTest::keyClicks(edit, digits);
    QTest::keyClick(edit, Qt::Key_Tab);
}

} // namespace

class tst_ScheduleWizard : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
        QStandardPaths::setTestModeEnabled(true);
    }

    void init()
    {
        guide::fill();
        m_wizard = std::make_unique<ScheduleWizard>();
        m_wizard->setScheduleName("Новый график работы 1");
        m_wizard->show();
        QVERIFY(QTest::qWaitForWindowActive(m_wizard.get()));
    }

    void cleanup() { m_wizard.reset(); }

    void shouldRequireName()
    {
        for (const auto id : {schedulewizard::FixedPageId, schedulewizard::ShiftPageId, schedulewizard::FreePageId,
                              schedulewizard::CalendarPageId}) {
            open(id);
            // The proposed name is selected.
            auto *name = find<QLineEdit>("leScheduleName");
            QCOMPARE(m_wizard->focusWidget(), name);
            QTest::keyClick(name, Qt::Key_Delete);
            QVERIFY(name->text().isEmpty());
            QVERIFY(!m_wizard->button(QWizard::NextButton)->isEnabled());
            QTest::keyClick(name, Qt::Key_Return);
            QCOMPARE(m_wizard->currentId(), int(id));
            QTest::keyClicks(name, "A");
            QVERIFY(m_wizard->button(QWizard::NextButton)->isEnabled());
            click(QWizard::BackButton);
        }
    }

    void shouldKeepValuesAfterGoingBack()
    {
        open(schedulewizard::FixedPageId);
        clickCheck("cbSubLastHour");
        click(QWizard::BackButton);
        open(schedulewizard::ShiftPageId);
        QTest::keyClick(find<QSpinBox>("sbPeriod"), Qt::Key_Up);
        click(QWizard::BackButton);
        open(schedulewizard::FixedPageId);
        QVERIFY(m_wizard->fixedPage()->isSubLastHour());
        QCOMPARE(m_wizard->shiftPage()->shifts().size(), 2);
    }

    void shouldBuildFixedSchedule_data()
    {
        addColumns<QStringList, bool, bool, QString, QString>({"times", "hasBreak", "shortened", "worked", "text"});
        const auto row = [](const char *name, const QString &times, bool hasBreak, bool shortened, const char *worked,
                            const char *text) {
            QTest::newRow(name) << times.split(' ', Qt::SkipEmptyParts) << hasBreak << shortened << worked << text;
        };
        row("defaults", "", true, false, "1111100", "0 0 0 0 0 - - | 8-12 13-17");
        row("no break", "", false, false, "1111100", "0 0 0 0 0 - - | 8-17");
        row("shortened Friday", "", true, true, "1111100", "0 0 0 0 1 - - | 8-12 13-17 | 8-12 13-16");
        row("shortened Sunday", "", true, true, "1111111", "0 0 0 0 0 0 1 | 8-12 13-17 | 8-12 13-16");
        row("shortened, one day", "", false, true, "0010000", "- - 1 - - - - | 8-17 | 8-16");
        row("shortened, no day", "", true, true, "0000000", "- - - - - - - | 8-12 13-17 | 8-12 13-16");
        row("night", "2200 0600", false, false, "1010101", "0 - 0 - 0 - 0 | 22-6");
        row("break outside the shift", "0900 1030 1800 1900", true, false, "1000000", "0 - - - - - - | 9-18 19-10.5");
        row("shorter than an hour", "0900 0930", false, true, "1000000", "1 - - - - - - | 9-9.5 | 9-8.5");
    }

    void shouldBuildFixedSchedule()
    {
        QFETCH(QStringList, times);
        QFETCH(bool, hasBreak);
        QFETCH(bool, shortened);
        QFETCH(QString, worked);
        open(schedulewizard::FixedPageId);
        const std::array<const char *, 4> edits{"deShiftBeg", "deShiftEnd", "deBreakBeg", "deBreakEnd"};
        for (int i = 0; i < times.size(); ++i)
            typeTime(find<QDateTimeEdit>(edits.at(std::size_t(i))), times.at(i));
        if (!hasBreak)
            find<QGroupBox>("gbBreak")->setChecked(false);
        if (shortened)
            clickCheck("cbSubLastHour");
        auto *list = find<QListWidget>("lwDays");
        list->setFocus();
        for (int day = 0; day < worked.size(); ++day) {
            list->setCurrentRow(day);
            if ((list->item(day)->checkState() == Qt::Checked) != (worked.at(day) == QLatin1Char('1')))
                QTest::keyClick(list, Qt::Key_Space);
        }

        const auto schedule = scheduleview::fixedSchedule(*m_wizard->fixedPage(), QDate(2026, 3, 11));
        QTEST(textOf(schedule), "text");
        QCOMPARE(schedule.startDate, QDate(2026, 3, 9));
        QCOMPARE(find<QDateTimeEdit>("deBreakBeg")->isEnabled(), hasBreak);
    }

    void shouldKeepPeriodAndRowsEqual()
    {
        open(schedulewizard::ShiftPageId);
        auto *table = find<QTableWidget>("twSchedule");
        auto *add = find<QToolButton>("tbAddShift");
        auto *remove = find<QToolButton>("tbDelShift");
        QTest::mouseClick(remove, Qt::LeftButton);
        expectDays(1);
        for (int i = 0; i < 4; ++i)
            QTest::mouseClick(add, Qt::LeftButton);
        expectDays(5);
        for (int row = 0; row < 5; ++row)
            setRow(row, {row + 1, 20});
        table->setCurrentCell(-1, -1);
        QTest::mouseClick(remove, Qt::LeftButton);
        expectDays(5);
        table->setCurrentCell(1, 2);
        QTest::mouseClick(remove, Qt::LeftButton);
        expectDays(4);

        find<QSpinBox>("sbPeriod")->setValue(2);
        find<QSpinBox>("sbPeriod")->setValue(5);
        expectDays(5);
        QCOMPARE(m_wizard->shiftPage()->shifts().at(1).begin, 3 * Hour);
        QCOMPARE(m_wizard->shiftPage()->shifts().at(2).begin, 0);

        find<QSpinBox>("sbPeriod")->setValue(99);
        QTest::mouseClick(add, Qt::LeftButton);
        expectDays(99);
    }

    void shouldApplyTypedPeriodWhenComplete()
    {
        open(schedulewizard::ShiftPageId);
        auto *period = find<QSpinBox>("sbPeriod");
        period->setValue(5);
        setRow(1, {3, 20});
        // The first digit alone must not drop rows; "Next" applies the number.
        period->setFocus();
        period->selectAll();
        QTest::keyClicks(period, "19");
        QTest::keyClick(period, Qt::Key_Backspace);
        QTest::keyClicks(period, "2");
        QVERIFY(m_wizard->currentPage()->validatePage());
        expectDays(12);
        QCOMPARE(m_wizard->shiftPage()->shifts().at(1).begin, 3 * Hour);
        // Return applies the number and does not leave the page.
        period->selectAll();
        QTest::keyClicks(period, "31");
        QTest::keyClick(period, Qt::Key_Return);
        expectDays(31);
        QCOMPARE(m_wizard->currentId(), int(schedulewizard::ShiftPageId));
    }

    void shouldDisableTimesOfDayOff()
    {
        open(schedulewizard::ShiftPageId);
        setRow(0, {8, 17, 12, 13});
        auto *table = find<QTableWidget>("twSchedule");
        const auto editableColumns = [table] {
            QList<int> columns;
            for (int column = 0; column < table->columnCount(); ++column) {
                if (table->item(0, column)->flags().testFlag(Qt::ItemIsEnabled))
                    columns.append(column);
            }
            return columns;
        };
        clickCell(table, table->model()->index(0, 4));
        QVERIFY(m_wizard->shiftPage()->shifts().first().dayOff);
        QCOMPARE(editableColumns(), QList<int>{4});
        clickCell(table, table->model()->index(0, 4));
        QCOMPARE(editableColumns(), (QList<int>{0, 1, 2, 3, 4}));
        QCOMPARE(textOf(scheduleview::shiftSchedule(*m_wizard->shiftPage())), "0 | 8-12 13-17");
    }

    void shouldCountCycleFromDateOrPerEmployee()
    {
        open(schedulewizard::ShiftPageId);
        auto *date = find<QDateEdit>("deDateStart");
        QCOMPARE(m_wizard->shiftPage()->dateStart(), QDate::currentDate());
        date->setDate(QDate(2024, 2, 29));
        QCOMPARE(scheduleview::shiftSchedule(*m_wizard->shiftPage()).startDate, QDate(2024, 2, 29));
        clickCheck("rbEmployee");
        QVERIFY(!date->isEnabled());
        QVERIFY(scheduleview::shiftSchedule(*m_wizard->shiftPage()).startDate.isNull());
        clickCheck("rbCalendar");
        QVERIFY(date->isEnabled());
        QCOMPARE(m_wizard->shiftPage()->dateStart(), QDate(2024, 2, 29));
    }

    void shouldBuildShiftSchedule_data()
    {
        using Rows = QList<QList<int>>; // hours of a day; none for a day off
        addColumns<Rows, QString>({"rows", "text"});
        const auto row = [](const char *name, const Rows &rows, const char *text) {
            QTest::newRow(name) << rows << text;
        };
        row("two by two", {{8, 20}, {8, 20}, {}, {}}, "0 0 - - | 8-20");
        row("days that differ in the break", {{8, 20, 12, 13}, {8, 20, 13, 14}}, "0 1 | 8-12 13-20 | 8-13 14-20");
        row("break of no length", {{8, 20, 12, 12}, {8, 20}}, "0 0 | 8-20");
        row("shifts in the order of first use", {{20, 8}, {8, 20}, {}, {20, 8}, {8, 20}}, "0 1 - 0 1 | 20-8 | 8-20");
        row("shift of no length", {{0, 0, 0, 0}}, "0 | 0-0");
        row("days off only", {{}, {}}, "- -");
    }

    void shouldBuildShiftSchedule()
    {
        QFETCH(QList<QList<int>>, rows);
        open(schedulewizard::ShiftPageId);
        find<QSpinBox>("sbPeriod")->setValue(rows.size());
        for (int i = 0; i < rows.size(); ++i)
            setRow(i, rows.at(i), rows.at(i).isEmpty());
        const auto schedule = scheduleview::shiftSchedule(*m_wizard->shiftPage());
        QCOMPARE(schedule.type, ScheduleShift);
        QCOMPARE(schedule.useHolidays, 1);
        QTEST(textOf(schedule), "text");
    }

    void shouldProposeNorm_data()
    {
        addColumns<QTime, QTime, int, int>({"start", "finish", "breakMinutes", "norm"});
        const int untouched = 5 * Hour;
        QTest::newRow("a day with a break") << QTime(9, 0) << QTime(18, 0) << 60 << 8 * Hour;
        QTest::newRow("no break") << QTime(9, 0) << QTime(18, 30) << -1 << 9 * Hour + 1800;
        QTest::newRow("break longer than the day") << QTime(9, 0) << QTime(10, 0) << 90 << 0;
        QTest::newRow("over midnight") << QTime(22, 0) << QTime(6, 0) << -1 << untouched;
        QTest::newRow("start equals finish") << QTime(9, 0) << QTime(9, 0) << -1 << untouched;
    }

    void shouldProposeNorm()
    {
        QFETCH(QTime, start);
        QFETCH(QTime, finish);
        QFETCH(int, breakMinutes);
        QFETCH(int, norm);
        open(schedulewizard::FreePageId);
        // The start is used although its check box is off.
        clickCheck("cbFreeUseFinish");
        if (breakMinutes >= 0) {
            clickCheck("cbFreeUseBreak");
            find<QSpinBox>("freeBreakEdit")->setValue(breakMinutes);
        }
        find<QSpinBox>("freeNormHEdit")->setValue(5);
        find<QDateTimeEdit>("freeStartEdit")->setTime(start);
        find<QDateTimeEdit>("freeFinishEdit")->setTime(finish);
        QCOMPARE(find<QSpinBox>("freeNormHEdit")->value(), 5);
        QCOMPARE(m_wizard->freePage()->freeStart(), 0);
        QCOMPARE(m_wizard->freePage()->freeNorm(), 0);
        clickCheck("cbFreeUseNorm");
        QCOMPARE(m_wizard->freePage()->freeNorm(), norm);
    }

    void shouldUpdateUsedNorm()
    {
        open(schedulewizard::FreePageId);
        auto *norm = find<QSpinBox>("freeNormHEdit");
        find<QDateTimeEdit>("freeFinishEdit")->setTime(QTime(8, 0));
        clickCheck("cbFreeUseNorm");
        QCOMPARE(norm->value(), 0);
        clickCheck("cbFreeUseFinish");
        find<QDateTimeEdit>("freeStartEdit")->setTime(QTime(1, 0));
        QCOMPARE(norm->value(), 7);
        norm->setValue(3);
        clickCheck("cbFreeUseBreak");
        QCOMPARE(norm->value(), 3);
        find<QSpinBox>("freeBreakEdit")->setValue(60);
        QCOMPARE(norm->value(), 6);
    }

    void shouldStoreColour()
    {
        open(schedulewizard::FreePageId);
        auto *head = find<ScheduleNameWidget>("nameWidget");
        head->setColor(QColor(Qt::red));
        QCOMPARE(scheduleview::freeSchedule(*m_wizard->freePage(), {}).color, "#ff0000");
        head->setColor(QColor());
        QVERIFY(scheduleview::freeSchedule(*m_wizard->freePage(), {}).color.isEmpty());
    }

private:
    template <class T> T *find(const char *name) { return findWidget<T>(*m_wizard->currentPage(), name); }
    void click(QWizard::WizardButton button) { clickButton(*m_wizard, button); }
    void clickCheck(const char *name) { clickWidget(find<QAbstractButton>(name)); }
    void open(schedulewizard::PageId id)
    {
        static const QHash<int, const char *> buttons{{schedulewizard::FixedPageId, "rbFixed"},
                                                      {schedulewizard::ShiftPageId, "rbShift"},
                                                      {schedulewizard::FreePageId, "rbUnregul"},
                                                      {schedulewizard::CalendarPageId, "rbCalendar"}};
        clickCheck(buttons.value(id));
        click(QWizard::NextButton);
        QCOMPARE(m_wizard->currentId(), int(id));
    }

    void expectDays(int days)
    {
        QCOMPARE(find<QSpinBox>("sbPeriod")->value(), days);
        QCOMPARE(find<QTableWidget>("twSchedule")->rowCount(), days);
        QCOMPARE(m_wizard->shiftPage()->shifts().size(), days);
    }

    void setRow(int row, const QList<int> &hours, bool dayOff = false)
    {
        auto *table = find<QTableWidget>("twSchedule");
        for (int column = 0; column < hours.size(); ++column)
            table->item(row, column)->setData(Qt::EditRole, hours.at(column) * Hour);
        table->item(row, 4)->setData(Qt::EditRole, dayOff);
    }

    std::unique_ptr<ScheduleWizard> m_wizard;
};

QTEST_MAIN(tst_ScheduleWizard)
#include "tst_schedulewizard.moc"
