#include "calendardayitemdelegate.h"
#include "calendarmonthitemdelegate.h"
#include "calendarmonthmodel.h"
#include "calendaryearmodel.h"
#include "clientcache.h"
#include "sampleguide.h"
#include "sampleobjects.h"
#include "samplerecords.h"
#include "scheduleutil.h"
#include "testcolumns.h"
#include "tqguiglobals.h"

#include <QAbstractItemModelTester>
#include <QPainter>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace support;

namespace {

using Days = QList<orvex::SCHEDULE_CALENDAR_DAY>;
using Tester = QAbstractItemModelTester;

constexpr int ShiftIdRole = CalendarDaysModel::ShiftIdRole;
constexpr int DateRole = CalendarDaysModel::DateRole;
const QBrush OutsideBrush(QColor(0xe5, 0xe5, 0xe5));

/// A model of the month or the year of a date.
std::unique_ptr<CalendarDaysModel> makeModel(bool year, const QDate &date, const Days &days = {})
{
    if (year) {
        auto model = std::make_unique<CalendarYearModel>();
        model->setCalendarDays(date.year(), days);
        return model;
    }
    auto model = std::make_unique<CalendarMonthModel>();
    model->setCalendarDays(date, days);
    return model;
}

QVariant cell(const CalendarDaysModel &model, const QDate &date, int role)
{
    return model.dateToIndex(date).data(role);
}

/// Draws text in exactly one colour.
QFont unsmoothed()
{
    QFont font;
    font.setStyleStrategy(QFont::NoAntialias);
    return font;
}

/// A painted cell of 60 x 60 pixels.
QImage paintCell(const QAbstractItemDelegate &delegate, const QModelIndex &index, const QColor &base,
                 const QColor &text, const QFont &font = QFont())
{
    QStyleOptionViewItem option;
    option.rect = QRect(0, 0, 60, 60);
    option.state = QStyle::State_Enabled | QStyle::State_Active;
    option.font = font;
    option.palette.setColor(QPalette::Base, base);
    option.palette.setColor(QPalette::Text, text);
    QImage image(60, 60, QImage::Format_RGB32);
    image.fill(base);
    QPainter painter(&image);
    painter.setFont(font);
    delegate.paint(&painter, option, index);
    return image;
}

} // namespace

class TestCalendarModels : public QObject
{
    Q_OBJECT

private slots:
    void init() { guide::fill(); }

    void shouldLayOutMonthByWeeks_data()
    {
        addColumns<QDate, int, int>({"first", "rows", "firstColumn"});
        QTest::newRow("28 days from a Monday") << QDate(2021, 2, 1) << 4 << 1;
        QTest::newRow("31 days from a Sunday") << QDate(2021, 8, 1) << 6 << 7;
        QTest::newRow("leap February") << QDate(2024, 2, 1) << 5 << 4;
        QTest::newRow("30 days that end on a Sunday") << QDate(2023, 4, 1) << 5 << 6;
        QTest::newRow("with week 53") << QDate(2020, 12, 1) << 5 << 2;
        QTest::newRow("starts in week 53 of the year before") << QDate(2021, 1, 1) << 5 << 5;
    }

