#include "calendarcells.h"
#include "hands.h"
#include "samplerecords.h"
#include "scheduleeditdialog.h"
#include "shiftdaydelegate.h"
#include "testcolumns.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QRadioButton>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTableView>
#include <QTabWidget>
#include <QtTest>

#include <limits>

using namespace orvex;
using namespace support;

namespace {

constexpr int Lowest = std::numeric_limits<int>::min();
constexpr int Highest = std::numeric_limits<int>::max();
const QString Shifts = " | 8-10 11-12 13-17 | 20-6 |"; ///< of the edited schedule

SCHEDULE_DATA scheduleOf(ScheduleMode type)
{
    auto schedule = support::schedule(5, "Охрана", type);
    schedule.version = 77;
    schedule.color = "#3daee9";
    schedule.comment = "заметка";
    schedule.startDate = QDate(2024, 2, 26);
    schedule.shifts = {{11, 0, {{1, 8 * Hour, 10 * Hour}, {2, 11 * Hour, 12 * Hour}, {3, 13 * Hour, 17 * Hour}}},
                       {12, 0, {{4, 20 * Hour, 6 * Hour}}},
                       {13, 0, {}}};
    schedule.days = {{1, 0, 11, false}, {2, 1, 12, false}, {3, 2, 13, false}, {4, 1, 12, false}, {5, -1, -1, true}};
    return schedule;
}

/// The displayed dialog and its widgets by name.
class Editor : public ScheduleEditDialog
{
public:
    explicit Editor(const SCHEDULE_DATA &schedule)
        : ScheduleEditDialog(schedule, nullptr)
    {
        show();
        activateWindow();
    }

    template <class Widget> Widget *part(const char *name) const { return findWidget<Widget>(*this, name); }

    QTableView *table(const char *name) const { return part<QTableView>(name); }
    bool isOn(const char *name) const { return part<QWidget>(name)->isEnabled(); }
    void click(const char *name) const { clickWidget(part<QAbstractButton>(name)); }
    void toggle(const char *name) const { QTest::keyClick(part<QCheckBox>(name), Qt::Key_Space); }
    QStringList enabled(const QList<const char *> &names) const
    {
        QStringList enabled;
        std::copy_if(names.cbegin(), names.cend(), std::back_inserter(enabled),
                     [this](const char *name) { return part<QWidget>(name)->isEnabled(); });
        return enabled;
    }
    QString period() const { return part<QLabel>("labelNumDay")->text().remove("Количество дней в периоде: "); }
    QString text() const { return scheduleText(schedule()); }
    /// The intervals of the first shift, the current cell and the enabled buttons.
    QString intervals() const
    {
        const auto current = table("tvTime")->currentIndex();
        return QString("%1at %2/%3 ").arg(text().section("| ", 1, 1)).arg(current.row()).arg(current.column())
            + enabled({"tbDelTime", "tbMoveUp", "tbMoveDown"}).join(' ');
    }
    int norm() const
    {
        return part<QSpinBox>("freeNormHEdit")->value() * 60 + part<QSpinBox>("freeNormMEdit")->value();
    }
    void setNorm(int minutes) const
    {
        part<QSpinBox>("freeNormHEdit")->setValue(minutes / 60);
        part<QSpinBox>("freeNormMEdit")->setValue(minutes % 60);
    }
    void setSpan(const QTime &start, const QTime &finish) const
    {
        part<QTimeEdit>("freeStartEdit")->setTime(start);
        part<QTimeEdit>("freeFinishEdit")->setTime(finish);
    }
    void clickCell(const char *name, int row, int column) const
    {
        support::clickCell(table(name), table(name)->model()->index(row, column));
    }
    void openCell(const char *name, int row, int column) const
    {
        table(name)->setCurrentIndex(table(name)->model()->index(row, column));
        QTest::keyClick(table(name), Qt::Key_F2);
    }
    QWidget *cellEditor(const char *name) const { return table(name)->indexWidget(table(name)->currentIndex()); }
    void press(QDialogButtonBox::StandardButton button) const { clickButton(*this, button); }
    void showShifts() const { part<QTabWidget>("tabWidget")->setCurrentIndex(1); }

