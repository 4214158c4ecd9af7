#include "calendaryearwidget.h"
#include "hands.h"
#include "samplerecords.h"
#include "scheduleeditdialog.h"
#include "shiftdaydelegate.h"
#include "testcolumns.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QTableView>
#include <QTabWidget>
#include <QTest>
#include <QTimeEdit>

#include <limits>

using namespace orvex;
using namespace support;

namespace {

constexpr int Lowest = std::numeric_limits<int>::min();
constexpr int Highest = std::numeric_limits<int>::max();

SCHEDULE_DATA scheduleOf(ScheduleMode type)
{
    SCHEDULE_DATA schedule;
    schedule.id = 5;
    schedule.version = 77;
    schedule.state = ScheduleStateActive;
    schedule.type = type;
    schedule.name = "Охрана";
    schedule.color = "#3daee9";
    schedule.comment = "заметка";
    schedule.startDate = QDate(2024, 2, 26);
    schedule.shifts = {{11, 0, {{1, 8 * Hour, 10 * Hour}, {2, 11 * Hour, 12 * Hour}, {3, 13 * Hour, 17 * Hour}}},
                       {12, 0, {{4, 20 * Hour, 6 * Hour}}},
                       {13, 0, {}}};
    schedule.days = {{1, 0, 11, false}, {2, 1, 12, false}, {3, 2, 13, false}, {4, 1, 12, false}, {5, -1, -1, true}};
    return schedule;
}

/// Positions of the days' shifts; -1 for a day off, -2 for a working day without a shift.
QVector<int> shiftsOf(const QList<SCHEDULE_DAY> &days)
{
    QVector<int> shifts;
    for (const auto &day : days)
        shifts.append(day.shift < 0 && !day.dayOff ? -2 : day.shift);
    return shifts;
}

QVector<int> idsOf(const QList<SCHEDULE_SHIFT_TIME> &times)
{
    QVector<int> ids;
    for (const auto &time : times)
        ids.append(time.id);
    return ids;
}

/// Whether the store accepts every reference and time of the record.
bool isValid(const SCHEDULE_DATA &schedule)
{
    const auto isTime = [](int seconds) { return seconds >= 0 && seconds <= 24 * Hour; };
    for (const auto &shift : schedule.shifts) {
        for (const auto &time : shift.times) {
            if (!isTime(time.start) || !isTime(time.finish))
                return false;
        }
    }
    for (const auto &day : schedule.days) {
        const bool hasShift = day.shift >= 0 && day.shift < schedule.shifts.size();
        if (hasShift ? day.dayOff || day.shiftId != schedule.shifts.at(day.shift).id : day.shift != -1)
            return false;
    }
    return isTime(schedule.freeStart) && isTime(schedule.freeFinish) && schedule.freeNorm >= 0
        && schedule.freeNorm < 25 * Hour && isTime(schedule.freeBreak)
        && (schedule.color.isEmpty() || schedule.color.size() == 7);
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
    void tick(const char *name, bool checked) const
    {
        if (part<QCheckBox>(name)->isChecked() != checked)
            QTest::keyClick(part<QCheckBox>(name), Qt::Key_Space);
    }
    QString period() const { return part<QLabel>("labelNumDay")->text(); }
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

    /// Assigns a shift of the guide to a date of the shown year, as the menu does.
    void assign(const QDate &date, quint32 shiftId) const
    {
        QTableView *view = table("calendarView");
        view->setCurrentIndex(view->model()->index(date.month() - 1, date.day() + 1));
        QAction action(nullptr);
        action.setData(shiftId);
        part<CalendarYearWidget>("calendarWidget")->applyShiftAction(&action);
    }
    /// Shift and revision of a date; "none" without a record.
    QString shiftOn(const QDate &date) const
    {
        for (const auto &day : calendarDays()) {
            if (day.date == date)
                return QStringLiteral("%1/%2").arg(day.shiftId).arg(day.revision);
        }
        return QStringLiteral("none");
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
        addColumns<int, QString, QString, bool, int>({"type", "shown type", "page", "has date", "days"});

        const auto row = [](const char *name, int type, const char *shown, const char *page, bool hasDate, int days) {
            QTest::newRow(name) << type << QString(shown) << QString(page) << hasDate << days;
        };
        row("fixed", 0, "Фиксированный", "shiftPage", false, 7);
        row("shift", 1, "Сменный", "shiftPage", true, 5);
        row("free", 2, "Ненормированный", "freePage", false, 0);
        row("calendar", 3, "Календарный", "calendarPage", false, 0);
        row("unknown", 7, "", "freePage", false, 5);
    }
    void shouldOpenOnItsType()
    {
        QFETCH(int, type);
        const Editor editor(scheduleOf(ScheduleMode(type)));

        QTEST(editor.part<QComboBox>("cbScheduleType")->currentText(), "shown type");
        QVERIFY(!editor.isOn("cbScheduleType"));
        QTEST(editor.part<QStackedWidget>("stackedWidget")->currentWidget()->objectName(), "page");
        QTEST(editor.part<QWidget>("dateWidget")->isVisible(), "has date");
        QTEST(editor.isOn("tbAddDay"), "has date"); // only in a cycle
        QVERIFY(!editor.isOn("tbDelDay"));
        QTEST(editor.schedule().days.size(), "days");
        QFETCH(int, days);
        QCOMPARE(editor.period(), QStringLiteral("Количество дней в периоде: %1").arg(days));
        QCOMPARE(editor.part<QLineEdit>("leScheduleName")->text(), "Охрана");
        QCOMPARE(editor.focusWidget(), editor.part<QWidget>("leScheduleName"));
    }

    void shouldWriteScalarsOnAccept()
    {
        auto expected = scheduleOf(ScheduleShift);
        Editor editor(expected);
        auto *name = editor.part<QLineEdit>("leScheduleName");
        name->selectAll();
        QTest::keyClicks(name, "New name");
        editor.tick("cbUseHolidays", true);
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
            editor.tick(name, true);
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
        addColumns<int, QVector<int>, QDate, QDate>({"count", "shifts", "start", "monday"});

        const QDate today = QDate::currentDate();
        QTest::newRow("no days, from 29 February")
            << 0 << QVector<int>({-1, -1, -1, -1, -1, -1, -1}) << QDate(2024, 2, 29) << QDate(2024, 2, 26);
        QTest::newRow("three days, from a date before the field's minimum")
            << 3 << QVector<int>({0, 1, 0, -1, -1, -1, -1}) << QDate(1, 1, 3) << QDate(1753, 1, 1);
        QTest::newRow("400 days, without a date")
            << 400 << QVector<int>({0, 1, 0, 1, 0, 1, 0}) << QDate() << today.addDays(1 - today.dayOfWeek());
    }
    void shouldOpenFixedScheduleAsWeek()
    {
        QFETCH(int, count);
        QFETCH(QDate, start);
        auto schedule = scheduleOf(ScheduleFixed);
        schedule.startDate = start;
        schedule.days.clear();
        for (int i = 0; i < count; ++i)
            schedule.days.append({i + 1, i % 2, 11 + i % 2, false});
        Editor editor(schedule);
        editor.press(QDialogButtonBox::Ok);

        QTEST(shiftsOf(editor.schedule().days), "shifts");
        QCOMPARE(editor.schedule().days.last().id, count >= 7 ? 7 : -1);
        QTEST(editor.schedule().startDate, "monday");
    }

    void shouldCountCyclePerEmployee()
    {
        auto schedule = scheduleOf(ScheduleShift);
        schedule.startDate = {};
        Editor editor(schedule);
        const auto *days = qobject_cast<ShiftDayDelegate *>(editor.table("tvMode")->itemDelegateForColumn(0));
        QVERIFY(editor.part<QRadioButton>("rbEmployee")->isChecked());
        QVERIFY(!editor.isOn("deStartDate"));
        QCOMPARE(editor.part<QDateEdit>("deStartDate")->date(), QDate::currentDate());
        QVERIFY(days->start.isNull());

        editor.click("rbCalendar");
        QVERIFY(editor.isOn("deStartDate"));
        QCOMPARE(days->start, QDateTime(QDate::currentDate(), QTime(0, 0)));
        editor.part<QDateEdit>("deStartDate")->setDate(QDate(2024, 2, 29));
        QCOMPARE(days->start.date(), QDate(2024, 2, 29));

        editor.click("rbEmployee");
        QVERIFY(days->start.isNull());
        editor.press(QDialogButtonBox::Ok);
        QVERIFY(editor.schedule().startDate.isNull());
    }

    void shouldAddAndRemoveDaysByButtons()
    {
        const Editor editor(scheduleOf(ScheduleShift));
        editor.click("tbAddDay");
        QCOMPARE(editor.schedule().days.size(), 6);
        QCOMPARE(editor.schedule().days.last().id, -1);
        QVERIFY(editor.schedule().days.last().dayOff);
        QCOMPARE(editor.period(), "Количество дней в периоде: 6");
        QCOMPARE(editor.table("tvMode")->currentIndex().row(), 5);
        QVERIFY(editor.isOn("tbDelDay"));

        editor.clickCell("tvMode", 0, 0);
        for (int left = 5; left >= 0; --left) {
            editor.click("tbDelDay");
            QCOMPARE(editor.period(), QStringLiteral("Количество дней в периоде: %1").arg(left));
            QCOMPARE(editor.isOn("tbDelDay"), left > 0);
        }
    }

    void shouldAddAndRemoveDaysByKeys()
    {
        for (const auto type : {ScheduleShift, ScheduleFixed}) {
            const Editor editor(scheduleOf(type));
            const int before = editor.schedule().days.size();
            const int each = type == ScheduleShift ? 1 : 0;
            editor.clickCell("tvMode", 2, 0);
            for (const int wanted : {before + each, before + 2 * each}) {
                QTest::keyClick(editor.table("tvMode"), Qt::Key_Insert);
                QCOMPARE(editor.schedule().days.size(), wanted);
            }
            QTest::keyClick(editor.table("tvMode"), Qt::Key_Delete);
            QCOMPARE(editor.schedule().days.size(), before + each);
            QCOMPARE(editor.period(), QStringLiteral("Количество дней в периоде: %1").arg(before));
        }
    }

    void shouldAssignShiftsToSelectedDays()
    {
        const Editor editor(scheduleOf(ScheduleShift));
        QTableView *view = editor.table("tvMode");
        for (const auto &cell : {qMakePair(1, 0), qMakePair(1, 2), qMakePair(4, 1)})
            view->selectionModel()->select(view->model()->index(cell.first, cell.second), QItemSelectionModel::Select);

        emit view->customContextMenuRequested(QPoint(5, 5));
        QPointer<QMenu> menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QCOMPARE(menu->actions().size(), 2);
        QCOMPARE(menu->actions().at(0)->text(), "Выходной");
        QCOMPARE(menu->actions().at(1)->text(), "Смены");
        const auto shifts = menu->actions().at(1)->menu()->actions();
        QCOMPARE(shifts.size(), 3);
        QCOMPARE(shifts.at(0)->text(), "Смена 1 08:00 - 17:00");
        QCOMPARE(shifts.at(2)->text(), "Смена 3 00:00 - 00:00");

        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Right);
        QTest::keyClick(shifts.first()->associatedWidgets().first(), Qt::Key_Return);
        QCOMPARE(shiftsOf(editor.schedule().days), QVector<int>({0, 0, 2, 1, 0}));
        QTRY_VERIFY(!menu);

        emit view->customContextMenuRequested(QPoint(5, 5));
        menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(shiftsOf(editor.schedule().days), QVector<int>({0, -1, 2, 1, -1}));
    }

