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

#include <QPainter>
#include <QtTest>

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

/// A painted cell of 60 x 60 pixels, its text in exactly one colour.
QImage paintCell(const QAbstractItemDelegate &delegate, const QModelIndex &index, const QColor &base,
                 const QColor &text = Qt::white)
{
    QStyleOptionViewItem option;
    option.rect = QRect(0, 0, 60, 60);
    option.state = QStyle::State_Enabled | QStyle::State_Active;
    option.font.setStyleStrategy(QFont::NoAntialias);
    option.palette.setColor(QPalette::Base, base);
    option.palette.setColor(QPalette::Text, text);
    QImage image(60, 60, QImage::Format_RGB32);
    image.fill(base);
    QPainter painter(&image);
    painter.setFont(option.font);
    delegate.paint(&painter, option, index);
    return image;
}

} // namespace

class TestCalendarModels : public QObject
{
    Q_OBJECT

private slots:
    void init() { guide::fill(); }

    void shouldLayOutDates_data()
    {
        addColumns<bool, QDate, int>({"year", "first", "rows"});
        QTest::newRow("28 days from a Monday") << false << QDate(2021, 2, 1) << 4;
        QTest::newRow("31 days from a Sunday") << false << QDate(2021, 8, 1) << 6;
        QTest::newRow("leap February") << false << QDate(2024, 2, 1) << 5;
        QTest::newRow("30 days that end on a Sunday") << false << QDate(2023, 4, 1) << 5;
        QTest::newRow("with week 53") << false << QDate(2020, 12, 1) << 5;
        QTest::newRow("starts in week 53 of the year before") << false << QDate(2021, 1, 1) << 5;
        QTest::newRow("common year") << true << QDate(2023, 1, 1) << 12;
        QTest::newRow("leap year") << true << QDate(2024, 1, 1) << 12;
        QTest::newRow("no year") << true << QDate() << 12;
    }

    void shouldLayOutDates()
    {
        QFETCH(bool, year);
        QFETCH(QDate, first);
        const auto model = makeModel(year, first);
        Tester tester(model.get(), Tester::FailureReportingMode::QtTest);
        const int columns = year ? 33 : 8;
        const int firstColumn = year ? 2 : 1;
        QTEST(model->rowCount(), "rows");
        QCOMPARE(model->columnCount(), columns);
        QCOMPARE(model->headerData(columns - 1, Qt::Horizontal).toString(),
                 year ? "31" : QLocale().dayName(7, QLocale::ShortFormat));
        QVERIFY(!year || model->index(1, 0).data() == QLocale().monthName(2, QLocale::LongFormat));

        QDate next = first;
        for (int row = 0; row < model->rowCount(); ++row) {
            const QModelIndex total = model->index(row, firstColumn - 1);
            QCOMPARE(total.flags(), Qt::ItemFlags(Qt::ItemIsEnabled));
            for (const int role : {int(Qt::ToolTipRole), int(Qt::BackgroundRole), ShiftIdRole})
                QVERIFY(!total.data(role).isValid() && !model->index(row, 0).data(role).isValid());
            for (int column = firstColumn; column < columns; ++column) {
                const QModelIndex index = model->index(row, column);
                const QDate date = model->dateFromIndex(index);
                QCOMPARE(index.data(DateRole).toDate(), date);
                QCOMPARE(model->dateToIndex(date), date.isValid() ? index : QModelIndex());
                QCOMPARE(int(index.flags()), date.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : 0);
                QCOMPARE(index.data(Qt::BackgroundRole), date.isValid() ? QVariant() : QVariant(OutsideBrush));
                QCOMPARE(index.data(Qt::ToolTipRole).isValid(), date.isValid());
                QVERIFY(!index.data().isValid());
                if (!date.isValid())
                    continue;
                QCOMPARE(date, next);
                QCOMPARE(column, year ? date.day() + 1 : date.dayOfWeek());
                next = next.addDays(1);
            }
        }
        QCOMPARE(next, year ? first.addYears(1) : first.addMonths(1));
        QVERIFY(!model->dateToIndex(first.addDays(-1)).isValid() && !model->dateToIndex(next).isValid());
    }

