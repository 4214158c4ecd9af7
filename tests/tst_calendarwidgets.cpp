#include "calendardayitemdelegate.h"
#include "calendargridview.h"
#include "calendarmonthwidget.h"
#include "calendaryearmodel.h"
#include "calendaryearwidget.h"
#include "clientcache.h"
#include "datanames.h"
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
#include <QPointer>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <memory>

using namespace support;

namespace {

using Days = QList<orvex::SCHEDULE_CALENDAR_DAY>;

const auto ShowDowKey = QStringLiteral("scheduleview/calendar_show_dow");
const auto ScaleKey = QStringLiteral("scheduleview/calendar_scale");

QTableView *grid(const CalendarWidget &calendar)
{
    return calendar.findChild<QTableView *>(QStringLiteral("calendarView"));
}

CalendarDaysModel *model(const CalendarWidget &calendar)
{
    return calendar.findChild<CalendarDaysModel *>();
}

void show(QWidget &widget)
{
    widget.resize(1900, 800);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
}

std::unique_ptr<CalendarYearWidget> yearOf(int year, const Days &days = {})
{
    auto calendar = std::make_unique<CalendarYearWidget>();
    calendar->findChild<QSpinBox *>(QStringLiteral("sbYear"))->setValue(year);
    calendar->setDays(days);
    show(*calendar);
    return calendar;
}

std::unique_ptr<CalendarMonthWidget> monthOf(const QDate &date, const Days &days = {})
{
    auto calendar = std::make_unique<CalendarMonthWidget>();
    calendar->setDate(date);
    calendar->setDays(days);
    show(*calendar);
    return calendar;
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

void requestMenu(const CalendarWidget &calendar, const QDate &date)
{
    openContextMenu(grid(calendar), model(calendar)->dateToIndex(date));
}

/// Opens the menu over the date and clicks an entry of a submenu.
void choose(const CalendarWidget &calendar, const QDate &date, const QString &group, const QString &text)
{
    requestMenu(calendar, date);
    chooseMenuEntry(group, text);
}

quint32 shiftOn(const CalendarWidget &calendar, const QDate &date)
{
    return model(calendar)->calendarDay(date).shiftId;
}

const auto AssignShift = QStringLiteral("Задать смену");
const auto Repeat = QStringLiteral("Применить периодичность");
const auto ToMonthEnd = QStringLiteral("До конца месяца");
const auto ToYearEnd = QStringLiteral("До конца года");

class PaintCounter : public QObject
{
public:
    int count = 0;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

class TestCalendarWidgets : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path());
    }

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
        choose(*calendar, monday, AssignShift, QStringLiteral("Д Дневная"));
        const auto march = model(*calendar)->dateToIndex(monday);
        QCOMPARE(march.siblingAtColumn(1).data().toString(), QStringLiteral("40ч."));
        QCOMPARE(calendar->days().size(), 5);
        calendar->setDays(calendar->days()); // as after a second reading
        QVERIFY(calendar->isContinuesSelection());