    void shouldReorderIntervals()
    {
        const Editor editor(scheduleOf(ScheduleShift));
        editor.showShifts();
        const auto ids = [&editor] { return idsOf(editor.schedule().shifts.at(0).times); };
        const auto current = [&editor] { return editor.table("tvTime")->currentIndex(); };
        QVERIFY(!editor.isOn("tbMoveUp") && !editor.isOn("tbMoveDown"));

        editor.clickCell("tvTime", 2, 1);
        QVERIFY(editor.isOn("tbMoveUp") && !editor.isOn("tbMoveDown"));
        editor.click("tbMoveUp");
        QCOMPARE(ids(), QVector<int>({1, 3, 2}));
        QVERIFY(editor.isOn("tbMoveUp") && editor.isOn("tbMoveDown"));
        editor.click("tbMoveUp");
        QCOMPARE(ids(), QVector<int>({3, 1, 2}));
        QCOMPARE(editor.schedule().shifts.at(0).times.at(0).start, 13 * Hour);
        QVERIFY(!editor.isOn("tbMoveUp") && editor.isOn("tbMoveDown"));
        QCOMPARE(current(), editor.table("tvTime")->model()->index(0, 1));
        QCOMPARE(editor.table("tvTime")->selectionModel()->selectedIndexes(), QModelIndexList({current()}));

        editor.click("tbMoveDown");
        QCOMPARE(ids(), QVector<int>({1, 3, 2}));

        QTest::ignoreMessage(QtWarningMsg, "wrong index");
        editor.table("tvTime")->setCurrentIndex({});
        QVERIFY(QMetaObject::invokeMethod(const_cast<Editor *>(&editor), "moveTimeUp"));
        QCOMPARE(ids(), QVector<int>({1, 3, 2}));
    }

