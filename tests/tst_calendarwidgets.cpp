#include "calendardayitemdelegate.h"
#include "calendargridview.h"
#include "calendarmonthwidget.h"
#include "calendaryearmodel.h"
#include "calendaryearwidget.h"
#include "clientcache.h"
#include "datanames.h"
#include "dialoghandler.h"
#include "hands.h"
#include "localstorage.h"
#include "parameterizededit.h"
#include "sampleguide.h"
#include "sampleobjects.h"
#include "samplerecords.h"
#include "schedulenamewidget.h"
#include "settings.h"
#include "testcolumns.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTableView>
#include <QToolButton>
#include <QtTest>

#include <memory>

using namespace support;

namespace {

using Days = QList<orvex::SCHEDULE_CALENDAR_DAY>;

const QString ShowDowKey = "scheduleview/calendar_show_dow";
const QString ScaleKey = "scheduleview/calendar_scale";

QTableView *grid(const CalendarWidget &calendar)
{
    return calendar.findChild<QTableView *>("calendarView");
}

CalendarDaysModel *model(const CalendarWidget &calendar)
{
    return calendar.findChild<CalendarDaysModel *>();
}

/// The displayed calendar of the year or the month of a date.
std::unique_ptr<CalendarWidget> calendarOf(bool year, const QDate &date, const Days &days = {})
{
    std::unique_ptr<CalendarWidget> calendar;
    if (year) {
        calendar = std::make_unique<CalendarYearWidget>();
        findWidget<QSpinBox>(*calendar, "sbYear")->setValue(date.year());
    } else {
        auto month = std::make_unique<CalendarMonthWidget>();
        month->setDate(date);
        calendar = std::move(month);
    }
    calendar->setDays(days);
    calendar->resize(1900, 800);
    calendar->show();
    [&calendar] { QVERIFY(QTest::qWaitForWindowExposed(calendar.get())); }();
    return calendar;
}

std::unique_ptr<CalendarWidget> yearOf(int year, const Days &days = {})
{
    return calendarOf(true, QDate(year, 1, 1), days);
}

void click(const CalendarWidget &calendar, const QDate &date, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    clickCell(grid(calendar), model(calendar)->dateToIndex(date), modifiers);
}

void select(const CalendarWidget &calendar, const QList<QDate> &dates)
{
    grid(calendar)->clearSelection();
    for (const QDate &date : dates)
        click(calendar, date, Qt::ControlModifier);
}

/// Opens the menu over the date.
QMenu *menuOf(const CalendarWidget &calendar, const QDate &date)
{
    openContextMenu(grid(calendar), model(calendar)->dateToIndex(date));
    return openedMenu();
}

/// The same, and clicks an entry of a submenu.
void choose(const CalendarWidget &calendar, const QDate &date, const QString &group, const QString &text)
{
    menuOf(calendar, date);
    chooseMenuEntry(group, text);
}

quint32 shiftOn(const CalendarWidget &calendar, const QDate &date)
{
    return model(calendar)->calendarDay(date).shiftId;
}

const QString AssignShift = "Задать смену";
const QString Repeat = "Применить периодичность";
const QString ToMonthEnd = "До конца месяца";
const QString ToYearEnd = "До конца года";

} // namespace