    void shouldLayOutMonthByWeeks()
    {
        QFETCH(QDate, first);
        QFETCH(int, rows);
        QFETCH(int, firstColumn);
        CalendarMonthModel model;
        Tester tester(&model, Tester::FailureReportingMode::QtTest);
        model.setDate(first);

        QCOMPARE(model.rowCount(), rows);
        QCOMPARE(model.columnCount(), 8);
        QCOMPARE(model.headerData(7, Qt::Horizontal).toString(), QLocale().dayName(7, QLocale::ShortFormat));
        QCOMPARE(model.dateToIndex(first), model.index(0, firstColumn));
        int inside = 0;
        for (int row = 0; row < rows; ++row) {
            QCOMPARE(model.flags(model.index(row, 0)), Qt::ItemFlags(Qt::ItemIsEnabled));
            for (int column = 1; column <= 7; ++column) {
                const QModelIndex index = model.index(row, column);
                const QDate date = model.dateFromIndex(index);
                QCOMPARE(index.data(DateRole).toDate(), date);
                if (!date.isValid()) {
                    QCOMPARE(index.flags(), Qt::ItemFlags());
                    QCOMPARE(index.data(Qt::BackgroundRole).value<QBrush>(), OutsideBrush);
                    QVERIFY(!index.data().isValid() && !index.data(Qt::ToolTipRole).isValid());
                    continue;
                }
                QCOMPARE(date, first.addDays(inside++));
                QCOMPARE(date.dayOfWeek(), column);
                QCOMPARE(model.dateToIndex(date), index);
                QCOMPARE(index.flags(), Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            }
        }
        QCOMPARE(inside, first.daysInMonth());
        QVERIFY(!model.dateToIndex(first.addDays(-1)).isValid());
        QVERIFY(!model.dateToIndex(first.addMonths(1)).isValid());
    }

    void shouldLayOutYearByMonths_data()
    {
        addColumns<int, int>({"year", "days"});
        QTest::newRow("common year") << 2023 << 365;
        QTest::newRow("leap year") << 2024 << 366;
        QTest::newRow("no year") << 0 << 0;
    }

    void shouldLayOutYearByMonths()
    {
        QFETCH(int, year);
        QFETCH(int, days);
        CalendarYearModel model;
        Tester tester(&model, Tester::FailureReportingMode::QtTest);
        model.setYear(year);

        QCOMPARE(model.rowCount(), 12);
        QCOMPARE(model.columnCount(), 33);
        QCOMPARE(model.index(1, 0).data().toString(), QLocale().monthName(2, QLocale::LongFormat));
        QCOMPARE(model.headerData(32, Qt::Horizontal).toString(), QStringLiteral("31"));
        int inside = 0;
        for (int row = 0; row < 12; ++row) {
            QCOMPARE(model.index(row, 1).flags(), Qt::ItemFlags(Qt::ItemIsEnabled));
            for (const int role : {int(Qt::ToolTipRole), int(Qt::BackgroundRole), int(CalendarDaysModel::ShiftIdRole)})
                QVERIFY(!model.index(row, 0).data(role).isValid() && !model.index(row, 1).data(role).isValid());
            for (int column = 2; column < 33; ++column) {
                const QModelIndex index = model.index(row, column);
                const QDate date(year, row + 1, column - 1);
                QCOMPARE(model.dateFromIndex(index), date);
                QCOMPARE(model.dateToIndex(date), date.isValid() ? index : QModelIndex());
                QCOMPARE(bool(index.flags() & Qt::ItemIsSelectable), date.isValid());
                QCOMPARE(index.data(Qt::BackgroundRole), date.isValid() ? QVariant() : QVariant(OutsideBrush));
                inside += date.isValid() ? 1 : 0;
            }
        }
        QCOMPARE(inside, days);
    }

    void shouldDescribeDay_data()
    {
        addColumns<quint32, int, QVariant, QString>({"shift", "mode", "hours", "toolTip"});
        const auto row = [](const char *name, quint32 shift, int mode, int hours, const char *title, const char *span,
                            const char *rest = "0", const char *night = "0") {
            const QString text = QStringLiteral("29 Feb 2024%1<br/>%2<br/>Перерыв: %3ч<br/>Часы: %4ч<br/>Ночные: %5ч")
                                     .arg(QString::fromUtf8(title), QLatin1String(span), QLatin1String(rest))
                                     .arg(hours)
                                     .arg(QLatin1String(night));
            QTest::newRow(name) << shift << mode << QVariant(hours) << text;
        };
        const char *const none = "00:00:00 - 00:00:00";
        row("day shift", guide::Day, 1, 8, " - Дневная", "08:00:00 - 17:00:00", "1");
        row("over midnight", guide::Night, 1, 12, " - Ночная", "20:00:00 - 08:00:00", "0", "8");
        row("a minute short of 8 h", guide::Short, 1, 7, " - Неполная", "09:00:00 - 16:59:00");
        row("pre-holiday", guide::Day, 3, 7, " - Дневная", "08:00:00 - 17:00:00", "1");
        row("without a shift", 0, 1, 0, " - ", none);
        row("unknown shift", guide::Unknown, 1, 0, " - ", none);
        row("shift -1", ~0U, 1, 0, "", none);
        const QString off = QStringLiteral("29 Feb 2024 - Выходной");
        QTest::newRow("day off with a shift") << guide::Day << 0 << QVariant() << off;
        QTest::newRow("public holiday with a shift") << guide::Day << 2 << QVariant() << off;
    }

    void shouldDescribeDay()
    {
        QFETCH(quint32, shift);
        QFETCH(int, mode);
        QFETCH(QVariant, hours);
        QFETCH(QString, toolTip);
        const QDate date(2024, 2, 29);
        for (const bool year : {false, true}) {
            // The second record of the date must be ignored.
            const auto model =
                makeModel(year, date, {calendarDay(date, shift, mode), calendarDay(date, guide::Short, 1 - mode)});
            model->setColor(QStringLiteral("#336699"));
            QCOMPARE(cell(*model, date, Qt::DisplayRole), hours);
            QCOMPARE(cell(*model, date, Qt::ToolTipRole).toString(), toolTip);
            QCOMPARE(cell(*model, date, ShiftIdRole), QVariant(shift));
            const QBrush tint(QColor(0x33, 0x66, 0x99));
            QCOMPARE(cell(*model, date, Qt::BackgroundRole), hours.isValid() ? QVariant(tint) : QVariant());

            const QDate empty = date.addDays(-1);
            QVERIFY(!cell(*model, empty, Qt::DisplayRole).isValid());
            QVERIFY(!cell(*model, empty, ShiftIdRole).isValid());
            QCOMPARE(cell(*model, empty, Qt::ToolTipRole).toString(), QStringLiteral("28 Feb 2024 - Выходной"));
        }
    }

    void shouldEscapeNameInToolTip()
    {
        replaceGuide({guideShift(1, {}, QStringLiteral("<img src=x>&"))}, {});
        const QDate date(2024, 2, 29);
        const auto model = makeModel(false, date, {calendarDay(date, 1)});
        QVERIFY(cell(*model, date, Qt::ToolTipRole).toString().contains(QStringLiteral("&lt;img src=x&gt;&amp;<br/>")));
    }

    void shouldTotalAllRecordsOfShownDates()
    {
        const QDate sunday(2021, 8, 1);
        const QDate monday = sunday.addDays(1);
        Days days{calendarDay(sunday, guide::Day),
                  calendarDay(monday, guide::Day),
                  calendarDay(monday, guide::Short), // a second record of the date
                  calendarDay(monday.addDays(1), guide::Day, orvex::DayHoliday),
                  calendarDay(QDate(2021, 8, 31), guide::Night),
                  calendarDay(QDate(2021, 7, 31), guide::Night),
                  calendarDay(QDate(2020, 8, 2), guide::Night),
                  calendarDay(QDate(), guide::Night)};
        CalendarMonthModel month;
        month.setCalendarDays(sunday, days);
        QCOMPARE(month.weekNormTotal(0), 8U * 3600);
        QCOMPARE(month.weekNormTotal(1), 16U * 3600 - 60);
        QCOMPARE(month.index(1, 0).data().toString(), QStringLiteral("15ч."));
        QCOMPARE(month.weekNormTotal(5), 12U * 3600);
        QCOMPARE(month.weekNormTotal(6), 0U);
        QCOMPARE(month.calendarDays().size(), days.size());

        CalendarYearModel year;
        year.setCalendarDays(2021, days);
        QCOMPARE(year.monthNormTotal(2021, 8), 36U * 3600 - 60);
        QCOMPARE(CalendarYearModel::monthNormTotal(days, 2021, 8), 36U * 3600 - 60);
        QCOMPARE(year.index(7, 1).data().toString(), QStringLiteral("35ч."));
        QCOMPARE(year.monthNormTotal(2020, 8), 12U * 3600);
        QCOMPARE(year.monthNormTotal(2021, 13), 0U);
        QCOMPARE(CalendarYearModel::monthNormTotal(days, 0, 0), 0U);
    }

    void shouldAssignShiftToDate_data()
    {
        QTest::addColumn<bool>("year");
        QTest::newRow("month") << false;
        QTest::newRow("year") << true;
    }

    void shouldAssignShiftToDate()
    {
        QFETCH(bool, year);
        const QDate date(2024, 2, 29);
        auto holiday = calendarDay(date, guide::Night, orvex::DayHoliday);
        holiday.revision = 5;
        holiday.intervals = {{0, 3600}};
        const auto model = makeModel(year, date, {holiday, calendarDay(date, guide::Short)});
        Tester tester(model.get(), Tester::FailureReportingMode::QtTest);
        QSignalSpy changed(model.get(), &QAbstractItemModel::dataChanged);
        const auto assign = [&](const QDate &day, const QVariant &value) {
            return model->setData(model->dateToIndex(day), value, ShiftIdRole);
        };

        QVERIFY(assign(date, guide::Day));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.first().at(0).toModelIndex(), model->dateToIndex(date));
        QCOMPARE(changed.first().at(1).toModelIndex(), model->dateToIndex(date));
        auto day = model->calendarDay(date);
        QCOMPARE(day.shiftId, guide::Day);
        QCOMPARE(day.dayMode, 1);
        QCOMPARE(day.revision, qint64(5));
        QVERIFY(day.intervals.isEmpty());
        QCOMPARE(model->calendarDays().at(1).shiftId, guide::Short);

        const QDate fresh = date.addDays(-28);
        QVERIFY(assign(fresh, 0)); // no record to clear
        QCOMPARE(model->calendarDays().size(), 2);
        QVERIFY(assign(fresh, qint64(guide::Night) + (qint64(1) << 32))); // the low 32 bits count
        QCOMPARE(model->calendarDayPos(fresh), 2);
        QCOMPARE(cell(*model, fresh, Qt::DisplayRole), QVariant(12));

        QVERIFY(assign(date, 0));
        day = model->calendarDay(date);
        QCOMPARE(day.date, date);
        QVERIFY(ScheduleUtil::isHoliday(day) && day.shiftId == 0);
        QCOMPARE(model->calendarDays().size(), 3);
        QCOMPARE(changed.size(), 4);
    }

