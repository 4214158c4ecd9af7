#include "CheckBoxDelegate.h"
#include "colorselectdelegate.h"
#include "datetimedelegate.h"
#include "dayschedulemodel.h"
#include "samplerecords.h"
#include "schedulemodedelegate.h"
#include "shiftdaydelegate.h"
#include "shiftdelegate.h"
#include "shifttimemodel.h"
#include "testcolumns.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QPainter>
#include <QProxyStyle>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

#include <limits>

using namespace orvex;

namespace {

/// Records what a delegate draws.
class RecordingStyle final : public QProxyStyle
{
public:
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override
    {
        if (element == CE_ItemViewItem)
            m_option = *qstyleoption_cast<const QStyleOptionViewItem *>(option);
        QProxyStyle::drawControl(element, option, painter, widget);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        if (element == PE_IndicatorItemViewItemCheck)
            m_checked = option->state.testFlag(State_On);
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    /// What \a delegate draws for \a index.
    QStyleOptionViewItem painted(const QAbstractItemDelegate &delegate, const QModelIndex &index)
    {
        m_option = {};
        m_checked = false;
        QWidget widget;
        widget.setStyle(this);
        QPixmap pixmap(200, 30);
        QPainter painter(&pixmap);
        QStyleOptionViewItem option;
        option.initFrom(&widget);
        option.rect = pixmap.rect();
        option.widget = &widget;
        option.locale = QLocale(QLocale::Russian, QLocale::Russia);
        delegate.paint(&painter, option, index);
        return m_option;
    }

    [[nodiscard]] bool isChecked() const { return m_checked; }

private:
    mutable QStyleOptionViewItem m_option;
    mutable bool m_checked = false;
};

/// A day shift with a break, a night shift, a shift without intervals; a day for each, a day off, a day whose shift is
/// not in the list, a working day without a shift.
SCHEDULE_DATA sampleSchedule()
{
    auto schedule = support::shiftCycle();
    schedule.shifts.append({13, 0, {}});
    schedule.days = {{1, 0, 11, false}, {2, 1, 12, false}, {3, 2, 13, false},
                     {4, -1, -1, true}, {5, 7, 70, false}, {6, -1, -1, false}};
    return schedule;
}

/// A displayed table with one cell.
struct Cell
{
    explicit Cell(const QVariant &value, QAbstractItemDelegate *delegate)
        : model(1, 1)
    {
        model.setData(model.index(0, 0), value, Qt::EditRole);
        view.setModel(&model);
        view.setItemDelegate(delegate);
        view.setCurrentIndex(model.index(0, 0));
        view.show();
        view.activateWindow();
    }

    [[nodiscard]] QVariant value() const { return model.index(0, 0).data(); }
    [[nodiscard]] QWidget *editor() const { return view.indexWidget(model.index(0, 0)); }

    QStandardItemModel model;
    QTableView view;
};

} // namespace

class TestDelegates : public QObject
{
    Q_OBJECT

private slots:
    void shouldDescribeShifts_data()
    {
        support::addColumns<int, QString>({"position", "text"});

        QTest::newRow("with a break") << 0 << "Смена 1 08:00 - 17:00";
        QTest::newRow("over midnight") << 1 << "Смена 2 20:00 - 06:00";
        QTest::newRow("without intervals") << 2 << "Смена 3 00:00 - 00:00";
        QTest::newRow("none") << -1 << QString();
        QTest::newRow("far below the list") << std::numeric_limits<int>::min() << QString();
    }
    void shouldDescribeShifts()
    {
        QFETCH(int, position);
        auto schedule = sampleSchedule();
        const ShiftDelegate delegate(&schedule, nullptr);
        QStandardItemModel model(1, 1);
        model.setData(model.index(0, 0), position);
        RecordingStyle style;

        QTEST(delegate.shiftDescription(position), "text");
        QTEST(style.painted(delegate, model.index(0, 0)).text, "text");
        QVERIFY(ShiftDelegate(nullptr, nullptr).shiftDescription(position).isEmpty());
    }