class TestCalendarWidgets : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path()); }

    void init()
    {
        guide::fill();
        Settings::instance()->setValue(ShowDowKey, false);
        Settings::instance()->setValue(ScaleKey, 4);
    }

    void shouldAssignShiftToWeek()
    {
        const auto calendar = yearOf(2026);
        const QDate monday(2026, 3, 2);
        click(*calendar, monday);
        click(*calendar, monday.addDays(4), Qt::ShiftModifier);
        choose(*calendar, monday, AssignShift, "Д Дневная");
        const auto march = model(*calendar)->dateToIndex(monday);
        QCOMPARE(march.siblingAtColumn(1).data().toString(), "40ч.");
        QCOMPARE(calendar->days().size(), 5);
        calendar->setDays(calendar->days()); // as after a second reading
        QVERIFY(calendar->isContinuesSelection());

        choose(*calendar, monday, AssignShift, "Выходной");
        QCOMPARE(shiftOn(*calendar, monday), 0U);
        QCOMPARE(calendar->days().first().date, monday);
    }

    void shouldListShiftsByName()
    {
        // Equal names in different case; one without a code, one with an ampersand.
        replaceGuide({guideShift(1, "2", "Б&в"), guideShift(2, {}, "А"), guideShift(3, "1", "а")}, {});
        QStringList expected{"Справочник", {}, "Выходной", "А", "1 а", "2 Б&&в"};
        const auto ids = orvex::LocalStorage::instance()->constObjects(orvex::SCHEDULE_SHIFT_DATANAME)->keys();
        if (ids.indexOf(2) > ids.indexOf(3)) // equal names are in the guide's order
            expected.swapItemsAt(3, 4);
        const QDate date(2026, 1, 1);
        const auto calendar = yearOf(2026);
        click(*calendar, date);
        const QPointer<QMenu> menu = menuOf(*calendar, date);
        QVERIFY(menu);
        const auto actions = menuEntry(*menu, AssignShift)->menu()->actions();
        QStringList texts;
        for (const QAction *action : actions)
            texts << action->text();
        QCOMPARE(texts, expected);
        QCOMPARE(actions.last()->data().toUInt(), 1U);
        QCOMPARE(actions.last()->toolTip(), "2 Б&в");
        QTest::keyClick(menu, Qt::Key_Escape);
        QTRY_VERIFY(!menu); // destroyed when it closes
        QSignalSpy shown(calendar.get(), &CalendarWidget::showShiftGuides);
        choose(*calendar, date, AssignShift, "Справочник");
        QCOMPARE(shown.size(), 1);
        QVERIFY(calendar->days().isEmpty());
    }

    void shouldEnableMenuBySelection_data()
    {
        addColumns<bool, QList<QDate>, bool>({"year", "dates", "repeat"});
        const QDate first(2021, 8, 1);
        const QDate second(2021, 8, 2);
        const QDate eighth(2021, 8, 8);
        QTest::newRow("nothing") << false << QList<QDate>() << false;
        QTest::newRow("one day") << false << QList{first} << false;
        QTest::newRow("two days with a gap") << true << QList{first, second.addDays(1)} << false;
        QTest::newRow("Sunday and Monday, backwards") << false << QList{second, first} << true;
        QTest::newRow("the same weekday of two weeks") << false << QList{first, eighth} << false;
        QTest::newRow("over the end of a month") << true << QList{first.addDays(-1), first} << true;
    }

    void shouldEnableMenuBySelection()
    {
        QFETCH(bool, year);
        QFETCH(QList<QDate>, dates);
        QFETCH(bool, repeat);
        const auto calendar = calendarOf(year, QDate(2021, 8, 1));
        select(*calendar, dates);
        QCOMPARE(calendar->isContinuesSelection(), repeat);
        QMenu *menu = menuOf(*calendar, QDate(2021, 8, 31));
        QVERIFY(menu);
        QCOMPARE(menuEntry(*menu, AssignShift)->isEnabled(), !dates.isEmpty());
        QCOMPARE(menuEntry(*menu, Repeat)->isEnabled(), repeat);
        QCOMPARE(menuEntry(*menu, Repeat)->menu()->actions().size(), year ? 2 : 1);
        menu->close();
    }

    void shouldOpenMenuAtCurrentDayByKey()
    {
        const auto calendar = yearOf(2026);
        const auto view = grid(*calendar);
        view->setCurrentIndex(model(*calendar)->dateToIndex(QDate(2026, 12, 31)));
        QSignalSpy requested(view, &QWidget::customContextMenuRequested);
        // The platform turns the menu key into this event.
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QApplication::sendEvent(view, &event);
        QCOMPARE(requested, {QVariantList{view->visualRect(view->currentIndex()).center()}});
        QVERIFY(openedMenu() && openedMenu()->close());
    }

    void shouldRepeatToEndOfMonth()
    {
        const QDate friday(2021, 3, 5);
        const QDate last(2021, 3, 31);
        const auto calendar =
            calendarOf(false, friday,
                       {calendarDay(friday, guide::Day, orvex::DayHoliday),
                        calendarDay(friday.addDays(1), guide::Night), calendarDay(friday.addDays(5), guide::Short)});
        select(*calendar, {friday.addDays(2), friday, friday.addDays(1)});
        choose(*calendar, friday, Repeat, ToMonthEnd);
        const QList<quint32> pattern{guide::Day, guide::Night, 0};
        for (QDate date = friday.addDays(3); date <= last; date = date.addDays(1)) {
            QCOMPARE(shiftOn(*calendar, date), pattern.at(int(friday.daysTo(date) % 3)));
            // A holiday's shift is repeated, its mode is not.
            if (shiftOn(*calendar, date) != 0)
                QCOMPARE(model(*calendar)->calendarDay(date).dayMode, 1);
        }
        QCOMPARE(model(*calendar)->calendarDay(friday).dayMode, qint32(orvex::DayHoliday));
        QCOMPARE(model(*calendar)->calendarDayPos(last.addDays(1)), -1);
        // The updated total of the week of 8 March: 8 + 12 + 8 + 12 + 8 h.
        QCOMPARE(model(*calendar)->index(1, 0).data().toString(), "48ч.");

        // Nothing to repeat after the last day and without a selection.
        const int count = calendar->days().size();
        select(*calendar, {last.addDays(-1), last});
        calendar->applyMonthPeriodic();
        QCOMPARE(calendar->days().size(), count);
        grid(*calendar)->clearSelection();
        QSignalSpy changed(model(*calendar), &QAbstractItemModel::dataChanged);
        calendar->applyMonthPeriodic();
        QVERIFY(changed.isEmpty());
    }

    void shouldRepeatAcrossEndOfMonth()
    {
        const QDate start(2024, 1, 30);
        const auto calendar =
            yearOf(2024, {calendarDay(start, guide::Day), calendarDay(start.addDays(1), guide::Night)});
        QMap<QDate, quint32> expected;
        const auto repeat = [&](const QString &period, const QDate &last) {
            choose(*calendar, start, Repeat, period);
            for (QDate date = start; date <= last; date = date.addDays(1))
                expected.insert(date, start.daysTo(date) % 2 == 0 ? guide::Day : guide::Night);
            QCOMPARE(shiftsByDate(calendar->days()), expected);
        };
        select(*calendar, {start, start.addDays(1)});
        repeat(ToMonthEnd, QDate(2024, 2, 29));
        repeat(ToYearEnd, QDate(2024, 12, 31));
        select(*calendar, {QDate(2024, 12, 30), QDate(2024, 12, 31)});
        repeat(ToYearEnd, {});
    }

    void shouldRepaintOncePerBatch()
    {
        const QDate first(2026, 1, 1);
        const auto calendar = yearOf(2026, {calendarDay(first, guide::Day)});
        select(*calendar, {first});
        const auto viewport = grid(*calendar)->viewport();
        QList<bool> enabled;
        connect(model(*calendar), &QAbstractItemModel::dataChanged, this,
                [&] { enabled << viewport->updatesEnabled(); });
        dynamic_cast<CalendarYearWidget &>(*calendar).applyYearPeriodic();
        QCOMPARE(enabled.size(), 364 + 1); // each day, then the totals
        QVERIFY(!enabled.contains(true) && viewport->updatesEnabled());
    }

    void shouldClearAllDays()
    {
        const QDate date(2021, 8, 1);
        const auto calendar =
            calendarOf(false, date, {calendarDay(date, guide::Day), calendarDay(date.addMonths(1), guide::Night)});
        const auto clear = findWidget<QToolButton>(*calendar, "tbClear");
        QTest::mouseClick(clear, Qt::LeftButton);
        QCOMPARE(shiftsByDate(calendar->days()), (QMap<QDate, quint32>{{date, 0}, {date.addMonths(1), 0}}));
        calendar->setDays({});
        QSignalSpy reset(model(*calendar), &QAbstractItemModel::modelReset);
        QTest::mouseClick(clear, Qt::LeftButton);
        QVERIFY(reset.isEmpty());
    }

    void shouldReportShownMonth()
    {
        CalendarMonthWidget calendar;
        const QDate today = QDate::currentDate();
        QCOMPARE(calendar.date(), QDate(today.year(), today.month(), 1));
        calendar.setDate(QDate(2024, 2, 29));
        QSignalSpy changed(&calendar, &CalendarMonthWidget::dateChanged);
        calendar.setDate(QDate(2024, 2, 1));
        QVERIFY(changed.isEmpty());
        calendar.setDays({calendarDay(QDate(2021, 8, 2), guide::Day)});
        calendar.setDate(QDate(2021, 8, 15));
        QCOMPARE(changed, (QList<QVariantList>{{QDate(2021, 2, 1)}, {QDate(2021, 8, 1)}}));
        QCOMPARE(model(calendar)->rowCount(), 6);
        QCOMPARE(calendar.days().size(), 1);
        for (int row = 1; row < 6; ++row)
            QCOMPARE(grid(calendar)->rowHeight(row), grid(calendar)->rowHeight(0));

        calendar.setDate(QDate());
        QVERIFY(!calendar.date().isValid());
        QCOMPARE(model(calendar)->rowCount(), 0);
    }

    void shouldSaveScaleAndDaysOfWeek()
    {
        const auto stored = [this](const QString &key) {
            return QSettings(m_folder.filePath("orvex/client.ini"), QSettings::IniFormat).value(key);
        };
        Settings::instance()->setValue(ScaleKey, 40);
        CalendarYearWidget calendar;
        const auto slider = findWidget<QSlider>(calendar, "hsScale");
        const auto dows = findWidget<QCheckBox>(calendar, "cbShowDayOfWeek");
        QCOMPARE(slider->value(), 16);
        QCOMPARE(stored(ScaleKey).toInt(), 16);
        QVERIFY(!dows->isChecked());

        const int width = grid(calendar)->columnWidth(2);
        slider->setValue(2);
        QCOMPARE(stored(ScaleKey).toInt(), 2);
        QVERIFY(grid(calendar)->columnWidth(2) < width && grid(calendar)->rowHeight(0) < width);

        QSignalSpy changed(model(calendar), &QAbstractItemModel::dataChanged);
        dows->click();
        QCOMPARE(changed.size(), 1);
        QCOMPARE(stored(ShowDowKey).toBool(), true);
        CalendarYearWidget later;
        QVERIFY(findWidget<QCheckBox>(later, "cbShowDayOfWeek")->isChecked());
        QCOMPARE(findWidget<QSlider>(later, "hsScale")->value(), 2);
    }

    void shouldFitTotalsToContents()
    {
        const QVector<Days::value_type> days(1000, calendarDay(QDate(2026, 1, 1), guide::Unknown));
        const auto calendar = yearOf(2026, days.toList());
        QCoreApplication::processEvents();
        const auto header = grid(*calendar)->horizontalHeader();
        const int narrow = header->sectionSize(1);
        replaceGuide({guideShift(guide::Unknown, {}, "Сутки", "11")}, {guideInterval(11, 1, 1)});
        QCOMPARE(model(*calendar)->index(0, 1).data().toString(), "24000ч.");
        QTRY_VERIFY(header->sectionSize(1) > narrow);
        const QAbstractItemView *view = grid(*calendar);
        QCOMPARE(header->sectionSize(1), qMax(view->sizeHintForColumn(1), header->sectionSizeHint(1)));
    }

    void shouldDrawGridLikeTable_data()
    {
        addColumns<bool, QPoint>({"rightToLeft", "scrolled"});
        QTest::newRow("whole") << false << QPoint();
        QTest::newRow("scrolled") << false << QPoint(7, 3);
        QTest::newRow("right to left, scrolled") << true << QPoint(3, 1);
    }

    void shouldDrawGridLikeTable()
    {
        QFETCH(bool, rightToLeft);
        QFETCH(QPoint, scrolled);
        CalendarYearModel model;
        model.setCalendarDays(2026, {calendarDay(QDate(2026, 3, 8), guide::Day)});
        model.setColor("#7bc67e");
        CalendarDayItemDelegate delegate;
        const auto picture = [&](QTableView &view) {
            view.setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
            view.setModel(&model);
            view.setItemDelegate(&delegate);
            view.verticalHeader()->hide();
            view.resizeColumnsToContents();
            view.setColumnHidden(5, true);
            view.resize(700, 300);
            view.show();
            view.horizontalScrollBar()->setValue(scrolled.x());
            view.verticalScrollBar()->setValue(scrolled.y());
            return view.viewport()->grab().toImage();
        };
        CalendarGridView own;
        QTableView table;
        QCOMPARE(picture(own), picture(table));
    }

    void shouldHighlightEmptyName()
    {
        ScheduleNameWidget widget;
        const auto edit = findWidget<ParameterizedEdit>(widget, "leScheduleName");
        QSignalSpy changed(&widget, &ScheduleNameWidget::nameChanged);
        widget.show();
        const QImage highlighted = edit->grab().toImage();
        QVERIFY(!edit->isValid());
        QTest::keyClicks(edit, "  ");
        QVERIFY(!edit->isValid()); // spaces are no name
        QTest::keyClicks(edit, "A");
        QVERIFY(edit->isValid());
        QCOMPARE(changed.size(), 3);
        QCOMPARE(widget.name(), "  A");
        const auto redness = [](const QImage &image) {
            const QColor color = image.pixelColor(image.width() / 2, 0);
            return color.red() - color.green();
        };
        QVERIFY(redness(highlighted) > 80 && redness(edit->grab().toImage()) < 40);
        widget.setEnabledName(false);
        QVERIFY(!edit->isEnabled());
    }

    void shouldChooseColour()
    {
        const QColor old(0x10, 0x20, 0x30);
        const QColor chosen(0xaa, 0xbb, 0xcc);
        for (const bool accept : {true, false}) {
            ScheduleNameWidget widget;
            QCOMPARE(widget.color(), widget.palette().color(QPalette::Base));
            widget.setColorName(old.name());
            widget.show();
            QSignalSpy changed(&widget, &ScheduleNameWidget::colorChanged);
            const DialogHandler handler(accept ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel, [&](QDialog &dialog) {
                auto &colors = dynamic_cast<QColorDialog &>(dialog);
                QCOMPARE(colors.currentColor(), old);
                colors.setCurrentColor(chosen);
            });
            QTest::mouseClick(findWidget<QToolButton>(widget, "tbColor"), Qt::LeftButton);
            QCOMPARE(widget.color(), accept ? chosen : old);
            QCOMPARE(changed, accept ? QList<QVariantList>{{"#aabbcc"}} : QList<QVariantList>());
        }
    }

private:
    QTemporaryDir m_folder;
};

QTEST_MAIN(TestCalendarWidgets)
#include "tst_calendarwidgets.moc"