    void shouldEnableButtonsAfterRemovals()
    {
        const Editor editor(scheduleOf(ScheduleShift));
        editor.showShifts();
        editor.clickCell("tvTime", 1, 0);
        QVERIFY(editor.isOn("tbMoveDown"));

        editor.click("tbDelTime");
        QCOMPARE(idsOf(editor.schedule().shifts.at(0).times), QVector<int>({1, 3}));
        QCOMPARE(editor.table("tvTime")->currentIndex().row(), 1);
        QVERIFY(editor.isOn("tbMoveUp") && !editor.isOn("tbMoveDown"));
        editor.click("tbDelTime");
        QVERIFY(editor.isOn("tbDelTime") && !editor.isOn("tbMoveUp") && !editor.isOn("tbMoveDown"));
        editor.click("tbDelTime");
        QVERIFY(!editor.isOn("tbDelTime"));

        for (int left = 2; left >= 0; --left) {
            QTest::keyClick(editor.table("tvShift"), Qt::Key_Delete);
            QCOMPARE(editor.schedule().shifts.size(), left);
            QCOMPARE(editor.isOn("tbDelShift"), left > 0);
        }
        editor.click("tbAddTime");
        QTest::keyClick(editor.table("tvTime"), Qt::Key_Insert);
        QCOMPARE(editor.table("tvTime")->model()->rowCount(), 0);
        QVERIFY(editor.isOn("tbAddTime"));
    }