    void shouldOpenEditorOnShiftOfDay_data()
    {
        support::addColumns<int, int>({"row", "item"});

        QTest::newRow("first shift") << 0 << 1;
        QTest::newRow("last shift") << 2 << 3;
        QTest::newRow("day off") << 3 << 0;
        QTest::newRow("shift outside the list") << 4 << 0;
        QTest::newRow("working day without a shift") << 5 << 0;
    }
    void shouldOpenEditorOnShiftOfDay()
    {
        QFETCH(int, row);
        auto schedule = sampleSchedule();
        const SCHEDULE_DAY before = schedule.days.at(row);
        DayScheduleModel model(&schedule, nullptr);
        ShiftDelegate delegate(&schedule, nullptr);
        QTableView view;
        view.setModel(&model);
        view.setItemDelegate(&delegate);
        const auto index = model.index(row, DayScheduleModel::ShiftColumn);

        view.setCurrentIndex(index);
        view.edit(index);
        auto *box = qobject_cast<QComboBox *>(view.indexWidget(index));
        QVERIFY(box);
        QTEST(box->currentIndex(), "item");

        delegate.setModelData(box, &model, index);
        QVERIFY(schedule.days.at(row) == before); // nothing was chosen
    }

    void shouldWriteChosenShiftAtOnce()
    {
        auto schedule = sampleSchedule();
        DayScheduleModel model(&schedule, nullptr);
        ShiftDelegate delegate(&schedule, nullptr);
        QTableView view;
        view.setModel(&model);
        view.setItemDelegate(&delegate);
        const auto index = model.index(5, DayScheduleModel::ShiftColumn);
        view.setCurrentIndex(index);
        view.edit(index);
        auto *box = qobject_cast<QComboBox *>(view.indexWidget(index));

        emit box->activated(0); // the operator chooses the current item
        QVERIFY(schedule.days.at(5) == SCHEDULE_DAY({6, -1, -1, true}));
        QTest::keyClick(box, Qt::Key_Down);
        QVERIFY(schedule.days.at(5) == SCHEDULE_DAY({6, 0, 11, false}));
        QTest::keyClick(box, Qt::Key_Home);
        QVERIFY(schedule.days.at(5) == SCHEDULE_DAY({6, -1, -1, true}));
        QCOMPARE(view.indexWidget(index), box);
    }

    void shouldDisplayDay_data()
    {
        support::addColumns<QDateTime, int, QString, QString>({"start", "format", "format text", "text"});

        const QDateTime monday(QDate(2024, 2, 26), QTime(0, 0));
        const QString none;
        QTest::newRow("date") << monday << 0 << none << "29.02.2024";
        QTest::newRow("weekday") << monday << 1 << none << "чт";
        QTest::newRow("date and weekday") << monday << 2 << none << "29.02.2024 (чт)";
        QTest::newRow("own text") << monday << 2 << "%2, %1"
                                  << "чт, 29.02.2024";
        QTest::newRow("unknown format") << monday << 7 << none << "4";
        QTest::newRow("no reference date") << QDateTime() << 2 << none << "4";
    }
    void shouldDisplayDay()
    {
        QFETCH(QDateTime, start);
        QFETCH(int, format);
        QFETCH(QString, text);
        const QString formatText = *static_cast<const QString *>(QTest::qData("format text", QMetaType::QString));
        QStandardItemModel model(4, 1);
        const auto index = model.index(3, 0);
        model.setData(index, int(Qt::AlignRight), Qt::TextAlignmentRole);
        const ShiftDayDelegate delegate(start, ShiftDayDelegate::ShowFormat(format), formatText, nullptr);
        RecordingStyle style;

        const auto painted = style.painted(delegate, index);

        QCOMPARE(painted.text, text);
        QCOMPARE(painted.displayAlignment, Qt::AlignRight);
        QVERIFY(!delegate.createEditor(nullptr, {}, index));
    }

