#include "CheckBoxDelegate.h"
#include "colorselectdelegate.h"
#include "datetimedelegate.h"
#include "dayschedulemodel.h"
#include "hands.h"
#include "samplerecords.h"
#include "schedulemodedelegate.h"
#include "shiftdaydelegate.h"
#include "shiftdelegate.h"
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

    /// What the view's delegate draws in the last cell.
    QStyleOptionViewItem painted(QTableView &view)
    {
        view.setStyle(this);
        view.setLocale(QLocale(QLocale::Russian, QLocale::Russia));
        view.grab();
        view.setStyle(nullptr);
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
    {
        model.setData(index, value, Qt::EditRole);
        view.setModel(&model);
        view.setItemDelegate(delegate);
        view.setCurrentIndex(index);
        view.show();
        view.activateWindow();
    }

    template <class Editor> Editor *edit()
    {
        view.edit(index);
        return view.findChild<Editor *>();
    }

    QStandardItemModel model{1, 1};
    const QPersistentModelIndex index = model.index(0, 0);
    QTableView view;
};

} // namespace

class TestDelegates : public QObject
{
    Q_OBJECT

private slots:
    void shouldDescribeShifts()
    {
        auto schedule = sampleSchedule();
        ShiftDelegate delegate(&schedule, nullptr);
        Cell cell({}, &delegate);
        QStringList texts;
        for (const int position : {0, 1, 2, -1, 3, std::numeric_limits<int>::min()}) {
            cell.model.setData(cell.index, position, Qt::EditRole);
            texts.append(delegate.shiftDescription(position));
            QCOMPARE(RecordingStyle().painted(cell.view).text, texts.last());
        }
        QCOMPARE(texts.join('|'), "Смена 1 08:00 - 17:00|Смена 2 20:00 - 06:00|Смена 3 00:00 - 00:00|||");
    }

    void shouldWriteChosenShiftAtOnce()
    {
        auto schedule = sampleSchedule();
        const auto days = schedule.days;
        DayScheduleModel model(&schedule, nullptr);
        ShiftDelegate delegate(&schedule, nullptr);
        QTableView view;
        view.setModel(&model);
        view.setItemDelegate(&delegate);
        QComboBox *box = nullptr;
        QList<int> items;
        for (int row = 0; row < days.size(); ++row) {
            view.setCurrentIndex(model.index(row, DayScheduleModel::ShiftColumn));
            view.edit(view.currentIndex());
            box = qobject_cast<QComboBox *>(view.indexWidget(view.currentIndex()));
            QVERIFY(box);
            items.append(box->currentIndex());
            delegate.setModelData(box, &model, view.currentIndex());
        }
        // A day off, a shift outside the list and a working day without a shift open on "none".
        QCOMPARE(items, QList({1, 2, 3, 0, 0, 0}));
        QVERIFY(schedule.days == days); // nothing was chosen

        const auto &day = schedule.days.last();
        emit box->activated(0); // the operator chooses the current item
        QVERIFY(day == SCHEDULE_DAY({6, -1, -1, true}));
        QTest::keyClick(box, Qt::Key_Down);
        QVERIFY(day == SCHEDULE_DAY({6, 0, 11, false}));
        QTest::keyClick(box, Qt::Key_Home);
        QVERIFY(day == SCHEDULE_DAY({6, -1, -1, true}));
        QCOMPARE(view.indexWidget(view.currentIndex()), box);
    }

    void shouldDisplayDay_data()
    {
        support::addColumns<QDateTime, int, QString, QString>({"start", "format", "formatText", "text"});

        const QDateTime monday(QDate(2024, 2, 26), QTime(0, 0));
        QTest::newRow("date") << monday << 0 << QString() << "29.02.2024";
        QTest::newRow("weekday") << monday << 1 << QString() << "чт";
        QTest::newRow("date and weekday") << monday << 2 << QString() << "29.02.2024 (чт)";
        QTest::newRow("own text") << monday << 2 << QString("%2, %1") << QString("чт, 29.02.2024");
        QTest::newRow("unknown format") << monday << 7 << QString() << "4";
        QTest::newRow("no reference date") << QDateTime() << 2 << QString() << "4";
    }
    void shouldDisplayDay()
    {
        QFETCH(QDateTime, start);
        QFETCH(int, format);
        QFETCH(QString, formatText);
        ShiftDayDelegate delegate(start, ShiftDayDelegate::ShowFormat(format), formatText, nullptr);
        Cell cell({}, &delegate);
        cell.model.insertRows(0, 3);
        cell.model.setData(cell.index, int(Qt::AlignRight), Qt::TextAlignmentRole);

        const auto painted = RecordingStyle().painted(cell.view);
        QTEST(painted.text, "text");
        QCOMPARE(painted.displayAlignment, Qt::AlignRight);
        QVERIFY(!delegate.createEditor(nullptr, {}, cell.index));
    }