    void shouldAddShiftWithInterval()
    {
        Editor editor(scheduleOf(ScheduleShift));
        QVERIFY(QTest::qWaitForWindowActive(&editor));
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

        const auto shift = editor.schedule().shifts.value(3);
        QCOMPARE(shift.id, -1);
        QCOMPARE(idsOf(shift.times), QVector<int>({-1}));
        QCOMPARE(shift.times.first().start, 16 * Hour + 30 * Minute);
        QCOMPARE(shift.times.first().finish, Hour + 45 * Minute);
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

        QCOMPARE(shiftsOf(editor.schedule().days), QVector<int>({0, -1, 1, -1, -1}));
        QCOMPARE(editor.schedule().days.at(1).shiftId, -1);
        QCOMPARE(editor.schedule().days.at(2).shiftId, 13);
        QCOMPARE(editor.table("tvShift")->currentIndex().row(), 1);
        QCOMPARE(editor.table("tvTime")->model()->rowCount(), 2); // of the shift that was the third
    }

    void shouldStoreDaysWithoutShift()
    {
        auto schedule = scheduleOf(ScheduleShift);
        schedule.days[0] = {1, 3, 99, false};
        Editor editor(schedule);
        QTest::keyClick(editor.table("tvShift"), Qt::Key_Insert); // not the fourth shift of the first day
        editor.clickCell("tvMode", 4, 2);
        editor.press(QDialogButtonBox::Ok);

        QCOMPARE(editor.schedule().shifts.size(), 4);
        QCOMPARE(shiftsOf(editor.schedule().days), QVector<int>({-1, 1, 2, 1, -2}));
    }

