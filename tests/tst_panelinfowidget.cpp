#include "clientcache.h"
#include "datanames.h"
#include "hands.h"
#include "localstorage.h"
#include "panelinfowidget.h"
#include "propertypanelhelper.h"
#include "sampleguide.h"
#include "sampleobjects.h"
#include "samplerecords.h"
#include "testcolumns.h"
#include "tqguiglobals.h"

#include <QApplication>
#include <QScrollBar>
#include <QtTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextTable>

#include <limits>
#include <memory>
#include <utility>

using namespace support;

namespace {

using Days = QList<orvex::SCHEDULE_CALENDAR_DAY>;

constexpr quint32 EmployeeId = 5;
const QColor OutsideMonth(0xe5, 0xe5, 0xe5);

orvex::SCHEDULE_DATA schedule(orvex::ScheduleMode type, const QDate &start = {})
{
    auto record = support::schedule(7, "График", type);
    record.startDate = start;
    return record;
}

/// A day shift with a break of an hour, and a night shift.
QList<orvex::SCHEDULE_SHIFT> shifts()
{
    return {shift({{8 * Hour, 12 * Hour}, {13 * Hour, 17 * Hour}}), shift({{20 * Hour, 8 * Hour}})};
}

/// A cycle of a day shift, a night shift and a day off.
orvex::SCHEDULE_DATA cycle(const QDate &start)
{
    auto record = schedule(orvex::ScheduleShift, start);
    record.shifts = shifts();
    record.days = {workingDay(0), workingDay(1), {}};
    return record;
}

orvex::SCHEDULE_DATA freeSchedule(qint32 start, qint32 finish, qint32 norm, qint32 rest)
{
    auto record = schedule(orvex::ScheduleFree);
    record.freeStart = start;
    record.freeFinish = finish;
    record.freeNorm = norm;
    record.freeBreak = rest;
    return record;
}

QDate inThisYear(int month, int day)
{
    return {QDate::currentDate().year(), month, day};
}

QString cellText(const QTextTableCell &cell)
{
    QStringList texts;
    for (auto it = cell.begin(); !it.atEnd(); ++it)
        texts.append(it.currentBlock().text().replace(QChar::LineSeparator, QLatin1Char('/')));
    return texts.join(QLatin1Char('/'));
}

QTextTable *lastTable(const QTextDocument *document)
{
    const auto frames = document->rootFrame()->childFrames();
    return frames.isEmpty() ? nullptr : qobject_cast<QTextTable *>(frames.last());
}

/// The lines of a document without the empty ones; a table row is one line.
QStringList linesOf(const QTextDocument *document)
{
    QStringList lines;
    for (auto it = document->rootFrame()->begin(); !it.atEnd(); ++it) {
        if (!it.currentFrame()) {
            lines.append(it.currentBlock().text());
            continue;
        }
        const auto table = qobject_cast<QTextTable *>(it.currentFrame());
        for (int row = 0; row < table->rows(); ++row) {
            QStringList texts;
            for (int column = 0; column < table->columns(); ++column)
                texts.append(cellText(table->cellAt(row, column)));
            lines.append(texts.join(QLatin1Char('|')));
        }
    }
    lines.removeAll(QString());
    return lines;
}

const QStringList WorkModeHeader{"Расписание", "День|Начало/смены|Окончание/смены|Обед"};

} // namespace