    void shouldRefuseShiftOutsideDates()
    {
        CalendarMonthModel month;
        month.setDate(QDate(2021, 8, 1));
        CalendarYearModel year;
        year.setYear(2023);
        QSignalSpy monthChanged(&month, &QAbstractItemModel::dataChanged);
        QSignalSpy yearChanged(&year, &QAbstractItemModel::dataChanged);
        QVERIFY(!month.setData(month.index(0, 0), 1, ShiftIdRole));
        QVERIFY(!month.setData(month.index(0, 1), 1, ShiftIdRole)); // before the 1st
        QVERIFY(!month.setData(month.index(0, 7), 1, Qt::EditRole));
        QVERIFY(!month.setData({}, 1, ShiftIdRole));
        QVERIFY(!year.setData(year.index(1, 30), 1, ShiftIdRole)); // 29 February 2023
        QVERIFY(!year.setData(year.index(1, 1), 1, ShiftIdRole));
        QVERIFY(month.calendarDays().isEmpty() && year.calendarDays().isEmpty());
        QVERIFY(monthChanged.isEmpty() && yearChanged.isEmpty());
    }

    void shouldReportChangedColumns()
    {
        CalendarMonthModel month;
        CalendarYearModel year;
        QSignalSpy monthChanged(&month, &QAbstractItemModel::dataChanged);
        QSignalSpy yearChanged(&year, &QAbstractItemModel::dataChanged);
        month.updateTotal();
        month.updateDays();
        QVERIFY(monthChanged.isEmpty()); // no month, no cells

        month.setDate(QDate(2021, 2, 1));
        month.updateTotal();
        month.updateDays();
        month.setColor(QStringLiteral("blue"));
        year.updateTotal();
        year.setColor(QStringLiteral("blue"));
        const auto range = [](const QSignalSpy &spy, int i) {
            return qMakePair(spy.at(i).at(0).toModelIndex(), spy.at(i).at(1).toModelIndex());
        };
        QCOMPARE(monthChanged.size(), 2);
        QCOMPARE(range(monthChanged, 0), qMakePair(month.index(0, 0), month.index(3, 0)));
        QCOMPARE(range(monthChanged, 1), qMakePair(month.index(0, 1), month.index(3, 7)));
        QCOMPARE(yearChanged.size(), 2);
        QCOMPARE(range(yearChanged, 0), qMakePair(year.index(0, 1), year.index(11, 1)));
        QCOMPARE(range(yearChanged, 1), qMakePair(year.index(0, 2), year.index(11, 32)));
    }