        choose(*calendar, monday, AssignShift, QStringLiteral("Выходной"));
        QCOMPARE(shiftOn(*calendar, monday), 0U);
        QCOMPARE(calendar->days().first().date, monday);
    }

    void shouldListShiftsByName()
    {
        // Equal names in different case; one without a code, one with an ampersand.
        const auto shift = [](quint32 id, const char *code, const char *name) {
            return guideShift(id, QString::fromUtf8(code), QString::fromUtf8(name));
        };
        replaceGuide({shift(1, "2", "б&в"), shift(2, "", "А"), shift(3, "1", "а")}, {});
        QStringList sameName;
        for (const auto &object : *orvex::LocalStorage::instance()->constObjects(orvex::SCHEDULE_SHIFT_DATANAME)) {
            if (object.id != 1)
                sameName << (object.id == 2 ? QStringLiteral("А") : QStringLiteral("1 а"));
        }
        const auto calendar = yearOf(2026);
        click(*calendar, QDate(2026, 1, 1));
        requestMenu(*calendar, QDate(2026, 1, 1));
        QPointer<QMenu> menu = openedMenu();
        QVERIFY(menu);
        QStringList texts;
        const auto actions = menuEntry(*menu, AssignShift)->menu()->actions();
        for (const QAction *action : actions)
            texts << (action->isSeparator() ? QStringLiteral("-") : action->text());
        QCOMPARE(texts,
                 QStringList({QStringLiteral("Справочник"), QStringLiteral("-"), QStringLiteral("Выходной")}) + sameName
                     + QStringList(QStringLiteral("2 б&&в")));
        const QAction *last = actions.last();
        QCOMPARE(last->data().toUInt(), 1U);
        QCOMPARE(last->toolTip(), QStringLiteral("2 б&в"));
        QTest::keyClick(menu, Qt::Key_Escape);
        QTRY_VERIFY(!menu); // destroyed when it closes
        QSignalSpy shown(calendar.get(), &CalendarWidget::showShiftGuides);
        choose(*calendar, QDate(2026, 1, 1), AssignShift, QStringLiteral("Справочник"));
        QCOMPARE(shown.size(), 1);
        QVERIFY(calendar->days().isEmpty());
    }

    void shouldEnableMenuBySelection_data()
    {
        addColumns<bool, QList<QDate>, bool, bool>({"year", "dates", "assign", "repeat"});
        const QDate first(2021, 8, 1);
        for (const bool year : {false, true}) {
            const auto row = [year](const char *name) -> QTestData & {
                return QTest::newRow(qPrintable(QLatin1String(year ? "year: " : "month: ") + QLatin1String(name)))
                    << year;
            };
            row("nothing") << QList<QDate>() << false << false;
            row("one day") << QList<QDate>{first} << true << false;
            row("two days with a gap") << QList<QDate>{first, first.addDays(2)} << true << false;
            row("Sunday and Monday, backwards") << QList<QDate>{first.addDays(8), first.addDays(7)} << true << true;
            row("the same weekday of two weeks") << QList<QDate>{first, first.addDays(7)} << true << false;
        }
        QTest::newRow("year: over the end of a month")
            << true << QList<QDate>{first.addDays(-1), first} << true << true;
    }

    void shouldEnableMenuBySelection()
    {
        QFETCH(bool, year);
        QFETCH(QList<QDate>, dates);
        QFETCH(bool, assign);
        QFETCH(bool, repeat);
        std::unique_ptr<CalendarWidget> calendar;
        if (year)
            calendar = yearOf(2021);
        else
            calendar = monthOf(QDate(2021, 8, 1));
        select(*calendar, dates);
        QCOMPARE(calendar->isContinuesSelection(), repeat);
        requestMenu(*calendar, QDate(2021, 8, 31));
        QMenu *menu = openedMenu();
        QVERIFY(menu);
        QCOMPARE(menuEntry(*menu, AssignShift)->isEnabled(), assign);
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
        QVERIFY(openedMenu());
        QCOMPARE(requested.size(), 1);
        QCOMPARE(requested.first().at(0).toPoint(), view->visualRect(view->currentIndex()).center());
        openedMenu()->close();
    }

    void shouldRepeatToEndOfMonth()
    {
        const QDate friday(2021, 3, 5);
        auto holiday = calendarDay(friday, guide::Day, orvex::DayHoliday);
        const auto calendar = monthOf(
            friday,
            {holiday, calendarDay(friday.addDays(1), guide::Night), calendarDay(friday.addDays(5), guide::Short)});
        select(*calendar, {friday.addDays(2), friday, friday.addDays(1)});
        choose(*calendar, friday, Repeat, ToMonthEnd);
        const QList<quint32> pattern{guide::Day, guide::Night, 0};
        for (QDate date = friday.addDays(3); date.month() == 3; date = date.addDays(1)) {
            QCOMPARE(shiftOn(*calendar, date), pattern.at(int(friday.daysTo(date) % 3)));
            // A holiday's shift is repeated, its mode is not.
            if (shiftOn(*calendar, date) != 0)
                QCOMPARE(model(*calendar)->calendarDay(date).dayMode, 1);
        }
        QCOMPARE(model(*calendar)->calendarDay(friday).dayMode, qint32(orvex::DayHoliday));
        QCOMPARE(model(*calendar)->calendarDayPos(QDate(2021, 4, 1)), -1);
        // The updated total of the week of 8 March: 8 + 12 + 8 + 12 + 8 h.
        QCOMPARE(model(*calendar)->index(1, 0).data().toString(), QStringLiteral("48ч."));
    }

    void shouldRepeatNothingAfterEndOfMonth()
    {
        const QDate last(2021, 3, 31);
        const auto calendar = monthOf(last, {calendarDay(last, guide::Day)});
        select(*calendar, {last.addDays(-1), last});
        calendar->applyMonthPeriodic();
        QCOMPARE(calendar->days().size(), 1);

        grid(*calendar)->clearSelection();
        QSignalSpy changed(model(*calendar), &QAbstractItemModel::dataChanged);
        calendar->applyMonthPeriodic();
        QVERIFY(changed.isEmpty());
    }

    void shouldRepeatAcrossEndOfMonth_data()
    {
        addColumns<int, QString, QDate>({"year", "period", "last"});
        QTest::newRow("common February") << 2023 << ToMonthEnd << QDate(2023, 2, 28);
        QTest::newRow("leap February") << 2024 << ToMonthEnd << QDate(2024, 2, 29);
        QTest::newRow("year") << 2024 << ToYearEnd << QDate(2024, 12, 31);
    }

    void shouldRepeatAcrossEndOfMonth()
    {
        QFETCH(int, year);
        QFETCH(QString, period);
        QFETCH(QDate, last);
        const QDate start(year, 1, 30);
        const auto calendar =
            yearOf(year, {calendarDay(start, guide::Day), calendarDay(start.addDays(1), guide::Night)});
        select(*calendar, {start, start.addDays(1)});
        choose(*calendar, start, Repeat, period);
        QCOMPARE(calendar->days().size(), int(start.daysTo(last)) + 1);
        for (QDate date = start; date <= last; date = date.addDays(1))
            QCOMPARE(shiftOn(*calendar, date), start.daysTo(date) % 2 == 0 ? guide::Day : guide::Night);

        const QDate yearEnd(year, 12, 31);
        const int before = calendar->days().size();
        select(*calendar, {yearEnd.addDays(-1), yearEnd});
        calendar->applyYearPeriodic();
        QCOMPARE(calendar->days().size(), before);
    }

    void shouldRepaintOncePerBatch()
    {
        const QDate first(2026, 1, 1);
        const auto calendar = yearOf(2026, {calendarDay(first, guide::Day)});
        select(*calendar, {first});
        QCoreApplication::processEvents();
        QSignalSpy changed(model(*calendar), &QAbstractItemModel::dataChanged);
        PaintCounter paints;
        grid(*calendar)->viewport()->installEventFilter(&paints);
        calendar->applyYearPeriodic();
        QCOMPARE(changed.size(), 364 + 1); // each day, then the totals
        QTRY_VERIFY(paints.count > 0);
        QCoreApplication::processEvents();
        QCOMPARE(paints.count, 1);
        QVERIFY(grid(*calendar)->viewport()->updatesEnabled());
    }

    void shouldClearAllDays()
    {
        const QDate date(2021, 8, 1);
        const auto calendar =
            monthOf(date, {calendarDay(date, guide::Day), calendarDay(date.addMonths(1), guide::Night)});
        const auto clear = calendar->findChild<QToolButton *>(QStringLiteral("tbClear"));
        QTest::mouseClick(clear, Qt::LeftButton);
        QCOMPARE(calendar->days().size(), 2);
        const auto days = calendar->days();
        for (const auto &day : days)
            QVERIFY(day.shiftId == 0 && day.date.isValid());
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
        QCOMPARE(changed.size(), 2);
        QCOMPARE(changed.at(0).at(0).toDate(), QDate(2021, 2, 1));
        QCOMPARE(changed.at(1).at(0).toDate(), QDate(2021, 8, 1));
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
            return QSettings(m_folder.filePath(QStringLiteral("orvex/client.ini")), QSettings::IniFormat).value(key);
        };
        Settings::instance()->setValue(ScaleKey, 40);
        CalendarYearWidget calendar;
        const auto slider = calendar.findChild<QSlider *>(QStringLiteral("hsScale"));
        const auto dows = calendar.findChild<QCheckBox *>(QStringLiteral("cbShowDayOfWeek"));
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
        QVERIFY(later.findChild<QCheckBox *>(QStringLiteral("cbShowDayOfWeek"))->isChecked());
        QCOMPARE(later.findChild<QSlider *>(QStringLiteral("hsScale"))->value(), 2);
    }

    void shouldFitTotalsToContents()
    {
        Days days;
        for (int i = 0; i < 1000; ++i)
            days.append(calendarDay(QDate(2026, 1, 1), guide::Unknown));
        const auto calendar = yearOf(2026, days);
        QCoreApplication::processEvents();
        const auto header = grid(*calendar)->horizontalHeader();
        const int narrow = header->sectionSize(1);
        replaceGuide({guideShift(guide::Unknown, {}, QStringLiteral("Сутки"), QStringLiteral("11"))},
                     {guideInterval(11, 1, 1)});
        QCOMPARE(model(*calendar)->index(0, 1).data().toString(), QStringLiteral("24000ч."));
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
        model.setColor(QStringLiteral("#7bc67e"));
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
        const auto edit = widget.findChild<ParameterizedEdit *>(QStringLiteral("leScheduleName"));
        QSignalSpy changed(&widget, &ScheduleNameWidget::nameChanged);
        widget.show();
        const QImage highlighted = edit->grab().toImage();
        QVERIFY(!edit->isValid());
        QTest::keyClicks(edit, QStringLiteral("  "));
        QVERIFY(!edit->isValid()); // spaces are no name
        QTest::keyClicks(edit, QStringLiteral("A"));
        QVERIFY(edit->isValid());
        QCOMPARE(changed.size(), 3);
        QCOMPARE(widget.name(), QStringLiteral("  A"));
        const auto redness = [](const QImage &image) {
            const QColor color = image.pixelColor(image.width() / 2, 0);
            return color.red() - color.green();
        };
        QVERIFY(redness(highlighted) > 80);
        QVERIFY(redness(edit->grab().toImage()) < 40);
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
            QTimer::singleShot(0, &widget, [&] {
                const auto dialog = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
                QVERIFY(dialog);
                QCOMPARE(dialog->currentColor(), old);
                dialog->setCurrentColor(chosen);
                QTest::keyClick(dialog, accept ? Qt::Key_Return : Qt::Key_Escape);
            });
            QTest::mouseClick(widget.findChild<QToolButton *>(QStringLiteral("tbColor")), Qt::LeftButton);
            QCOMPARE(widget.color(), accept ? chosen : old);
            QCOMPARE(changed.size(), accept ? 1 : 0);
            if (accept)
                QCOMPARE(changed.first().at(0).toString(), QStringLiteral("#aabbcc"));
        }
    }

private:
    QTemporaryDir m_folder;
};

QTEST_MAIN(TestCalendarWidgets)
#include "tst_calendarwidgets.moc"
