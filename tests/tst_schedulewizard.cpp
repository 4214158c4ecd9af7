#include "calendarwizardpage.h"
#include "finishwizardpage.h"
#include "fixedwizardpage.h"
#include "freewizardpage.h"
#include "hands.h"
#include "sampleguide.h"
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
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>

using namespace orvex;

namespace {

constexpr int Hour = 3600;

/// The intervals of a shift as "8-12 13-17", of several as "8-12 13-17 | 20-8": hours, with minutes if there are any.
QString hours(qint32 seconds)
{
    const QString minutes = seconds % Hour ? QStringLiteral(":%1").arg(seconds % Hour / 60) : QString();
    return QString::number(seconds / Hour) + minutes;
}

QString timesOf(const QList<SCHEDULE_SHIFT> &shifts)
{
    QStringList texts;
    for (const auto &shift : shifts) {
        QStringList times;
        for (const auto &time : shift.times)
            times.append(hours(time.start) + QLatin1Char('-') + hours(time.finish));
        texts.append(times.join(QLatin1Char(' ')));
    }
    return texts.join(QStringLiteral(" | "));
}

/// Days as "0 0 - 1": the position of the shift, "-" for a day off, "?" for a day that is neither or both.
QString daysOf(const SCHEDULE_DATA &schedule)
{
    QStringList texts;
    for (const auto &day : schedule.days) {
        if (day.dayOff == (day.shift >= 0) || day.shiftId != -1)
            texts.append(QStringLiteral("?"));
        else
            texts.append(day.dayOff ? QStringLiteral("-") : QString::number(day.shift));
    }
    return texts.join(QLatin1Char(' '));
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
        m_wizard->setScheduleName(QStringLiteral("Новый график работы 1"));
        m_wizard->show();
        QVERIFY(QTest::qWaitForWindowActive(m_wizard.get()));
    }

    void cleanup() { m_wizard.reset(); }