    void shouldDescribeDay_data()
    {
        addColumns<quint32, int, QVariant, QString>({"shift", "mode", "hours", "toolTip"});
        const auto row = [](const char *name, quint32 shift, int mode, int hours, const char *title, const char *span,
                            const char *rest = "0", const char *night = "0") {
            const QString text = QString("29 Feb 2024%1<br/>%2<br/>Перерыв: %3ч<br/>Часы: %4ч<br/>Ночные: %5ч")
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
        const QString off = "29 Feb 2024 - Выходной";
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
            model->setColor("#336699");
            QCOMPARE(cell(*model, date, Qt::DisplayRole), hours);
            QCOMPARE(cell(*model, date, Qt::ToolTipRole).toString(), toolTip);
            QCOMPARE(cell(*model, date, ShiftIdRole), QVariant(shift));
            const QBrush tint(QColor(0x33, 0x66, 0x99));
            QCOMPARE(cell(*model, date, Qt::BackgroundRole), hours.isValid() ? QVariant(tint) : QVariant());

            const QDate empty = date.addDays(-1);
            QVERIFY(!cell(*model, empty, Qt::DisplayRole).isValid());
            QVERIFY(!cell(*model, empty, ShiftIdRole).isValid());
            QCOMPARE(cell(*model, empty, Qt::ToolTipRole).toString(), "28 Feb 2024 - Выходной");
        }
    }

    void shouldEscapeNameInToolTip()
    {
        replaceGuide({guideShift(1, {}, "<img src=x>&")}, {});
        const QDate date(2024, 2, 29);
        const auto model = makeModel(false, date, {calendarDay(date, 1)});
        QVERIFY(cell(*model, date, Qt::ToolTipRole).toString().contains("&lt;img src=x&gt;&amp;<br/>"));
    }

    void shouldTotalAllRecordsOfShownDates()
    {
        const QDate sunday(2021, 8, 1);
        const QDate monday = sunday.addDays(1);
        // Monday has two records.
        const Days days{calendarDay(sunday, guide::Day),
                        calendarDay(monday, guide::Day),
                        calendarDay(monday, guide::Short),
                        calendarDay(monday.addDays(1), guide::Day, orvex::DayHoliday),
                        calendarDay(QDate(2021, 8, 31), guide::Night),
                        calendarDay(QDate(2021, 7, 31), guide::Night),
                        calendarDay(QDate(2020, 8, 2), guide::Night),
                        calendarDay(QDate(), guide::Night)};
        CalendarMonthModel month;
        month.setCalendarDays(sunday, days);
        QList<quint32> totals;
        for (const int week : {0, 1, 5, 6})
            totals << month.weekNormTotal(week);
        QCOMPARE(totals, (QList<quint32>{8 * Hour, 16 * Hour - Minute, 12 * Hour, 0}));
        QCOMPARE(month.index(1, 0).data().toString(), "15ч.");
        QCOMPARE(month.calendarDays().size(), days.size());

        CalendarYearModel year;
        year.setCalendarDays(2021, days);
        QCOMPARE(year.monthNormTotal(2021, 8), 36U * 3600 - 60);
        QCOMPARE(CalendarYearModel::monthNormTotal(days, 2021, 8), 36U * 3600 - 60);
        QCOMPARE(year.index(7, 1).data().toString(), "35ч.");
        QCOMPARE(year.monthNormTotal(2020, 8), 12U * 3600);
        QCOMPARE(year.calendarDayPos(QDate()), -1);
        QCOMPARE(year.monthNormTotal(2021, 13), 0U);
        QCOMPARE(CalendarYearModel::monthNormTotal(days, 0, 0), 0U);
    }