class TestPanelInfoWidget : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia)); }

    void init()
    {
        guide::fill();
        m_panel = std::make_unique<PanelInfoWidget>();
        m_panel->resize(320, 500);
        m_panel->show();
        m_text = m_panel->findChild<QTextEdit *>("textEdit");
    }

    void shouldDescribeASchedule_data()
    {
        addColumns<orvex::SCHEDULE_DATA, QStringList>({"record", "expected"});
        const auto row = [](const char *name, const orvex::SCHEDULE_DATA &record, const QStringList &expected) {
            QTest::newRow(name) << record << QStringList(record.name) + expected;
        };
        auto fixed = schedule(orvex::ScheduleFixed, {2026, 3, 2});
        fixed.useHolidays = 1;
        fixed.shifts = shifts();
        fixed.days = {workingDay(0), {}, workingDay(-1)};
        row("fixed", fixed,
            QStringList{"Тип графика", "Фиксированный", "Учитывать праздничные дни", "Да"} + WorkModeHeader
                + QStringList{"пн|08:00|17:00|60 мин.", "вт|||", "ср|||"});

        const QStringList counted{"Тип графика", "Сменный", "Дата отсчета цикла смен"};
        const QStringList noHolidays{"Учитывать праздничные дни", "Нет"};
        row("shift over a leap day", cycle({2028, 2, 28}),
            counted + QStringList("28.02.2028") + noHolidays + WorkModeHeader
                + QStringList{"28.02.2028|08:00|17:00|60 мин.", "29.02.2028|20:00|08:00|", "01.03.2028|||"});
        row("shift by employee", cycle({}),
            counted + QStringList("По сотруднику") + noHolidays + WorkModeHeader
                + QStringList{"1|08:00|17:00|60 мин.", "2|20:00|08:00|", "3|||"});

        const QStringList free{"Тип графика", "Ненормированный"};
        row("free without limits", freeSchedule(0, 0, 0, 0), free + QStringList{"Обеденный перерыв", "0 мин."});
        row("free with all limits", freeSchedule(9 * Hour, 18 * Hour + 1800, 8 * Hour + 1800, 2700),
            free + QStringList{"Начало рабочего дня", "09:00", "Окончание рабочего дня", "18:30"}
                + QStringList{"Продолжительность рабочего дня", "8 час. 30 мин.", "Обеденный перерыв", "45 мин."});
        auto markup = freeSchedule(0, 0, 59, 59);
        markup.name = "<b>Смена</b> & <img src='x'>";
        row("a name like markup, a norm of seconds", markup,
            free + QStringList{"Продолжительность рабочего дня", "0 час. 0 мин.", "Обеденный перерыв", "0 мин."});

        QTest::newRow("unknown type") << schedule(orvex::ScheduleMode(7)) << QStringList();
    }

    void shouldDescribeASchedule()
    {
        QFETCH(orvex::SCHEDULE_DATA, record);
        QFETCH(QStringList, expected);
        m_panel->updateInfo(3);
        m_panel->updateInfo(record);
        QCOMPARE(lines(), expected);
        m_panel->clear();
        QVERIFY(m_text->toPlainText().isEmpty());
    }

    void shouldShowTheCountOfSeveralSchedules()
    {
        m_panel->updateInfo(cycle({}));
        m_panel->updateInfo(1200);
        QCOMPARE(m_text->toPlainText(), "Выбрано графиков работ: 1200");
        QCOMPARE(document()->firstBlock().begin().fragment().charFormat(), QTextCharFormat());
        // Days of the previous schedule are no longer expected.
        expectWrongId(0, 7);
        m_panel->setCalendarDays(7, {});
    }

    void shouldSumTheHoursOfThisYearByMonth()
    {
        const auto record = schedule(orvex::ScheduleCalendar, {2020, 1, 1});
        m_panel->updateInfo(record);
        QStringList expected = QString("График,Тип графика,Календарный,Год,%1,Учитывать праздничные дни,Нет,Количество "
                                       "рабочих часов,Месяц|Часы")
                                   .arg(QDate::currentDate().year())
                                   .split(',');
        const int firstMonth = expected.size();
        for (int month = 1; month <= 12; ++month)
            expected.append(QLocale().monthName(month) + "|0");
        QCOMPARE(lines(), expected);

        // Two records of one date both count. Incomplete hours, holidays, unknown shifts and other years do not.
        m_panel->setCalendarDays(7,
                                 {calendarDay(inThisYear(1, 1), guide::Day),
                                  calendarDay(inThisYear(1, 1), guide::Night),
                                  calendarDay(inThisYear(1, 31), guide::Day, orvex::DayHoliday),
                                  calendarDay(inThisYear(2, 28), guide::Short),
                                  calendarDay(inThisYear(12, 31), guide::Day, orvex::DayPreHoliday),
                                  calendarDay(inThisYear(6, 1), guide::Unknown),
                                  calendarDay(inThisYear(5, 1).addYears(1), guide::Day), calendarDay({}, guide::Day)});
        for (const auto &[month, hours] : {std::pair(1, "|20"), std::pair(2, "|7"), std::pair(12, "|7")})
            expected[firstMonth + month - 1] = QLocale().monthName(month) + hours;
        QCOMPARE(lines(), expected);
    }

    void shouldDescribeAPersonalSchedule()
    {
        // March 2026 starts on a Sunday.
        auto record = personalSchedule(7, "Иванов март", EmployeeId, {2026, 3, 1});
        record.useHolidays = 1;
        m_panel->updateInfo(record);
        const QStringList head{QString(QChar::ObjectReplacementCharacter) + "|Иванов март", "Табельный номер"};
        const QStringList rest{"Период",
                               QLocale().toString(QDate(2026, 3, 1), "MMMM yyyy"),
                               "Учитывать праздничные дни",
                               "Да",
                               "Расписание",
                               "Итого|пн|вт|ср|чт|пт|сб|вс"};
        QCOMPARE(lines().mid(0, 10), (head + QStringList{"Основной график", "<Не назначен>"} + rest));
        QCOMPARE(lines().at(10), "0ч.|||||||1/");

        auto employee = support::employee(EmployeeId, "Иванов", "0042");
        employee.parameters.insert(db::param::SCHEDULE, "12");
        storeEmployees({employee});
        storeSchedules({support::schedule(12, "<i>Основной</i>")});
        m_panel->updateInfo(record);
        m_panel->setCalendarDays(7,
                                 {calendarDay({2026, 3, 1}, guide::Night), calendarDay({2026, 3, 2}, guide::Day),
                                  calendarDay({2026, 3, 3}, guide::Day, orvex::DayHoliday),
                                  calendarDay({2026, 4, 1}, guide::Day)});
        QCOMPARE(lines().mid(0, 11),
                 (head + QStringList{QString(QChar::ObjectReplacementCharacter), "Основной график", "<i>Основной</i>"}
                  + rest));
        QCOMPARE(lines().mid(11, 2), QStringList({"12ч.|||||||1/12", "8ч.|2/8|3/|4/|5/|6/|7/|8/"}));
        QCOMPARE(lastTable(document())->rows(), 7);
    }

    void shouldKeepDayCellsReadable_data()
    {
        addColumns<QString, QColor>({"background", "text"});
        QTest::newRow("light") << "#ffeb3b" << QColor(Qt::black);
        QTest::newRow("dark") << "#1a237e" << QColor(Qt::white);
        QTest::newRow("none") << QString() << PropertyPanelHelper::tableCellValueFormat().foreground().color();
    }

    void shouldKeepDayCellsReadable()
    {
        QFETCH(QString, background);
        QFETCH(QColor, text);
        auto record = personalSchedule(7, "Иванов март", EmployeeId, {2026, 3, 1});
        record.color = background;
        m_panel->updateInfo(record);
        m_panel->setCalendarDays(7, {calendarDay({2026, 3, 1}, guide::Night)});

        const auto table = lastTable(document());
        const auto backgroundOf = [table](int row, int column) {
            const QBrush brush = table->cellAt(row, column).format().background();
            return brush.style() == Qt::NoBrush ? QColor() : brush.color();
        };
        QCOMPARE(backgroundOf(1, 7), QColor(background));
        QCOMPARE(backgroundOf(1, 1), OutsideMonth);
        QCOMPARE(backgroundOf(2, 1), QColor());
        const QTextBlock number = table->cellAt(1, 7).begin().currentBlock();
        QCOMPARE(number.begin().fragment().charFormat().fontPointSize(), 6.0);
        for (const QTextBlock &block : {number, number.next()})
            QCOMPARE(block.begin().fragment().charFormat().foreground().color(), text);
    }

    void shouldIgnoreUnexpectedDays()
    {
        const Days days{calendarDay(inThisYear(1, 1), guide::Day)};
        auto record = schedule(orvex::ScheduleCalendar);
        m_panel->updateInfo(record);
        const QStringList zeros = lines();
        expectWrongId(7, 8);
        m_panel->setCalendarDays(8, days);
        QCOMPARE(lines(), zeros);

        m_panel->setCalendarDays(7, days);
        QVERIFY(lines().value(9).endsWith(QLatin1String("|8")));
        const QStringList answered = lines();
        expectWrongId(0, 7);
        m_panel->setCalendarDays(7, {});
        QCOMPARE(lines(), answered);

        // The hours stay when the same schedule is shown again, and start at zero for another one.
        m_panel->updateInfo(record);
        QCOMPARE(lines(), answered);
        record.id = 8;
        m_panel->updateInfo(record);
        QCOMPARE(lines(), zeros);
        m_panel->setCalendarDays(8, days);
        m_panel->updateInfo(record);
        m_panel->setCalendarDays(8, {});
        QCOMPARE(lines(), zeros);

        // A type without calendar days accepts them any number of times.
        m_panel->updateInfo(cycle({}));
        QSignalSpy changed(document(), &QTextDocument::contentsChanged);
        m_panel->setCalendarDays(7, days);
        m_panel->setCalendarDays(7, days);
        QVERIFY(changed.isEmpty());
    }

    void shouldAcceptInvalidRecords()
    {
        constexpr qint32 Lowest = std::numeric_limits<qint32>::min();
        constexpr qint32 Highest = std::numeric_limits<qint32>::max();
        auto record = cycle({});
        record.shifts.append(shift({{-Hour, -1}, {Lowest, Highest}}));
        record.shifts.append(shift({}));
        record.days = {workingDay(9),      workingDay(-5), workingDay(Highest),
                       workingDay(Lowest), workingDay(2),  workingDay(3)};
        m_panel->updateInfo(record);
        QCOMPARE(lines().mid(9, 4), QStringList({"1|||", "2|||", "3|||", "4|||"}));
        QCOMPARE(lines().constLast(), "6|00:00|00:00|");

        record.days.clear();
        m_panel->updateInfo(record);
        QCOMPARE(lines().constLast(), WorkModeHeader.last());
        m_panel->updateInfo(freeSchedule(Lowest, Highest, Lowest, Lowest));
        QCOMPARE(lines().size(), 11);

        // Without a valid month the table has only its header.
        m_panel->updateInfo(personalSchedule(7, "Без месяца", 0, {}));
        m_panel->setCalendarDays(7, Days{calendarDay({}, guide::Day)});
        QCOMPARE(lastTable(document())->rows(), 1);
    }

    void shouldPrintInOneEditAndKeepTheScrollPosition()
    {
        auto record = cycle({});
        for (int i = 0; i < 97; ++i)
            record.days.append(workingDay(0));
        QSignalSpy changed(document(), &QTextDocument::contentsChanged);
        m_panel->updateInfo(record);
        QCOMPARE(changed.size(), 2); // cleared, printed
        QScrollBar *const bar = m_text->verticalScrollBar();
        QVERIFY(bar->isVisible());
        QCOMPARE(bar->value(), 0);
        QCOMPARE(m_text->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);

        bar->setValue(700);
        m_panel->updateInfo(record);
        QCOMPARE(bar->value(), 700);
        record.id = 8;
        m_panel->updateInfo(record);
        QCOMPARE(bar->value(), 0);
        m_panel->updateInfo(freeSchedule(0, 0, 0, 0));
        QTRY_VERIFY(!bar->isVisible());
        QCOMPARE(m_text->toPlainText(),
                 "График\n\n\nТип графика\nНенормированный\n\n\nОбеденный перерыв\n0 мин.\n\n\n");
    }

    void shouldDrawTheTableLinesWhenScrolled()
    {
        auto record = schedule(orvex::ScheduleShift);
        for (int i = 0; i < 60; ++i)
            record.days.append(orvex::SCHEDULE_DAY());
        m_panel->updateInfo(record);
        m_text->verticalScrollBar()->setValue(m_text->verticalScrollBar()->maximum());
        const QImage image = m_text->viewport()->grab().toImage();
        const auto isLine = [&image](int x, int y) { return image.pixelColor(x, y) == TQGuiGlobals::lineColor(); };

        int bottom = image.height() - 1;
        while (bottom > 2 && !isLine(image.width() / 2, bottom))
            --bottom;
        QVector<int> columns;
        for (int x = 0; x < image.width(); ++x) {
            if (isLine(x, bottom - 2))
                columns.append(x);
        }
        QCOMPARE(columns.size(), 5);
        QSet<int> heights;
        int top = bottom;
        for (int y = bottom - 1; y >= 0; --y) {
            if (isLine(columns.at(3) + 2, y))
                heights.insert(std::exchange(top, y) - y);
        }
        QCOMPARE(heights.size(), 1);
        QVERIFY(top < *heights.begin());
        QVERIFY(*heights.begin() > QFontMetrics(PropertyPanelHelper::tableCellParamFormat().font()).height());
    }

    void shouldFollowThePalette()
    {
        auto record = personalSchedule(7, "Иванов март", EmployeeId, {2026, 3, 1});
        m_panel->updateInfo(record);
        m_panel->setCalendarDays(7, {calendarDay({2026, 3, 1}, guide::Night)});
        const QStringList before = lines();
        const QPalette light = QApplication::palette();
        QPalette dark = light;
        dark.setColor(QPalette::Base, QColor(0x20, 0x24, 0x28));
        dark.setColor(QPalette::Text, QColor(0xe6, 0xe8, 0xea));
        QApplication::setPalette(dark);
        QCOMPARE(lines(), before);
        const QColor label = document()->find("Табельный номер").charFormat().foreground().color();
        const QColor outsideMonth = lastTable(document())->cellAt(1, 1).format().background().color();
        QApplication::setPalette(light);
        QVERIFY(label.lightness() > 128);
        QVERIFY(outsideMonth.lightness() < 128);
    }

    void shouldRequestAnUpdateOfAnOutdatedDescription_data()
    {
        addColumns<orvex::SCHEDULE_DATA, int, QStringList>({"record", "shownCount", "expected"});
        const auto personal = personalSchedule(7, "Иванов март", EmployeeId, {2026, 3, 1});
        const QStringList guideChanges{"shift", "interval"};
        QTest::newRow("personal") << personal << 1 << guideChanges + QStringList{"employee", "removal", "photo"};
        QTest::newRow("calendar") << schedule(orvex::ScheduleCalendar) << 1 << guideChanges;
        QTest::newRow("shifts of its own") << cycle({}) << 1 << QStringList();
        QTest::newRow("several") << personal << 2 << QStringList();
        QTest::newRow("none") << personal << 0 << QStringList();
    }

    void shouldRequestAnUpdateOfAnOutdatedDescription()
    {
        QFETCH(orvex::SCHEDULE_DATA, record);
        QFETCH(int, shownCount);
        storeEmployees({employee(EmployeeId, "Иванов", QString())});
        m_panel->updateInfo(record);
        m_panel->setCalendarDays(7, {});
        if (shownCount == 0)
            m_panel->clear();
        else if (shownCount > 1)
            m_panel->updateInfo(shownCount);

        const auto changeOf = [](const QString &dataName, quint32 id) {
            orvex::StorageChange change;
            change.objects[dataName].insert(id, {QString(), id, {}});
            return change;
        };
        const auto blobOf = [](quint32 id, const QString &name) {
            orvex::StorageChange change;
            change.changedBlobs[id] = QStringList(name);
            return change;
        };
        orvex::StorageChange removal;
        removal.removedObjects[orvex::SUBJECT_DATANAME] = {EmployeeId};
        const QVector<QPair<QString, orvex::StorageChange>> changes{
            {"shift", changeOf(orvex::SCHEDULE_SHIFT_DATANAME, guide::Day)},
            {"interval", changeOf(orvex::SHIFT_INTERVAL_DATANAME, 11)},
            {"employee", changeOf(orvex::SUBJECT_DATANAME, EmployeeId)},
            {"removal", removal},
            {"photo", blobOf(EmployeeId, db::param::PHOTO)},
            {"other employee", changeOf(orvex::SUBJECT_DATANAME, EmployeeId + 1)},
            {"other object", changeOf("door", EmployeeId)},
            {"other employee's photo", blobOf(EmployeeId + 1, db::param::PHOTO)},
            {"other blob", blobOf(EmployeeId, "PT_SCAN")}};
        QSignalSpy needed(m_panel.get(), &PanelInfoWidget::updateNeeded);
        QStringList reported;
        for (const auto &[name, change] : changes) {
            orvex::LocalStorage::instance()->apply(change);
            for (; !needed.isEmpty(); needed.removeFirst())
                reported.append(name);
        }
        QTEST(reported, "expected");
    }

private:
    [[nodiscard]] QTextDocument *document() const { return m_text->document(); }
    [[nodiscard]] QStringList lines() const { return linesOf(document()); }
    void expectWrongId(int current, int given) const
    {
        QTest::ignoreMessage(QtWarningMsg,
                             qPrintable(QStringLiteral("wrong schedule id %1 %2").arg(current).arg(given)));
    }

    std::unique_ptr<PanelInfoWidget> m_panel;
    QTextEdit *m_text = nullptr;
};

QTEST_MAIN(TestPanelInfoWidget)
#include "tst_panelinfowidget.moc"