    void shouldKeepUnfinishedInput()
    {
        Editor editor(scheduleOf(ScheduleShift));
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

        const auto times = editor.schedule().shifts.at(0).times;
        QCOMPARE(idsOf(times), QVector<int>({2, 1, 3}));
        QCOMPARE(times.at(0).start, 11 * Hour);
        QCOMPARE(times.at(1).start, 1 * Hour);
        QCOMPARE(times.at(2).start, 2 * Hour);
    }

    void shouldLeaveKeysToOpenCellEditor()
    {
        const Editor editor(scheduleOf(ScheduleShift));
        editor.openCell("tvMode", 0, 1);
        QVERIFY(editor.cellEditor("tvMode"));
        QTest::keyClick(editor.cellEditor("tvMode"), Qt::Key_Delete);
        QTest::keyClick(editor.cellEditor("tvMode"), Qt::Key_Insert);

        QCOMPARE(shiftsOf(editor.schedule().days), QVector<int>({0, 1, 2, 1, -1}));
    }

    void shouldSaveUsedLimits()
    {
        auto schedule = scheduleOf(ScheduleFree);
        schedule.days.clear();
        schedule.freeStart = 9 * Hour + 15 * Minute + 30;
        schedule.freeFinish = 17 * Hour;
        schedule.freeNorm = 7 * Hour + 5 * Minute + 59;
        Editor editor(schedule);
        QVERIFY(editor.isOn("freeStartEdit") && editor.isOn("freeFinishEdit") && !editor.isOn("freeBreakEdit"));
        QVERIFY(editor.isOn("freeNormHEdit") && editor.isOn("freeNormMEdit"));
        editor.tick("cbFreeUseFinish", false);
        QVERIFY(!editor.isOn("freeFinishEdit"));

        editor.press(QDialogButtonBox::Ok);
        schedule.freeFinish = 0;
        schedule.freeNorm -= 59;
        QVERIFY(editor.schedule() == schedule);
    }

    void shouldFollowFreeLimits_data()
    {
        addColumns<QString, bool, QTime, QTime, int, int, int, int>(
            {"boxes", "byBreak", "start", "finish", "breakMinutes", "normMinutes", "break after", "norm after"});

        const QString all = "start finish norm break";
        const QString noBreak = "start finish norm";
        const bool byBreak = true;
        const bool byNorm = false;
        const QTime nine(9, 0);
        const QTime evening(18, 0);
        QTest::newRow("a day") << all << byBreak << nine << evening << 60 << 0 << 60 << 480;
        QTest::newRow("a night") << all << byBreak << QTime(22, 0) << QTime(6, 0) << 60 << 0 << 60 << 420;
        QTest::newRow("a break longer than the day") << all << byBreak << nine << QTime(10, 0) << 240 << 0 << 240 << 0;
        QTest::newRow("without a break") << noBreak << byBreak << nine << evening << 60 << 0 << 60 << 540;
        QTest::newRow("without a finish") << "start norm break" << byBreak << nine << evening << 60 << 0 << 60 << 0;
        QTest::newRow("a norm") << all << byNorm << nine << evening << 0 << 430 << 110 << 430;
        QTest::newRow("a norm longer than the day") << all << byNorm << nine << evening << 60 << 600 << 0 << 600;
        QTest::newRow("a norm that leaves a long break") << all << byNorm << nine << evening << 0 << 60 << 240 << 60;
        QTest::newRow("a norm without a break") << noBreak << byNorm << nine << evening << 15 << 430 << 15 << 430;
    }
    void shouldFollowFreeLimits()
    {
        QFETCH(QString, boxes);
        QFETCH(QTime, start);
        QFETCH(QTime, finish);
        QFETCH(bool, byBreak);
        QFETCH(int, breakMinutes);
        QFETCH(int, normMinutes);
        const Editor editor(scheduleOf(ScheduleFree));
        auto *hours = editor.part<QSpinBox>("freeNormHEdit");
        auto *minutes = editor.part<QSpinBox>("freeNormMEdit");
        auto *breakEdit = editor.part<QSpinBox>("freeBreakEdit");
        editor.part<QTimeEdit>("freeStartEdit")->setTime(start);
        editor.part<QTimeEdit>("freeFinishEdit")->setTime(finish);
        const auto enter = [&](bool isBreak) {
            if (isBreak) {
                breakEdit->setValue(breakMinutes);
            } else {
                hours->setValue(normMinutes / 60);
                minutes->setValue(normMinutes % 60);
            }
        };
        enter(!byBreak);
        for (const QString &box : boxes.split(QLatin1Char(' '))) {
            const QString name = QStringLiteral("cbFreeUse") + box.left(1).toUpper() + box.mid(1);
            editor.part<QCheckBox>(name.toLatin1().constData())->setChecked(true);
        }

        enter(byBreak);
        QTEST(breakEdit->value(), "break after");
        QTEST(hours->value() * 60 + minutes->value(), "norm after");
    }