    void shouldShowTimes_data()
    {
        support::addColumns<int, QVariant, QString>({"format", "value", "text"});

        QTest::newRow("time") << 1 << QVariant(30600) << "08:30";
        QTest::newRow("24:00") << 1 << QVariant(86400) << "00:00";
        QTest::newRow("past midnight") << 1 << QVariant(90000) << "01:00";
        QTest::newRow("lowest number") << 1 << QVariant(std::numeric_limits<int>::min()) << "20:45";
        QTest::newRow("moment") << 0 << QVariant(1773446400) << "14.03.2026 00:00";
    }
    void shouldShowTimes()
    {
        QFETCH(int, format);
        QFETCH(QVariant, value);
        DateTimeDelegate delegate(DateTimeDelegate::Format(format), nullptr);
        delegate.setTimeSpec("hh:mm");
        Cell cell(value, &delegate);

        QTEST(RecordingStyle().painted(cell.view).text, "text");
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
        auto *edit = cell.edit<QDateTimeEdit>();
        QVERIFY(edit);
        QCOMPARE(edit->displayFormat(), "hh:mm:ss");
        QTEST(edit->time(), "shown");

        delegate.setModelData(edit, &cell.model, cell.index);
        QCOMPARE(cell.index.data(), QVariant(value)); // nothing was typed
        edit->setTime(typed);
        QCOMPARE(cell.index.data().userType(), int(QMetaType::Int));
        QTEST(cell.index.data().toInt(), "written");
    }

    void shouldWriteDateInUtc()
    {
        DateTimeDelegate delegate(DateTimeDelegate::DateTimeFormat, nullptr);
        // 13 March 2026, 22:30 UTC: already the next day in the local time zone.
        Cell cell(qint64(1773441000), &delegate);
        auto *edit = cell.edit<QDateTimeEdit>();
        QVERIFY(edit && edit->calendarPopup());
        QCOMPARE(edit->date(), QDate(2026, 3, 13));
        edit->setDate(QDate(2026, 3, 14));
        QCOMPARE(cell.index.data().toLongLong(), 1773446400);
    }

    void shouldToggle()
    {
        const QList<QPair<QVariant, QVariant>> values{{true, false}, {false, true}, {5, 0}, {0, 1}};
        for (const auto &[value, toggled] : values) {
            CheckBoxDelegate delegate;
            Cell cell(value, &delegate);
            RecordingStyle style;
            style.painted(cell.view);
            QCOMPARE(style.isChecked(), value.toBool());
            for (const bool enabled : {true, false}) {
                cell.model.item(0)->setEnabled(enabled);
                QTest::keyClick(&cell.view, Qt::Key_Space);
                QCOMPARE(cell.index.data(), toggled);
            }
        }
    }

    void shouldToggleByClickInBox()
    {
        CheckBoxDelegate delegate;
        Cell cell(false, &delegate);
        QVERIFY(QTest::qWaitForWindowExposed(&cell.view));
        const QRect rect = cell.view.visualRect(cell.index);
        const auto click = [&](Qt::MouseButton button, const QPoint &pos) {
            QTest::mouseClick(cell.view.viewport(), button, {}, pos);
            return cell.index.data().toBool();
        };

        QVERIFY(!click(Qt::LeftButton, rect.topLeft() + QPoint(3, 3)));
        QVERIFY(!click(Qt::RightButton, rect.center()));
        QVERIFY(click(Qt::LeftButton, rect.center()));
        QTest::mouseDClick(cell.view.viewport(), Qt::LeftButton, {}, rect.center());
        QVERIFY(!cell.view.indexWidget(cell.index));
    }

    void shouldDrawModesByName()
    {
        ScheduleModeDelegate delegate;
        Cell cell(0, &delegate);
        RecordingStyle style;
        QStringList names;
        for (int mode = 0; mode < 6; ++mode) {
            cell.model.setData(cell.index, mode, Qt::DisplayRole);
            names << style.painted(cell.view).text;
        }
        QCOMPARE(names.join(' '), "Фиксированный Сменный Ненормированный Календарный Индивидуальный Не указан");
        QVERIFY(style.painted(cell.view).icon.isNull());
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::red);
        cell.model.setData(cell.index, QIcon(pixmap), Qt::DecorationRole);
        QVERIFY(!style.painted(cell.view).icon.isNull());
    }

    void shouldEditModes()
    {
        ScheduleModeDelegate delegate;
        Cell cell(3, &delegate);
        auto *editor = cell.edit<QComboBox>();
        QVERIFY(editor);
        QCOMPARE(support::columnTexts(*editor->model(), 0).join(' '),
                 "Фиксированный Сменный Календарный Ненормированный Индивидуальный");
        QCOMPARE(editor->currentText(), "Календарный");
        editor->setCurrentIndex(3);
        delegate.setModelData(editor, &cell.model, cell.index);
        QCOMPARE(cell.index.data(Qt::EditRole), QVariant(2));
        cell.model.setData(cell.index, 7, Qt::DisplayRole);
        delegate.setEditorData(editor, cell.index);
        QCOMPARE(editor->currentIndex(), -1);
    }

    void shouldDrawColorSamples()
    {
        QStandardItemModel model(1, 1);
        const auto index = model.index(0, 0);
        const ColorSelectDelegate delegate;
        QStyleOptionViewItem option;
        option.rect = QRect(0, 0, 40, 30);
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