    void shouldFindFirstRecordInLongList()
    {
        QRandomGenerator random(4);
        Days days;
        for (int i = 0; i < 100000; ++i) {
            const QDate date = i % 100 == 0 ? QDate() : QDate(2020, 1, 1).addDays(random.bounded(3000));
            days.append(calendarDay(date, quint32(random.bounded(5)), random.bounded(4)));
        }
        CalendarYearModel model;
        model.setCalendarDays(2024, days);
        for (int i = 0; i < 400; ++i) {
            const QDate date = QDate(2024, 1, 1).addDays(random.bounded(366));
            model.setData(model.dateToIndex(date), random.bounded(4), ShiftIdRole);
        }
        days = model.calendarDays();
        for (QDate date(2023, 12, 1); date < QDate(2025, 2, 1); date = date.addDays(1)) {
            const auto first = std::find_if(days.cbegin(), days.cend(), [&](const auto &d) { return d.date == date; });
            const auto expected = first == days.cend() ? -1 : int(first - days.cbegin());
            QCOMPARE(model.calendarDayPos(date), expected);
        }
        for (int month = 1; month <= 12; ++month)
            QCOMPARE(model.monthNormTotal(2024, month), CalendarYearModel::monthNormTotal(days, 2024, month));
        QCOMPARE(model.calendarDayPos(QDate()), -1);
    }