    void shouldShowTimes_data()
    {
        support::addColumns<int, QString, QVariant, QString>({"format", "displayFormat", "value", "text"});

        const QString minutes = "hh:mm";
        QTest::newRow("time") << 1 << minutes << QVariant(30600) << "08:30";
        QTest::newRow("24:00") << 1 << minutes << QVariant(86400) << "00:00";
        QTest::newRow("past midnight") << 1 << minutes << QVariant(90000) << "01:00";
        QTest::newRow("lowest number") << 1 << minutes << QVariant(std::numeric_limits<int>::min()) << "20:45";
        QTest::newRow("moment") << 0 << QString() << QVariant(1773446400) << "14.03.2026 00:00";
    }
    void shouldShowTimes()
    {
        QFETCH(int, format);
        QFETCH(QString, displayFormat);
        QFETCH(QVariant, value);
        QStandardItemModel model(1, 1);
        model.setData(model.index(0, 0), value);
        DateTimeDelegate delegate(DateTimeDelegate::Format(format), nullptr);
        delegate.setTimeSpec(displayFormat);
        RecordingStyle style;

        QTEST(style.painted(delegate, model.index(0, 0)).text, "text");
    }

    void shouldWriteTimes_data()
    {
        support::addColumns<int, QTime, QTime, int>({"value", "shown", "typed", "written"});

        QTest::newRow("last second") << 0 << QTime(0, 0) << QTime(23, 59, 59) << 86399;
        QTest::newRow("midnight") << 61200 << QTime(17, 0) << QTime(0, 0) << 0;
        QTest::newRow("from 24:00") << 86400 << QTime(0, 0) << QTime(1, 0) << 3600;
        QTest::newRow("from a value past 24:00") << 90000 << QTime(1, 0) << QTime(2, 0) << 7200;
    }
    void shouldWriteTimes()
    {
        QFETCH(int, value);
        QFETCH(QTime, typed);
        DateTimeDelegate delegate;
        Cell cell(value, &delegate);
        cell.view.edit(cell.model.index(0, 0));
        auto *edit = qobject_cast<QDateTimeEdit *>(cell.editor());
        QVERIFY(edit);
        QCOMPARE(edit->displayFormat(), "hh:mm:ss");
        QTEST(edit->time(), "shown");

        delegate.setModelData(edit, &cell.model, cell.model.index(0, 0));
        QCOMPARE(cell.value().toInt(), value); // nothing was typed
        edit->setTime(typed);

        QCOMPARE(cell.value().userType(), int(QMetaType::Int));
        QTEST(cell.value().toInt(), "written");
    }

    void shouldWriteDateInUtc()
    {
        DateTimeDelegate delegate(DateTimeDelegate::DateTimeFormat, nullptr);
        // 13 March 2026, 22:30 UTC: already the next day in the local time zone.
        Cell cell(qint64(1773441000), &delegate);
        cell.view.edit(cell.model.index(0, 0));
        auto *edit = qobject_cast<QDateTimeEdit *>(cell.editor());
        QVERIFY(edit);
        QCOMPARE(edit->date(), QDate(2026, 3, 13));
        QVERIFY(edit->calendarPopup());

        edit->setDate(QDate(2026, 3, 14));

        QCOMPARE(cell.value().toLongLong(), 1773446400);
    }

    void shouldToggle_data()
    {
        support::addColumns<QVariant, bool, QVariant>({"value", "drawn checked", "toggled"});

        QTest::newRow("true") << QVariant(true) << true << QVariant(false);
        QTest::newRow("false") << QVariant(false) << false << QVariant(true);
        QTest::newRow("5") << QVariant(5) << true << QVariant(0);
        QTest::newRow("0") << QVariant(0) << false << QVariant(1);
    }
    void shouldToggle()
    {
        QFETCH(QVariant, value);
        CheckBoxDelegate delegate;
        Cell cell(value, &delegate);
        RecordingStyle style;
        style.painted(delegate, cell.model.index(0, 0));
        QTEST(style.isChecked(), "drawn checked");

        QTest::keyClick(&cell.view, Qt::Key_Space);
        QTEST(cell.value(), "toggled");

        cell.model.item(0)->setEnabled(false);
        QTest::keyClick(&cell.view, Qt::Key_Space);
        QTEST(cell.value(), "toggled");
    }