    void shouldProposeLimitsWhenChecked()
    {
        const Editor editor(scheduleOf(ScheduleFree));
        editor.tick("cbFreeUseStart", true);
        editor.tick("cbFreeUseFinish", true);
        editor.part<QTimeEdit>("freeStartEdit")->setTime(QTime(9, 0));
        editor.part<QTimeEdit>("freeFinishEdit")->setTime(QTime(18, 0));
        QCOMPARE(editor.part<QSpinBox>("freeNormHEdit")->value(), 0);

        editor.tick("cbFreeUseNorm", true);
        QCOMPARE(editor.part<QSpinBox>("freeNormHEdit")->value(), 9);
        editor.part<QSpinBox>("freeNormHEdit")->setValue(8);
        editor.tick("cbFreeUseBreak", true);
        QCOMPARE(editor.part<QSpinBox>("freeBreakEdit")->value(), 60);
        editor.tick("cbFreeUseBreak", false);
        QCOMPARE(editor.part<QSpinBox>("freeNormHEdit")->value(), 8);
    }

    void shouldWaitForDaysOfTheShownYear()
    {
        Editor editor(scheduleOf(ScheduleCalendar));
        QSignalSpy requests(&editor, &ScheduleEditDialog::calendarDaysRequest);
        QVERIFY(QTest::qWaitForWindowActive(&editor));
        const int thisYear = QDate::currentDate().year();
        QVERIFY(!editor.isOn("calendarWidget"));
        QTRY_COMPARE(requests.count(), 1);
        QCOMPARE(requests.takeFirst(), QVariantList({5, thisYear}));

        QTest::ignoreMessage(QtWarningMsg, "wrong schedule id 5 6");
        editor.setCalendarDays(6, {calendarDay(QDate(thisYear, 1, 1), 4, DayByShift, 9)});
        editor.setReplyYear(thisYear + 1);
        editor.setCalendarDays(5, {calendarDay(QDate(thisYear + 1, 1, 1), 4, DayByShift, 9)});
        editor.requestMissingDays();
        QVERIFY(!editor.isOn("calendarWidget"));
        QCOMPARE(requests.takeFirst(), QVariantList({5, thisYear}));
        editor.setCalendarDays(5, {calendarDay(QDate(thisYear, 1, 1), 3, DayByShift, 9)});
        editor.requestMissingDays();
        QVERIFY(editor.isOn("calendarWidget") && requests.isEmpty());
        QCOMPARE(editor.shiftOn(QDate(thisYear, 1, 1)), "3/9");

        auto *year = editor.part<QSpinBox>("sbYear");
        year->setFocus();
        year->selectAll();
        QTest::keyClicks(year, "2031");
        QVERIFY(requests.isEmpty());
        QTest::keyClick(year, Qt::Key_Return);
        QVERIFY(!editor.isOn("calendarWidget") && editor.isVisible());
        QCOMPARE(requests.count(), 1);
        QCOMPARE(requests.first(), QVariantList({5, 2031}));
        QCOMPARE(editor.calendarYear(), 2031);
        editor.setCalendarDays(5, {});
        QVERIFY(editor.isOn("calendarWidget"));
        QCOMPARE(QApplication::focusWidget(), year);
    }