    void shouldDrawReadableText_data()
    {
        addColumns<QString, QColor, QColor, QColor>({"color", "base", "background", "text"});
        const QColor dark(0x20, 0x20, 0x20);
        QTest::newRow("yellow, dark") << "#ffff00" << dark << QColor(0xff, 0xff, 0) << QColor(Qt::black);
        QTest::newRow("navy, light") << "#000080" << QColor(Qt::white) << QColor(0, 0, 0x80) << QColor(Qt::white);
        QTest::newRow("no colour, dark") << "" << dark << dark << QColor(Qt::white);
        QTest::newRow("unknown colour") << "nonsense" << QColor(Qt::white) << QColor(Qt::white) << QColor(Qt::black);
        QTest::newRow("transparent, dark") << "transparent" << dark << dark << QColor(Qt::white);
        QTest::newRow("half transparent, dark") << "#80ff0000" << dark << QColor(0x90, 0x10, 0x10) << QColor(Qt::white);
    }

    void shouldDrawReadableText()
    {
        QFETCH(QString, color);
        QFETCH(QColor, base);
        QFETCH(QColor, background);
        QFETCH(QColor, text);
        const QDate date(2024, 2, 29);
        const auto model = makeModel(true, date, {calendarDay(date, guide::Day)});
        model->setColor(color);
        const QImage image = paintCell(CalendarDayItemDelegate(), model->dateToIndex(date), base, text, unsmoothed());

        QCOMPARE(image.pixelColor(58, 58), background);
        int written = 0;
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 60; ++x) {
                const QColor pixel = image.pixelColor(x, y);
                QVERIFY(pixel == background || pixel == text);
                written += pixel == text ? 1 : 0;
            }
        }
        QVERIFY(written > 0);
    }

    void shouldNotTintDayWithoutRecord()
    {
        const QDate date(2024, 2, 29);
        const auto model = makeModel(false, date);
        const QModelIndex index = model->dateToIndex(date);
        const QColor base(0x20, 0x20, 0x20);
        CalendarDayItemDelegate year;
        QImage plain(60, 60, QImage::Format_RGB32);
        plain.fill(base);
        QCOMPARE(paintCell(year, index, base, Qt::white), plain);

        // Only the month's day number is drawn, small and in the corner.
        QImage numbered = paintCell(CalendarMonthItemDelegate(), index, base, Qt::white);
        QFont small;
        small.setPointSize(6);
        const QRect corner(QPoint(1, 1), QFontMetrics(small).size(0, QStringLiteral("29")));
        QVERIFY(numbered.copy(corner) != plain.copy(corner));
        QPainter(&numbered).fillRect(corner, base);
        QCOMPARE(numbered, plain);

        year.setShowDow(true);
        QVERIFY(paintCell(year, index, base, Qt::white) != plain);
    }

    void shouldKeepLinesVisibleBetweenDarkCellsWithoutDate()
    {
        const auto model = makeModel(true, QDate(2023, 2, 28));
        const QModelIndex undated = model->dateToIndex(QDate(2023, 2, 28)).siblingAtColumn(32);
        QVERIFY(!undated.data(DateRole).toDate().isValid());
        const QColor base(0x20, 0x20, 0x20);
        const QColor cell = paintCell(CalendarDayItemDelegate(), undated, base, Qt::white).pixelColor(30, 30);
        QVERIFY(cell.lightness() > base.lightness());
        QVERIFY(cell.lightness() < TQGuiGlobals::lineColor().lightness());
    }
};

QTEST_MAIN(TestCalendarModels)
#include "tst_calendarmodels.moc"