    void shouldToggleByClickInBox()
    {
        CheckBoxDelegate delegate;
        Cell cell(false, &delegate);
        QVERIFY(QTest::qWaitForWindowExposed(&cell.view));
        const QRect rect = cell.view.visualRect(cell.model.index(0, 0));
        QWidget *viewport = cell.view.viewport();

        QTest::mouseClick(viewport, Qt::LeftButton, {}, rect.topLeft() + QPoint(3, 3));
        QVERIFY(!cell.value().toBool());
        QTest::mouseClick(viewport, Qt::RightButton, {}, rect.center());
        QVERIFY(!cell.value().toBool());
        QTest::mouseClick(viewport, Qt::LeftButton, {}, rect.center());
        QVERIFY(cell.value().toBool());
        QTest::mouseDClick(viewport, Qt::LeftButton, {}, rect.center());
        QVERIFY(!cell.editor());
    }

    void shouldDrawModesByName()
    {
        QStandardItemModel model(1, 1);
        const auto index = model.index(0, 0);
        const ScheduleModeDelegate delegate;
        RecordingStyle style;
        const QStringList names{"Фиксированный", "Сменный",        "Ненормированный",
                                "Календарный",   "Индивидуальный", "Не указан"};
        for (int mode = 0; mode < names.size(); ++mode) {
            model.setData(index, mode, Qt::DisplayRole);
            QCOMPARE(style.painted(delegate, index).text, names.at(mode));
        }
        QVERIFY(style.painted(delegate, index).icon.isNull());
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::red);
        model.setData(index, QIcon(pixmap), Qt::DecorationRole);
        QVERIFY(!style.painted(delegate, index).icon.isNull());
    }

    void shouldEditModes()
    {
        QStandardItemModel model(1, 1);
        const auto index = model.index(0, 0);
        model.setData(index, 3, Qt::DisplayRole);
        QWidget parent;
        const ScheduleModeDelegate delegate;
        const auto editor = qobject_cast<QComboBox *>(delegate.createEditor(&parent, {}, index));
        QVERIFY(editor);
        QCOMPARE(editor->parentWidget(), &parent);
        QList<int> modes;
        for (int i = 0; i < editor->count(); ++i)
            modes.append(editor->itemData(i).toInt());
        QCOMPARE(modes, (QList<int>{0, 1, 3, 2, 4}));

        delegate.setEditorData(editor, index);
        QCOMPARE(editor->currentText(), "Календарный");
        editor->setCurrentIndex(4);
        delegate.setModelData(editor, &model, index);
        QCOMPARE(index.data(Qt::EditRole), QVariant(4));
        model.setData(index, 7, Qt::DisplayRole);
        delegate.setEditorData(editor, index);
        QCOMPARE(editor->currentIndex(), -1);
    }

    void shouldDrawColorSamples()
    {
        QStandardItemModel model(1, 1);
        const auto index = model.index(0, 0);
        const ColorSelectDelegate delegate;
        QStyleOptionViewItem option;
        option.rect = QRect(0, 0, 40, 30);
        option.palette.setColor(QPalette::Base, Qt::white);
        QImage image(option.rect.size(), QImage::Format_RGB32);
        const auto paint = [&](const QString &color) {
            model.setData(index, color, Qt::DisplayRole);
            image.fill(Qt::white);
            QPainter painter(&image);
            const QPen pen = painter.pen();
            delegate.paint(&painter, option, index);
            QCOMPARE(painter.pen(), pen);
        };
        paint({});
        QCOMPARE(image.pixelColor(20, 15), QColor(Qt::white));
        paint("#204080");
        // Lighter at the top, the colour itself at the bottom, a margin around the sample.
        QVERIFY(image.pixelColor(20, 10).lightness() > image.pixelColor(20, 20).lightness());
        QVERIFY(qAbs(image.pixelColor(20, 20).blue() - 0x80) < 16);
        QCOMPARE(image.pixelColor(2, 2), QColor(Qt::white));
        QCOMPARE(delegate.sizeHint(option, index), QSize(16, 16));
        QVERIFY(!delegate.createEditor(nullptr, option, index));
    }
};

QTEST_MAIN(TestDelegates)
#include "tst_delegates.moc"