    void shouldKeepEditsWhenDaysAreReadAgain()
    {
        Editor editor(scheduleOf(ScheduleCalendar));
        auto *year = editor.part<QSpinBox>("sbYear");
        const QDate edited(2028, 2, 29);
        const QDate untouched(2028, 3, 1);
        const QDate added(2028, 5, 5);
        const QDate other(2029, 1, 1);
        year->setValue(2028);
        editor.setCalendarDays(5, {calendarDay(edited, 3, DayByShift, 9), calendarDay(untouched, 3, DayByShift, 9)});
        editor.assign(edited, 4);
        editor.assign(added, 4);

        year->setValue(2029);
        editor.setCalendarDays(5, {calendarDay(other, 3, DayByShift, 1)});
        QCOMPARE(editor.shiftOn(edited), "4/9");
        QCOMPARE(editor.shiftOn(added), "4/0");
        QCOMPARE(editor.shiftOn(untouched), "none");
        editor.assign(other, 0);

        // Another operator has changed the days: first both shifts, then only the revision.
        year->setValue(2028);
        for (const int revision : {10, 11}) {
            editor.setCalendarDays(
                5, {calendarDay(edited, 7, DayByShift, revision), calendarDay(untouched, 7, DayByShift, revision)});
            QCOMPARE(editor.shiftOn(edited), "4/9");
            QCOMPARE(editor.shiftOn(untouched), QStringLiteral("7/%1").arg(revision));
            QCOMPARE(editor.shiftOn(added), "4/0");
            QCOMPARE(editor.shiftOn(other), "0/1");
            QCOMPARE(editor.calendarDays().size(), 4);
        }

        const QSignalSpy reset(editor.table("calendarView")->model(), &QAbstractItemModel::modelReset);
        editor.setCalendarDays(5, {calendarDay(edited, 7, DayByShift, 11), calendarDay(untouched, 7, DayByShift, 11)});
        QVERIFY(reset.isEmpty());
        editor.setCalendarDays(5, {calendarDay(QDate(2026, 1, 1), 3, DayByShift, 9)}); // of a year that is not shown
        QCOMPARE(editor.shiftOn(untouched), "7/11");
        editor.setReplyYear(2027);
        editor.setCalendarDays(5, {calendarDay(QDate(2027, 1, 1), 3, DayByShift, 9)});
        QCOMPARE(editor.shiftOn(QDate(2027, 1, 1)), "none");
    }

    void shouldAcceptInvalidRecords_data()
    {
        QTest::addColumn<SCHEDULE_DATA>("schedule");

        auto schedule = scheduleOf(ScheduleShift);
        schedule.days = {{1, 3, 3, false}, {2, Highest, 1, false}, {3, Lowest, 1, false}, {4, -2, 7, true}};
        QTest::newRow("days with shifts outside the list") << schedule;
        schedule.shifts.clear();
        QTest::newRow("days without any shifts") << schedule;
        schedule = scheduleOf(ScheduleShift);
        schedule.days = {{1, 0, 77, false}, {2, 0, 11, true}, {3, -1, 5, true}};
        QTest::newRow("contradictory days") << schedule;
        schedule = scheduleOf(ScheduleShift);
        schedule.shifts[0].times = {{1, -1, Highest}, {2, Lowest, Lowest}, {3, 90000, 86400}, {4, 0, 86400}};
        QTest::newRow("times out of range") << schedule;
        schedule = scheduleOf(ScheduleFree);
        schedule.freeStart = Lowest;
        schedule.freeFinish = Highest;
        schedule.freeNorm = Highest;
        schedule.freeBreak = Lowest;
        QTest::newRow("limits out of range") << schedule;
        schedule.freeNorm = Lowest;
        schedule.freeBreak = Highest;
        QTest::newRow("other limits out of range") << schedule;
        for (const int type : {0, 1, 2, 3}) {
            SCHEDULE_DATA empty;
            empty.type = ScheduleMode(type);
            empty.color = "no colour";
            QTest::addRow("an empty record of type %d", type) << empty;
        }
        QTest::newRow("an unknown type") << scheduleOf(ScheduleMode(7));
        schedule = scheduleOf(ScheduleShift);
        schedule.startDate = QDate(-4000, 1, 1);
        QTest::newRow("a date out of range") << schedule;
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
        const auto saved = editor.schedule();
        QVERIFY(isValid(saved));
        QCOMPARE(saved.type, schedule.type);
        if (!saved.shifts.isEmpty() && saved.shifts.at(0).times.size() == 4)
            QCOMPARE(saved.shifts.at(0).times.at(3).finish, 86400);
    }
};

QTEST_MAIN(TestScheduleEditDialog)
#include "tst_scheduleeditdialog.moc"