    void shouldAssignShiftToDate()
    {
        for (const bool year : {false, true}) {
            const QDate date(2024, 2, 29);
            auto holiday = calendarDay(date, guide::Night, orvex::DayHoliday, 5);
            holiday.intervals = {{0, 3600}};
            const auto model = makeModel(year, date, {holiday, calendarDay(date, guide::Short)});
            Tester tester(model.get(), Tester::FailureReportingMode::QtTest);
            QSignalSpy changed(model.get(), &QAbstractItemModel::dataChanged);
            const auto assign = [&](const QDate &day, const QVariant &value) {
                return model->setData(model->dateToIndex(day), value, ShiftIdRole);
            };

            QVERIFY(assign(date, guide::Day));
            QCOMPARE(changed.size(), 1);
            QCOMPARE(changed.first().mid(0, 2), QVariantList({model->dateToIndex(date), model->dateToIndex(date)}));
            auto expected = calendarDay(date, guide::Day, orvex::DayByShift, 5);
            QVERIFY(model->calendarDay(date) == expected);
            QCOMPARE(model->calendarDays().at(1).shiftId, guide::Short);

            const QDate fresh = date.addDays(-28);
            QVERIFY(assign(fresh, 0)); // no record to clear
            QCOMPARE(model->calendarDays().size(), 2);
            QVERIFY(assign(fresh, qint64(guide::Night) + (qint64(1) << 32))); // the low 32 bits count
            QCOMPARE(model->calendarDayPos(fresh), 2);
            QCOMPARE(cell(*model, fresh, Qt::DisplayRole), QVariant(12));

            QVERIFY(assign(date, 0));
            expected.clear();
            QVERIFY(model->calendarDay(date) == expected);
            QVERIFY(ScheduleUtil::isHoliday(expected) && expected.shiftId == 0);
            QCOMPARE(model->calendarDays().size(), 3);
            QCOMPARE(changed.size(), 4);

            // A total, a cell without a date, no cell, another role.
            const QModelIndex last = model->index(model->rowCount() - 1, 0);
            for (const auto &index : {last, year ? model->index(1, 31) : last.siblingAtColumn(7), QModelIndex()})
                QVERIFY(!model->setData(index, 1, ShiftIdRole));
            QVERIFY(!model->setData(model->dateToIndex(date), 1, Qt::EditRole));
            QCOMPARE(changed.size(), 4);
        }
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
        month.setColor("blue");
        year.updateTotal();
        year.setColor("blue");
        QCOMPARE(monthChanged.size() + yearChanged.size(), 4);
        QCOMPARE(monthChanged.at(0).mid(0, 2), QVariantList({month.index(0, 0), month.index(3, 0)}));
        QCOMPARE(monthChanged.at(1).mid(0, 2), QVariantList({month.index(0, 1), month.index(3, 7)}));
        QCOMPARE(yearChanged.at(0).mid(0, 2), QVariantList({year.index(0, 1), year.index(11, 1)}));
        QCOMPARE(yearChanged.at(1).mid(0, 2), QVariantList({year.index(0, 2), year.index(11, 32)}));
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
        const QImage image = paintCell(CalendarDayItemDelegate(), model->dateToIndex(date), base, text);

        QCOMPARE(image.pixelColor(58, 58), background);
        QSet<QRgb> colors;
        for (int i = 0; i < 60 * 60; ++i)
            colors.insert(image.pixel(i / 60, i % 60));
        QCOMPARE(colors, (QSet{background.rgb(), text.rgb()}));
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
        QCOMPARE(paintCell(year, index, base), plain);

        // Only the month's day number is drawn, small and in the corner.
        QImage numbered = paintCell(CalendarMonthItemDelegate(), index, base);
        QFont small;
        small.setPointSize(6);
        const QRect corner(QPoint(1, 1), QFontMetrics(small).size(0, "29"));
        QVERIFY(numbered.copy(corner) != plain.copy(corner));
        QPainter(&numbered).fillRect(corner, base);
        QCOMPARE(numbered, plain);

        year.setShowDow(true);
        QVERIFY(paintCell(year, index, base) != plain);
    }

    void shouldKeepLinesVisibleBetweenDarkCellsWithoutDate()
    {
        const auto model = makeModel(true, QDate(2023, 2, 28));
        const QModelIndex undated = model->index(1, 32);
        const QColor base(0x20, 0x20, 0x20);
        const QColor cell = paintCell(CalendarDayItemDelegate(), undated, base).pixelColor(30, 30);
        QVERIFY(cell.lightness() > base.lightness());
        QVERIFY(cell.lightness() < TQGuiGlobals::lineColor().lightness());
    }
};

QTEST_MAIN(TestCalendarModels)
#include "tst_calendarmodels.moc"