    /// The calendar's days in the order of their dates: "2028-02-29 4/9" with shift and revision.
    QString days() const
    {
        QStringList days;
        for (const auto &day : calendarDays())
            days.append(QString("%1 %2/%3").arg(day.date.toString(Qt::ISODate)).arg(day.shiftId).arg(day.revision));
        days.sort();
        return days.join(", ");
    }
};

} // namespace

class TestScheduleEditDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void shouldOpenOnItsType_data()
    {
        addColumns<int, QString>({"type", "shown"});

        QTest::newRow("fixed") << 0 << "Фиксированный shiftPage 7";
        QTest::newRow("shift") << 1 << "Сменный shiftPage 5 tbAddDay"; // only a cycle grows
        QTest::newRow("free") << 2 << "Ненормированный freePage 0";
        QTest::newRow("calendar") << 3 << "Календарный calendarPage 0";
        QTest::newRow("unknown") << 7 << " freePage 5";
    }
    void shouldOpenOnItsType()
    {
        QFETCH(int, type);
        const Editor editor(scheduleOf(ScheduleMode(type)));
        QStringList shown{editor.part<QComboBox>("cbScheduleType")->currentText(),
                          editor.part<QStackedWidget>("stackedWidget")->currentWidget()->objectName(), editor.period()};
        shown += editor.enabled({"cbScheduleType", "tbAddDay", "tbDelDay"});

        QTEST(shown.join(' '), "shown");
        QCOMPARE(editor.part<QWidget>("dateWidget")->isVisible(), type == ScheduleShift);
        QCOMPARE(QString::number(editor.schedule().days.size()), editor.period());
        QCOMPARE(editor.focusWidget(), editor.part<QWidget>("leScheduleName"));
    }

    void shouldWriteScalarsOnAccept()
    {
        auto expected = scheduleOf(ScheduleShift);
        Editor editor(expected);
        auto *name = editor.part<QLineEdit>("leScheduleName");
        name->selectAll();
        QTest::keyClicks(name, "New name");
        editor.toggle("cbUseHolidays");
        editor.part<QDateEdit>("deStartDate")->setDate(QDate(2024, 2, 29));
        QVERIFY(editor.schedule() == expected);
        QTest::keyClick(name, Qt::Key_Return);

        QCOMPARE(editor.result(), int(QDialog::Accepted));
        expected.name = "New name";
        expected.useHolidays = 1;
        expected.startDate = QDate(2024, 2, 29);
        QVERIFY(editor.schedule() == expected);
    }

    void shouldReachFieldsByTab_data()
    {
        addColumns<ScheduleMode, QString>({"type", "fields"});

        QTest::newRow("free")
            << ScheduleFree
            << "tbColor cbFreeUseStart freeStartEdit freeStartEdit cbFreeUseFinish freeFinishEdit freeFinishEdit "
               "cbFreeUseNorm freeNormHEdit freeNormMEdit cbFreeUseBreak freeBreakEdit cbUseHolidays";
        QTest::newRow("calendar") << ScheduleCalendar
                                  << "tbColor sbYear cbShowDayOfWeek hsScale calendarView cbUseHolidays";
    }

    void shouldReachFieldsByTab()
    {
        QFETCH(ScheduleMode, type);
        QFETCH(QString, fields);
        Editor editor(scheduleOf(type));
        QVERIFY(QTest::qWaitForWindowActive(&editor));
        editor.setCalendarDays(5, {});
        for (const char *name : {"cbFreeUseStart", "cbFreeUseFinish", "cbFreeUseNorm", "cbFreeUseBreak"})
            editor.toggle(name);
        editor.part<QWidget>("leScheduleName")->setFocus();
        QStringList visited;
        while (!visited.endsWith(QStringLiteral("cbUseHolidays")) && visited.size() < 20) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            visited.append(QApplication::focusWidget()->objectName());
        }
        QCOMPARE(visited.join(QLatin1Char(' ')), fields);
    }

    void shouldOpenFixedScheduleAsWeek_data()
    {
        addColumns<int, QString, QDate, QDate>({"count", "days", "start", "monday"});

        const QDate today = QDate::currentDate();
        QTest::newRow("no days, from 29 February") << 0 << "- - - - - - -" << QDate(2024, 2, 29) << QDate(2024, 2, 26);
        QTest::newRow("three days, from a date before the field's minimum")
            << 3 << "0 1 0 - - - -" << QDate(1, 1, 3) << QDate(1753, 1, 1);
        QTest::newRow("400 days, without a date")
            << 400 << "0 1 0 1 0 1 0" << QDate() << today.addDays(1 - today.dayOfWeek());
    }
    void shouldOpenFixedScheduleAsWeek()
    {
        QFETCH(int, count);
        QFETCH(QString, days);
        QFETCH(QDate, start);
        auto schedule = scheduleOf(ScheduleFixed);
        schedule.startDate = start;
        schedule.days.clear();
        for (int i = 0; i < count; ++i)
            schedule.days.append({i + 1, i % 2, 11 + i % 2, false});
        Editor editor(schedule);
        editor.press(QDialogButtonBox::Ok);

        QCOMPARE(editor.text(), "Охрана: " + days + Shifts);
        QCOMPARE(editor.schedule().days.last().id, count >= 7 ? 7 : -1);
        QTEST(editor.schedule().startDate, "monday");
    }

    void shouldCountCyclePerEmployee()
    {
        auto schedule = scheduleOf(ScheduleShift);
        schedule.startDate = {};
        Editor editor(schedule);
        auto *date = editor.part<QDateEdit>("deStartDate");
        const auto *days = qobject_cast<ShiftDayDelegate *>(editor.table("tvMode")->itemDelegateForColumn(0));
        const QDate today = QDate::currentDate();
        QVERIFY(editor.part<QRadioButton>("rbEmployee")->isChecked());
        QVERIFY(!date->isEnabled() && days->start.isNull());
        QCOMPARE(date->date(), today);

        editor.click("rbCalendar");
        QVERIFY(date->isEnabled());
        QCOMPARE(days->start, QDateTime(today, QTime(0, 0)));
        date->setDate(QDate(2024, 2, 29));
        QCOMPARE(days->start.date(), QDate(2024, 2, 29));

        editor.click("rbEmployee");
        QVERIFY(days->start.isNull());
        editor.press(QDialogButtonBox::Ok);
        QVERIFY(editor.schedule().startDate.isNull());
    }

    void shouldAddAndRemoveDays()
    {
        const Editor editor(scheduleOf(ScheduleShift));
        editor.click("tbAddDay");
        QCOMPARE(editor.text(), "Охрана: 0 1 2 1 - -" + Shifts);
        QCOMPARE(editor.schedule().days.last().id, -1);
        QCOMPARE(editor.table("tvMode")->currentIndex().row(), 5);
        QCOMPARE(editor.period(), "6");
        QVERIFY(editor.isOn("tbDelDay"));

        editor.clickCell("tvMode", 0, 0);
        for (int left = 5; left >= 0; --left) {
            editor.click("tbDelDay");
            QCOMPARE(editor.period(), QString::number(left));
            QCOMPARE(editor.isOn("tbDelDay"), left > 0);
        }
    }

    void shouldAddAndRemoveDaysByKeys()
    {
        for (const auto type : {ScheduleShift, ScheduleFixed}) {
            const Editor editor(scheduleOf(type));
            editor.clickCell("tvMode", 2, 0);
            QList<int> sizes;
            for (const auto key : {Qt::Key_Insert, Qt::Key_Insert, Qt::Key_Delete}) {
                QTest::keyClick(editor.table("tvMode"), key);
                sizes.append(editor.schedule().days.size());
            }
            QCOMPARE(sizes, type == ScheduleShift ? QList({6, 7, 6}) : QList({7, 7, 7}));
            QCOMPARE(editor.period(), type == ScheduleShift ? "5" : "7");

            // The editor of a cell uses the keys itself.
            const QString before = editor.text();
            editor.openCell("tvMode", 0, 1);
            QVERIFY(editor.cellEditor("tvMode"));
            QTest::keyClick(editor.cellEditor("tvMode"), Qt::Key_Delete);
            QTest::keyClick(editor.cellEditor("tvMode"), Qt::Key_Insert);
            QCOMPARE(editor.text(), before);
        }
    }

    void shouldAssignShiftsToSelectedDays()
    {
        const Editor editor(scheduleOf(ScheduleShift));
        QTableView *view = editor.table("tvMode");
        for (const auto &cell : {qMakePair(1, 0), qMakePair(1, 2), qMakePair(4, 1)})
            view->selectionModel()->select(view->model()->index(cell.first, cell.second), QItemSelectionModel::Select);

        emit view->customContextMenuRequested(QPoint(5, 5));
        const QPointer<QMenu> menu = openedMenu();
        QVERIFY(menu);
        QStringList entries;
        for (const QAction *entry : menu->actions() + menu->actions().last()->menu()->actions())
            entries.append(entry->text());
        QCOMPARE(entries.join('|'), "Выходной|Смены|Смена 1 08:00 - 17:00|Смена 2 20:00 - 06:00|Смена 3 00:00 - 00:00");
        chooseMenuEntryByKeys("Смены", "Смена 1 08:00 - 17:00");
        QCOMPARE(editor.text(), "Охрана: 0 0 2 1 0" + Shifts);
        QTRY_VERIFY(!menu);

        emit view->customContextMenuRequested(QPoint(5, 5));
        QTest::keyClick(openedMenu(), Qt::Key_Down);
        QTest::keyClick(openedMenu(), Qt::Key_Return);
        QCOMPARE(editor.text(), "Охрана: 0 - 2 1 -" + Shifts);
    }

    void shouldReorderAndRemoveIntervals()
    {
        const Editor editor(scheduleOf(ScheduleShift));
        auto *times = editor.table("tvTime");
        editor.showShifts();
        QCOMPARE(editor.intervals(), "8-10 11-12 13-17 at -1/-1 ");
        editor.clickCell("tvTime", 2, 1);
        QCOMPARE(editor.intervals(), "8-10 11-12 13-17 at 2/1 tbDelTime tbMoveUp");
        const QList<QPair<const char *, QString>> steps{
            {"tbMoveUp", "8-10 13-17 11-12 at 1/1 tbDelTime tbMoveUp tbMoveDown"},
            {"tbMoveUp", "13-17 8-10 11-12 at 0/1 tbDelTime tbMoveDown"},
            {"tbMoveDown", "8-10 13-17 11-12 at 1/1 tbDelTime tbMoveUp tbMoveDown"},
            {"tbDelTime", "8-10 11-12 at 1/1 tbDelTime tbMoveUp"},
            {"tbDelTime", "8-10 at 0/1 tbDelTime"},
            {"tbDelTime", "at -1/-1 "}};
        for (const auto &[button, intervals] : steps) {
            editor.click(button);
            QCOMPARE(editor.intervals(), intervals);
            if (button != steps.last().first)
                QCOMPARE(times->selectionModel()->selectedIndexes(), QModelIndexList({times->currentIndex()}));
        }

        QTest::ignoreMessage(QtWarningMsg, "wrong index");
        QVERIFY(QMetaObject::invokeMethod(const_cast<Editor *>(&editor), "moveTimeUp"));

        for (int left = 2; left >= 0; --left) {
            QTest::keyClick(editor.table("tvShift"), Qt::Key_Delete);
            QCOMPARE(editor.schedule().shifts.size(), left);
            QCOMPARE(editor.isOn("tbDelShift"), left > 0);
        }
        editor.click("tbAddTime");
        QTest::keyClick(times, Qt::Key_Insert);
        QCOMPARE(times->model()->rowCount(), 0);
        QVERIFY(editor.isOn("tbAddTime"));
        QTest::keyClick(editor.table("tvShift"), Qt::Key_Insert);
        QTest::keyClick(times, Qt::Key_Insert);
        QCOMPARE(editor.intervals(), "0-0 0-0at 1/0 tbDelTime tbMoveUp");
    }

    void shouldAddShiftWithInterval()
    {
        auto schedule = scheduleOf(ScheduleShift);
        schedule.days[0] = {1, 3, 99, false}; // must not get the new, fourth shift
        Editor editor(schedule);
        QVERIFY(QTest::qWaitForWindowActive(&editor));
        editor.clickCell("tvMode", 4, 2);
        editor.showShifts();
        editor.click("tbAddShift");
        QCOMPARE(editor.table("tvShift")->currentIndex().row(), 3);
        QCOMPARE(QApplication::focusWidget(), editor.table("tvTime"));

        QTest::keyClicks(editor.table("tvTime"), "1");
        QTest::keyClicks(editor.cellEditor("tvTime"), "63000");
        QTest::keyClick(editor.cellEditor("tvTime"), Qt::Key_Tab);
        QTRY_VERIFY(editor.table("tvTime")->currentIndex().column() == 1 && editor.cellEditor("tvTime"));
        QTest::keyClicks(editor.cellEditor("tvTime"), "014500");
        QTest::keyClick(editor.cellEditor("tvTime"), Qt::Key_Return);
        QTRY_VERIFY(!editor.cellEditor("tvTime"));
        QVERIFY(editor.isVisible());

        editor.press(QDialogButtonBox::Ok);
        QCOMPARE(editor.text(), "Охрана: - 1 2 1 ?" + Shifts + " | 16.5-1.75");
        QCOMPARE(editor.schedule().shifts.last().id, -1);
        QCOMPARE(editor.schedule().shifts.last().times.first().id, -1);
    }

    void shouldClearDaysOfRemovedShift()
    {
        auto schedule = scheduleOf(ScheduleShift);
        schedule.shifts[2].times = {{5, 9 * Hour, 12 * Hour}, {6, 13 * Hour, 15 * Hour}};
        const Editor editor(schedule);
        editor.showShifts();
        editor.clickCell("tvShift", 1, 0);
        QCOMPARE(editor.table("tvTime")->model()->rowCount(), 1);
        editor.click("tbDelShift");

        QCOMPARE(editor.text(), "Охрана: 0 - 1 - - | 8-10 11-12 13-17 | 9-12 13-15");
        QCOMPARE(editor.schedule().days.at(1).shiftId, -1);
        QCOMPARE(editor.schedule().days.at(2).shiftId, 13);
        QCOMPARE(editor.table("tvShift")->currentIndex().row(), 1);
        QCOMPARE(editor.table("tvTime")->model()->rowCount(), 2); // of the shift that was the third
    }

    void shouldKeepUnfinishedInput()
    {
        Editor editor(scheduleOf(ScheduleShift));
        QVERIFY(QTest::qWaitForWindowActive(&editor));
        editor.showShifts();
        // A second digit could follow, so the field does not report the time yet.
        const auto typeHour = [&editor](int row, const char *digit) {
            editor.openCell("tvTime", row, 0);
            editor.cellEditor("tvTime")->findChild<QLineEdit *>()->setSelection(0, 2);
            QTest::keyClicks(editor.cellEditor("tvTime"), digit);
        };
        typeHour(0, "1");
        editor.click("tbMoveDown");
        typeHour(2, "2");
        editor.press(QDialogButtonBox::Ok);

        QCOMPARE(editor.text().section('|', 1, 1), " 11-12 1-10 2-17 ");
    }

    void shouldSaveUsedLimits()
    {
        auto schedule = scheduleOf(ScheduleFree);
        schedule.days.clear();
        schedule.freeStart = 9 * Hour + 15 * Minute + 30;
        schedule.freeFinish = 17 * Hour;
        schedule.freeNorm = 7 * Hour + 5 * Minute + 59;
        Editor editor(schedule);
        editor.toggle("cbFreeUseFinish");
        QCOMPARE(editor.enabled({"freeStartEdit", "freeFinishEdit", "freeNormHEdit", "freeNormMEdit", "freeBreakEdit"}),
                 QStringList({"freeStartEdit", "freeNormHEdit", "freeNormMEdit"}));
        editor.press(QDialogButtonBox::Ok);
        schedule.freeFinish = 0;
        schedule.freeNorm -= 59;
        QVERIFY(editor.schedule() == schedule);
    }

    void shouldFollowFreeLimits_data()
    {
        addColumns<QString, QTime, QTime, int, bool, int, int, int>(
            {"unused", "start", "finish", "breakBefore", "byBreak", "entered", "break after", "norm after"});

        const QTime nine(9, 0);
        const QTime evening(18, 0);
        QTest::newRow("a day") << "" << nine << evening << 0 << true << 60 << 60 << 480;
        QTest::newRow("a night") << "" << QTime(22, 0) << QTime(6, 0) << 0 << true << 60 << 60 << 420;
        QTest::newRow("a break longer than the day") << "" << nine << QTime(10, 0) << 0 << true << 240 << 240 << 0;
        QTest::newRow("without a break") << "Break" << nine << evening << 0 << true << 60 << 60 << 540;
        QTest::newRow("without a finish") << "Finish" << nine << evening << 0 << true << 60 << 60 << 0;
        QTest::newRow("a norm") << "" << nine << evening << 0 << false << 430 << 110 << 430;
        QTest::newRow("a norm longer than the day") << "" << nine << evening << 60 << false << 600 << 0 << 600;
        QTest::newRow("a norm that leaves a long break") << "" << nine << evening << 0 << false << 60 << 240 << 60;
        QTest::newRow("a norm without a break") << "Break" << nine << evening << 15 << false << 430 << 15 << 430;
    }
    void shouldFollowFreeLimits()
    {
        QFETCH(QString, unused);
        QFETCH(QTime, start);
        QFETCH(QTime, finish);
        QFETCH(int, breakBefore);
        QFETCH(bool, byBreak);
        QFETCH(int, entered);
        const Editor editor(scheduleOf(ScheduleFree));
        auto *breakEdit = editor.part<QSpinBox>("freeBreakEdit");
        editor.setSpan(start, finish);
        breakEdit->setValue(breakBefore);
        for (const QString limit : {"Start", "Finish", "Norm", "Break"})
            editor.part<QCheckBox>(qPrintable("cbFreeUse" + limit))->setChecked(limit != unused);

        if (byBreak)
            breakEdit->setValue(entered);
        else
            editor.setNorm(entered);
        QTEST(breakEdit->value(), "break after");
        QTEST(editor.norm(), "norm after");
    }

    void shouldProposeLimitsWhenChecked()
    {
        const Editor editor(scheduleOf(ScheduleFree));
        editor.toggle("cbFreeUseStart");
        editor.toggle("cbFreeUseFinish");
        editor.setSpan(QTime(9, 0), QTime(18, 0));
        QCOMPARE(editor.norm(), 0);

        editor.toggle("cbFreeUseNorm");
        QCOMPARE(editor.norm(), 540);
        editor.setNorm(480);
        editor.toggle("cbFreeUseBreak");
        QCOMPARE(editor.part<QSpinBox>("freeBreakEdit")->value(), 60);
        editor.toggle("cbFreeUseBreak");
        QCOMPARE(editor.norm(), 480);
    }

    void shouldWaitForDaysOfTheShownYear()
    {
        Editor editor(scheduleOf(ScheduleCalendar));
        QSignalSpy requests(&editor, &ScheduleEditDialog::calendarDaysRequest);
        QVERIFY(QTest::qWaitForWindowActive(&editor));
        const int thisYear = QDate::currentDate().year();
        const QDate newYear(thisYear, 1, 1);
        QVERIFY(!editor.isOn("calendarWidget"));
        QTRY_COMPARE(requests.count(), 1);
        QCOMPARE(requests.takeFirst(), QVariantList({5, thisYear}));

        expectWarning("wrong schedule id 5 6");
        editor.setCalendarDays(6, {calendarDay(newYear, 4, DayByShift, 9)});
        editor.setReplyYear(thisYear + 1);
        editor.setCalendarDays(5, {calendarDay(newYear.addYears(1), 4, DayByShift, 9)});
        editor.requestMissingDays();
        QVERIFY(!editor.isOn("calendarWidget"));
        QCOMPARE(requests.takeFirst(), QVariantList({5, thisYear}));
        editor.setCalendarDays(5, {calendarDay(newYear, 3, DayByShift, 9)});
        editor.requestMissingDays();
        QVERIFY(editor.isOn("calendarWidget") && requests.isEmpty());
        QCOMPARE(editor.days(), QString("%1-01-01 3/9").arg(thisYear));

        auto *year = editor.part<QSpinBox>("sbYear");
        year->setFocus();
        year->selectAll();
        QTest::keyClicks(year, "2031");
        QVERIFY(requests.isEmpty());
        QTest::keyClick(year, Qt::Key_Return);
        QVERIFY(!editor.isOn("calendarWidget") && editor.isVisible());
        QCOMPARE(requests, {QVariantList({5, editor.calendarYear()})});
        QCOMPARE(editor.calendarYear(), 2031);
        editor.setCalendarDays(5, {});
        QVERIFY(editor.isOn("calendarWidget"));
        QCOMPARE(focusWidget(), year);
    }

    void shouldKeepEditsWhenDaysAreReadAgain()
    {
        Editor editor(scheduleOf(ScheduleCalendar));
        auto *year = editor.part<QSpinBox>("sbYear");
        const QDate edited(2028, 2, 29);
        const QDate untouched(2028, 3, 1);
        const QDate added(2028, 5, 5);
        const QDate other(2029, 1, 1);
        auto *calendar = editor.table("calendarView")->model();
        const auto read = [&editor](const QList<QDate> &dates, quint32 shift, int revision) {
            QList<SCHEDULE_CALENDAR_DAY> days;
            for (const QDate &date : dates)
                days.append(calendarDay(date, shift, DayByShift, revision));
            editor.setCalendarDays(5, days);
        };
        year->setValue(2028);
        read({edited, untouched}, 3, 9);
        putShift(calendar, edited, 4);
        putShift(calendar, added, 4);

        year->setValue(2029);
        read({other}, 3, 1);
        QCOMPARE(editor.days(), "2028-02-29 4/9, 2028-05-05 4/0, 2029-01-01 3/1");
        putShift(calendar, other, 0);

        // Another operator has changed the days: first both shifts, then only the revision.
        year->setValue(2028);
        const QString expected = "2028-02-29 4/9, 2028-03-01 7/%1, 2028-05-05 4/0, 2029-01-01 0/1";
        for (const int revision : {10, 11}) {
            read({edited, untouched}, 7, revision);
            QCOMPARE(editor.days(), expected.arg(revision));
        }

        const QSignalSpy reset(calendar, &QAbstractItemModel::modelReset);
        read({edited, untouched}, 7, 11);
        QVERIFY(reset.isEmpty());
        read({QDate(2026, 1, 1)}, 3, 9); // of a year that is not shown
        QVERIFY(editor.days().endsWith(expected.arg(11)));
        editor.setReplyYear(2027);
        read({QDate(2027, 1, 1)}, 3, 9);
        QVERIFY(!editor.days().contains("2027"));
    }

    void shouldAcceptInvalidRecords_data()
    {
        addColumns<SCHEDULE_DATA, QString>({"schedule", "saved"});

        auto schedule = scheduleOf(ScheduleShift);
        schedule.days = {{1, 3, 3, false}, {2, Highest, 1, false}, {3, Lowest, 1, false}, {4, -2, 7, true}};
        QTest::newRow("days with shifts outside the list") << schedule << "Охрана: - - - -" + Shifts;
        schedule.shifts.clear();
        QTest::newRow("days without any shifts") << schedule << "Охрана: - - - -";
        schedule = scheduleOf(ScheduleShift);
        schedule.days = {{1, 0, 77, false}, {2, 0, 11, true}, {3, -1, 5, true}};
        QTest::newRow("contradictory days") << schedule << "Охрана: 0 - -" + Shifts;
        schedule.shifts = {{11, 0, {{1, -1, Highest}, {2, Lowest, Lowest}, {3, 90000, 86400}, {4, 0, 86400}}}};
        QTest::newRow("times out of range") << schedule << "Охрана: 0 - - | 23.9997-3.23528 20.7644-20.7644 1-24 0-24";
        const QString limits = "Охрана: | 8-10 11-12 13-17 | 20-6 | 20.7644-3.23528 %1";
        schedule = scheduleOf(ScheduleFree);
        schedule.freeStart = Lowest;
        schedule.freeFinish = Highest;
        schedule.freeNorm = Highest;
        schedule.freeBreak = Lowest;
        QTest::newRow("limits out of range") << schedule << limits.arg("24.2333-0");
        schedule.freeNorm = Lowest;
        schedule.freeBreak = Highest;
        QTest::newRow("other limits out of range") << schedule << limits.arg("0-4");
        schedule = {};
        schedule.color = "no colour";
        for (const QString text : {": - - - - - - -", ":", ": 0-0 0-0", ":"}) {
            QTest::addRow("an empty record of type %d", schedule.type) << schedule << text;
            schedule.type = ScheduleMode(schedule.type + 1);
        }
        QTest::newRow("an unknown type") << scheduleOf(ScheduleMode(7)) << "Охрана: 0 1 2 1 -" + Shifts;
        schedule = scheduleOf(ScheduleShift);
        schedule.startDate = QDate(-4000, 1, 1);
        QTest::newRow("a date out of range") << schedule << "Охрана: 0 1 2 1 -" + Shifts;
    }
    void shouldAcceptInvalidRecords()
    {
        QFETCH(SCHEDULE_DATA, schedule);
        Editor editor(schedule);
        QTest::keyClick(editor.table("tvMode"), Qt::Key_Delete);
        for (int row = 0; row < editor.table("tvMode")->model()->rowCount(); ++row)
            editor.openCell("tvMode", row, 1);
        if (editor.part<QStackedWidget>("stackedWidget")->currentIndex() == 0)
            editor.showShifts();
        QVERIFY(!editor.grab().isNull());
        editor.press(QDialogButtonBox::Ok);

        QCOMPARE(editor.result(), int(QDialog::Accepted));
        QTEST(editor.text(), "saved");
        const auto saved = editor.schedule();
        QCOMPARE(saved.type, schedule.type);
        QVERIFY(saved.color.isEmpty() || saved.color == "#3daee9");
        for (const auto &day : saved.days)
            QCOMPARE(day.shiftId, day.dayOff ? -1 : saved.shifts.at(day.shift).id);
    }
};

QTEST_MAIN(TestScheduleEditDialog)
#include "tst_scheduleeditdialog.moc"