    void shouldHaveNoNextPageWithoutType()
    {
        auto *fixed = find<QRadioButton>("rbFixed");
        fixed->setAutoExclusive(false);
        fixed->setChecked(false);
        QCOMPARE(m_wizard->nextId(), -1);
        QVERIFY(!m_wizard->button(QWizard::NextButton)->isEnabled());
        QVERIFY(!m_wizard->button(QWizard::FinishButton)->isEnabled());
    }

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
            QTest::keyClicks(name, QStringLiteral("A"));
            QVERIFY(m_wizard->button(QWizard::NextButton)->isEnabled());
            click(QWizard::BackButton);
        }
    }

    void shouldKeepValuesOfLeftPage()
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

    void shouldShowOutcomeAsPlainText()
    {
        open(schedulewizard::FreePageId);
        click(QWizard::NextButton);
        auto *finish = m_wizard->button(QWizard::FinishButton);
        QVERIFY(finish->isVisible());
        QVERIFY(!finish->isEnabled());
        QVERIFY(!m_wizard->button(QWizard::BackButton)->isVisible());
        QVERIFY(!m_wizard->button(QWizard::CancelButton)->isVisible());

        const QString markup = QStringLiteral("<b>График</b>");
        emit m_wizard->createScheduleFinished(false, markup);
        m_wizard->finishPage()->setDetails(markup);
        for (const char *name : {"messageLabel", "detailsLabel"}) {
            QCOMPARE(find<QLabel>(name)->text(), markup);
            QCOMPARE(find<QLabel>(name)->textFormat(), Qt::PlainText);
            QVERIFY(find<QLabel>(name)->isVisible());
        }
        QTest::mouseClick(finish, Qt::LeftButton);
        QVERIFY(!m_wizard->isVisible());
    }

    void shouldBuildFixedSchedule_data()
    {
        support::addColumns<QStringList, bool, bool, QString, QString, QString>(
            {"times", "hasBreak", "shortened", "worked", "shifts", "days"});
        const auto row = [](const char *name, const char *times, bool hasBreak, bool shortened, const char *worked,
                            const char *shifts, const char *days) {
            QTest::newRow(name) << QString::fromLatin1(times).split(QLatin1Char(' '), Qt::SkipEmptyParts) << hasBreak
                                << shortened << QString::fromLatin1(worked) << QString::fromLatin1(shifts)
                                << QString::fromLatin1(days);
        };
        row("defaults", "", true, false, "1111100", "8-12 13-17", "0 0 0 0 0 - -");
        row("no break", "", false, false, "1111100", "8-17", "0 0 0 0 0 - -");
        row("shortened Friday", "", true, true, "1111100", "8-12 13-17 | 8-12 13-16", "0 0 0 0 1 - -");
        row("shortened Sunday of a full week", "", true, true, "1111111", "8-12 13-17 | 8-12 13-16", "0 0 0 0 0 0 1");
        row("shortened, one day", "", false, true, "0010000", "8-17 | 8-16", "- - 1 - - - -");
        row("shortened, no day", "", true, true, "0000000", "8-12 13-17 | 8-12 13-16", "- - - - - - -");
        row("night", "2200 0600", false, false, "1010101", "22-6", "0 - 0 - 0 - 0");
        row("break outside the shift", "0900 1030 1800 1900", true, false, "1000000", "9-18 19-10:30", "0 - - - - - -");
        row("shorter than an hour, shortened", "0900 0930", false, true, "1000000", "9-9:30 | 9-8:30", "1 - - - - - -");
    }

    void shouldBuildFixedSchedule()
    {
        QFETCH(QStringList, times);
        QFETCH(bool, hasBreak);
        QFETCH(bool, shortened);
        QFETCH(QString, worked);
        open(schedulewizard::FixedPageId);
        const QStringList edits{QStringLiteral("deShiftBeg"), QStringLiteral("deShiftEnd"),
                                QStringLiteral("deBreakBeg"), QStringLiteral("deBreakEnd")};
        for (int i = 0; i < times.size(); ++i)
            typeTime(find<QDateTimeEdit>(edits.at(i).toLatin1().constData()), times.at(i));
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
        QTEST(timesOf(schedule.shifts), "shifts");
        QTEST(daysOf(schedule), "days");
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
        QTest::keyClick(period, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(period, QStringLiteral("19"));
        QTest::keyClick(period, Qt::Key_Backspace);
        QTest::keyClicks(period, QStringLiteral("2"));
        QVERIFY(m_wizard->currentPage()->validatePage());
        expectDays(12);
        QCOMPARE(m_wizard->shiftPage()->shifts().at(1).begin, 3 * Hour);
        // Return applies the number and does not leave the page.
        QTest::keyClick(period, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(period, QStringLiteral("31"));
        QTest::keyClick(period, Qt::Key_Return);
        expectDays(31);
        QCOMPARE(m_wizard->currentId(), int(schedulewizard::ShiftPageId));
    }

    void shouldDisableTimesOfDayOff()
    {
        open(schedulewizard::ShiftPageId);
        setRow(0, {8, 17, 12, 13});
        auto *table = find<QTableWidget>("twSchedule");
        const auto isEditable = [table](int column) {
            return table->item(0, column)->flags().testFlag(Qt::ItemIsEnabled);
        };
        const auto clickDayOff = [table] {
            const QRect cell = table->visualItemRect(table->item(0, 4));
            QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
        };
        clickDayOff();
        QVERIFY(m_wizard->shiftPage()->shifts().first().dayOff);
        for (int column = 0; column < 4; ++column)
            QVERIFY(!isEditable(column));
        QVERIFY(isEditable(4));
        clickDayOff();
        for (int column = 0; column < 4; ++column)
            QVERIFY(isEditable(column));
        const auto shift = m_wizard->shiftPage()->shifts().first();
        QVERIFY(!shift.dayOff);
        QCOMPARE(shift.begin, 8 * Hour);
        QCOMPARE(shift.breakEnd, 13 * Hour);
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
        support::addColumns<Rows, QString, QString>({"rows", "shifts", "days"});
        const auto row = [](const char *name, const Rows &rows, const char *shifts, const char *days) {
            QTest::newRow(name) << rows << QString::fromLatin1(shifts) << QString::fromLatin1(days);
        };
        row("two by two", {{8, 20}, {8, 20}, {}, {}}, "8-20", "0 0 - -");
        row("days that differ in the break", {{8, 20, 12, 13}, {8, 20, 13, 14}}, "8-12 13-20 | 8-13 14-20", "0 1");
        row("break of no length", {{8, 20, 12, 12}, {8, 20}}, "8-20", "0 0");
        row("shifts in the order of first use", {{20, 8}, {8, 20}, {}, {20, 8}, {8, 20}}, "20-8 | 8-20", "0 1 - 0 1");
        row("shift of no length", {{0, 0, 0, 0}}, "0-0", "0");
        row("days off only", {{}, {}}, "", "- -");
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
        QTEST(timesOf(schedule.shifts), "shifts");
        QTEST(daysOf(schedule), "days");
    }

    void shouldProposeNorm_data()
    {
        support::addColumns<QTime, QTime, int, int>({"start", "finish", "breakMinutes", "norm"});
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
        QCOMPARE(scheduleview::freeSchedule(*m_wizard->freePage(), {}).color, QStringLiteral("#ff0000"));
        head->setColor(QColor());
        QVERIFY(scheduleview::freeSchedule(*m_wizard->freePage(), {}).color.isEmpty());
    }

private:
    template <class T> T *find(const char *name) { return support::findWidget<T>(*m_wizard->currentPage(), name); }
    void click(QWizard::WizardButton button) { support::clickButton(*m_wizard, button); }
    void clickCheck(const char *name) { support::clickWidget(find<QAbstractButton>(name)); }
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
