#include "clientfixture.h"
#include "localstorage.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QRadioButton>
#include <QSpinBox>
#include <QWizard>

using namespace orvex;

namespace {

constexpr int Hour = 3600;

/// Sits at the client with a mouse or with a keyboard, never with both.
class Operator
{
public:
    explicit Operator(bool mouse)
        : m_mouse(mouse)
    {
    }

    template <class T = QWidget> T *see(const char *name) const
    {
        for (auto *widget : m_window->findChildren<T *>(QLatin1String(name))) {
            if (widget->isVisible())
                return widget;
        }
        qFatal("Nobody can see %s", name);
    }

    void sitDownAt(QWidget *window) { m_window = window; }

    /// Brings the focus to a widget, as far as it takes.
    void reach(const char *name) const
    {
        auto *wanted = see(name);
        if (m_mouse) {
            QTest::mouseClick(wanted, Qt::LeftButton, Qt::NoModifier, QPoint(8, wanted->height() / 2));
            return;
        }
        for (int i = 0; i < 40 && hand::focus() != wanted; ++i)
            hand::press(Qt::Key_Tab);
        if (hand::focus() != wanted)
            qFatal("No key leads to %s", name);
    }

    void push(const char *name) const
    {
        reach(name);
        if (!m_mouse)
            hand::press(Qt::Key_Space);
    }

    void type(const char *name, const QString &text) const
    {
        reach(name);
        QTest::keyClick(hand::focus(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(hand::focus(), text);
    }

    /// Into the hours, and on into the minutes.
    void typeTime(const char *name, const QString &digits) const
    {
        reach(name);
        auto *hours = see(name)->findChild<QLineEdit *>();
        if (m_mouse)
            QTest::mouseDClick(hours, Qt::LeftButton, Qt::NoModifier, QPoint(8, hours->height() / 2));
        QTest::keyClicks(hand::focus(), digits);
    }

    void choose(const char *button, int place) const
    {
        if (m_mouse) {
            push(button);
            return;
        }
        for (int i = 0; i < place; ++i)
            hand::press(Qt::Key_Down);
    }

    void goOn() const
    {
        auto *wizard = qobject_cast<QWizard *>(m_window);
        auto *button = wizard->button(wizard->nextId() < 0 ? QWizard::FinishButton : QWizard::NextButton);
        if (m_mouse)
            QTest::mouseClick(button, Qt::LeftButton);
        else
            hand::press(Qt::Key_Return);
    }

    /// Types digits into a cell of a table.
    void fillCell(const char *table, int row, int column, const QString &digits) const
    {
        auto *view = see<QTableView>(table);
        goToCell(view, row, column);
        if (m_mouse)
            QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, center(view, row, column));
        else
            hand::press(Qt::Key_F2);
        QTest::keyClicks(hand::focus(), digits);
        hand::press(Qt::Key_Return);
    }

    void tickCell(const char *table, int row, int column) const
    {
        goToCell(see<QTableView>(table), row, column);
        if (!m_mouse)
            hand::press(Qt::Key_Space);
    }

    /// Picks an entry from the context menu of a cell.
    void pickFor(const char *table, int row, int column, const QString &group, const QString &text) const
    {
        auto *view = see<QTableView>(table);
        goToCell(view, row, column);
        if (m_mouse)
            hand::clickMenu(*view, group, text);
        else
            hand::keyMenu(group, text);
    }

private:
    static QPoint center(const QTableView *view, int row, int column)
    {
        return view->visualRect(view->model()->index(row, column)).center();
    }

    void goToCell(QTableView *view, int row, int column) const
    {
        const auto index = view->model()->index(row, column);
        view->scrollTo(index);
        if (m_mouse) {
            QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, center(view, row, column));
            return;
        }
        reach(view->objectName().toLatin1().constData());
        for (int i = 0; i < 100 && view->currentIndex().row() != row; ++i)
            hand::press(view->currentIndex().row() < row ? Qt::Key_Down : Qt::Key_Up);
        for (int i = 0; i < 100 && view->currentIndex().column() != column; ++i)
            hand::press(view->currentIndex().column() < column ? Qt::Key_Right : Qt::Key_Left);
    }

    bool m_mouse;
    QWidget *m_window = nullptr;
};

QString intervalsOf(const SCHEDULE_DATA &schedule)
{
    QStringList texts;
    for (const auto &shift : schedule.shifts) {
        for (const auto &time : shift.times)
            texts.append(QStringLiteral("%1-%2").arg(time.start / 60.0 / 60).arg(time.finish / 60.0 / 60));
    }
    return texts.join(QLatin1Char(' '));
}

QString daysOf(const SCHEDULE_DATA &schedule)
{
    QStringList texts;
    for (const auto &day : schedule.days)
        texts.append(day.dayOff ? QStringLiteral("-") : QString::number(day.shift));
    return texts.join(QLatin1Char(' '));
}

} // namespace

/// From the add key to the stored schedule and back into the editor, in the running client on a real store.
class TestCreationJourney : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void shouldCreateAFixedSchedule_data() { inputDevices(); }
    void shouldCreateAFixedSchedule();
    void shouldCreateAShiftSchedule_data() { inputDevices(); }
    void shouldCreateAShiftSchedule();
    void shouldCreateAFreeSchedule_data() { inputDevices(); }
    void shouldCreateAFreeSchedule();
    void shouldCreateACalendarSchedule_data() { inputDevices(); }
    void shouldCreateACalendarSchedule();
    void shouldSayWhenAScheduleIsRefused();
    void shouldStandInADumpOfTheStore();

private:
    static void inputDevices();
    /// Opens the wizard on the page of a type.
    Operator startWizard(const char *type, int place, const QString &name);
    /// Back to the main window, as a window manager would when a dialog closes; there is none here.
    void returnToList();
    /// Leaves the last page and hands out what the store has made of the schedule.
    void finish(const Operator &user, const QString &name, SCHEDULE_DATA *stored);
    /// The dump's rows of a table: column name to value.
    [[nodiscard]] QList<QVariantMap> dumped(const QString &table) const;
    /// Opens the editor on the selected schedule, has it read and cancels it.
    void lookIntoEditor(const std::function<void(const Operator &)> &read);
    [[nodiscard]] QTableView *list() const { return m_client->table(); }

    std::unique_ptr<ClientFixture> m_client;
    QPointer<QWizard> m_wizard;
};

void TestCreationJourney::initTestCase()
{
    m_client = std::make_unique<ClientFixture>(QStringLiteral(PLUGIN_FOLDER));
    QVERIFY(list());
}

void TestCreationJourney::cleanupTestCase()
{
    m_client.reset();
}

void TestCreationJourney::inputDevices()
{
    QTest::addColumn<bool>("mouse");
    QTest::newRow("mouse") << true;
    QTest::newRow("keyboard") << false;
}

Operator TestCreationJourney::startWizard(const char *type, int place, const QString &name)
{
    Operator user(QTest::currentDataTag() != QByteArray("keyboard"));
    returnToList();
    hand::press(Qt::Key_Insert);
    m_wizard = list()->window()->findChild<QWizard *>();
    if (!m_wizard || !QTest::qWaitFor([this] { return QApplication::activeWindow() == m_wizard; }))
        qFatal("The wizard has not come up");
    user.sitDownAt(m_wizard);
    user.choose(type, place);
    user.goOn();
    user.type("leScheduleName", name);
    return user;
}

void TestCreationJourney::returnToList()
{
    m_client->window().activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &m_client->window());
    list()->setFocus();
}

void TestCreationJourney::finish(const Operator &user, const QString &name, SCHEDULE_DATA *stored)
{
    user.goOn();
    QTRY_COMPARE(user.see<QLabel>("messageLabel")->text(), QStringLiteral("Создание графика успешно завершено!"));
    user.goOn();
    QTRY_VERIFY(!m_wizard);
    const auto selectedName = [this] {
        const auto rows = list()->selectionModel()->selectedRows(1);
        return rows.size() == 1 ? rows.first().data().toString() : QString();
    };
    QTRY_COMPARE(selectedName(), name);
    for (const auto &schedule : LocalStorage::instance()->schedules()) {
        if (schedule.name == name)
            *stored = schedule;
    }
    QVERIFY(stored->id > 0);
    QCOMPARE(stored->state, int(ScheduleStateActive));
}

void TestCreationJourney::lookIntoEditor(const std::function<void(const Operator &)> &read)
{
    bool seen = false;
    hand::whenOpen([&](QDialog &editor) {
        Operator reader(true);
        reader.sitDownAt(&editor);
        read(reader);
        seen = true;
    });
    returnToList();
    hand::press(Qt::Key_Return);
    QTRY_VERIFY(seen);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestCreationJourney::shouldCreateAFixedSchedule()
{
    const QString name = QStringLiteral("Fixed by %1").arg(QLatin1String(QTest::currentDataTag()));
    const auto user = startWizard("rbFixed", 0, name);
    user.typeTime("deShiftEnd", QStringLiteral("1830"));
    user.push("cbSubLastHour");
    SCHEDULE_DATA stored;
    finish(user, name, &stored);
    QCOMPARE(stored.type, ScheduleFixed);
    QCOMPARE(intervalsOf(stored), QStringLiteral("8-12 13-18.5 8-12 13-17.5"));
    QCOMPARE(daysOf(stored), QStringLiteral("0 0 0 0 1 - -"));
    QCOMPARE(stored.useHolidays, 1);
    lookIntoEditor([&](const Operator &reader) {
        QCOMPARE(reader.see<QLineEdit>("leScheduleName")->text(), name);
        QCOMPARE(reader.see<QComboBox>("cbScheduleType")->currentText(), QStringLiteral("Фиксированный"));
        QCOMPARE(reader.see<QTableView>("tvMode")->model()->rowCount(), 7);
    });
}

void TestCreationJourney::shouldCreateAShiftSchedule()
{
    const QString name = QStringLiteral("Shift by %1").arg(QLatin1String(QTest::currentDataTag()));
    const auto user = startWizard("rbShift", 1, name);
    for (int i = 0; i < 3; ++i)
        user.push("tbAddShift");
    for (const int row : {0, 1}) {
        user.fillCell("twSchedule", row, 0, QStringLiteral("0800"));
        user.fillCell("twSchedule", row, 1, QStringLiteral("2000"));
        user.tickCell("twSchedule", row + 2, 4);
    }
    SCHEDULE_DATA stored;
    finish(user, name, &stored);
    QCOMPARE(stored.type, ScheduleShift);
    QCOMPARE(intervalsOf(stored), QStringLiteral("8-20"));
    QCOMPARE(daysOf(stored), QStringLiteral("0 0 - -"));
    QCOMPARE(stored.startDate, QDate::currentDate());
    lookIntoEditor([&](const Operator &reader) {
        QCOMPARE(reader.see<QLineEdit>("leScheduleName")->text(), name);
        QCOMPARE(reader.see<QComboBox>("cbScheduleType")->currentText(), QStringLiteral("Сменный"));
        QCOMPARE(reader.see<QTableView>("tvMode")->model()->rowCount(), 4);
        QCOMPARE(reader.see<QDateEdit>("deStartDate")->date(), QDate::currentDate());
    });
}

void TestCreationJourney::shouldCreateAFreeSchedule()
{
    const QString name = QStringLiteral("Free by %1").arg(QLatin1String(QTest::currentDataTag()));
    const auto user = startWizard("rbUnregul", 3, name);
    user.push("cbFreeUseStart");
    user.typeTime("freeStartEdit", QStringLiteral("0900"));
    user.push("cbFreeUseFinish");
    user.typeTime("freeFinishEdit", QStringLiteral("1800"));
    user.push("cbFreeUseBreak");
    user.type("freeBreakEdit", QStringLiteral("60"));
    user.push("cbFreeUseNorm");
    SCHEDULE_DATA stored;
    finish(user, name, &stored);
    QCOMPARE(stored.type, ScheduleFree);
    QCOMPARE(stored.freeStart, 9 * Hour);
    QCOMPARE(stored.freeFinish, 18 * Hour);
    QCOMPARE(stored.freeBreak, Hour);
    QCOMPARE(stored.freeNorm, 8 * Hour);
    lookIntoEditor([&](const Operator &reader) {
        QCOMPARE(reader.see<QLineEdit>("leScheduleName")->text(), name);
        QCOMPARE(reader.see<QTimeEdit>("freeStartEdit")->time(), QTime(9, 0));
        QCOMPARE(reader.see<QTimeEdit>("freeFinishEdit")->time(), QTime(18, 0));
        QCOMPARE(reader.see<QSpinBox>("freeNormHEdit")->value(), 8);
        QCOMPARE(reader.see<QSpinBox>("freeBreakEdit")->value(), 60);
    });
}

void TestCreationJourney::shouldCreateACalendarSchedule()
{
    const QString name = QStringLiteral("Year by %1").arg(QLatin1String(QTest::currentDataTag()));
    const auto user = startWizard("rbCalendar", 2, name);
    user.pickFor("calendarView", 1, 4, QStringLiteral("Задать смену"), QStringLiteral("Д День"));
    SCHEDULE_DATA stored;
    finish(user, name, &stored);
    QCOMPARE(stored.type, ScheduleCalendar);
    const int year = QDate::currentDate().year();
    QCOMPARE(stored.startDate, QDate(year, 1, 1));
    lookIntoEditor([&](const Operator &reader) {
        QCOMPARE(reader.see<QLineEdit>("leScheduleName")->text(), name);
        QCOMPARE(reader.see<QSpinBox>("sbYear")->value(), year);
        // The third of February carries the day shift of the guide.
        const auto cell = reader.see<QTableView>("calendarView")->model()->index(1, 4);
        QTRY_COMPARE(cell.data(Qt::UserRole + 1).toUInt(), m_client->store.dayShift);
        QCOMPARE(cell.data(Qt::UserRole + 2).toDate(), QDate(year, 2, 3));
    });
}

void TestCreationJourney::shouldSayWhenAScheduleIsRefused()
{
    // An hour off a shift that ends at midnight leaves a finish before the start of the day.
    const auto user = startWizard("rbFixed", 0, QStringLiteral("Refused"));
    user.typeTime("deShiftEnd", QStringLiteral("0000"));
    user.push("cbSubLastHour");
    user.goOn();
    QTRY_COMPARE(user.see<QLabel>("messageLabel")->text(), QStringLiteral("Ошибка добавления графика работ"));
    user.goOn();
    QTRY_VERIFY(!m_wizard);
    for (const auto &schedule : LocalStorage::instance()->schedules())
        QVERIFY(schedule.name != QLatin1String("Refused"));
}

QList<QVariantMap> TestCreationJourney::dumped(const QString &table) const
{
    QProcess process;
    process.start(QStringLiteral(ORVEXCTL), {QStringLiteral("dump"), m_client->store.path()});
    if (!process.waitForFinished())
        return {};
    const auto dump = QJsonDocument::fromJson(process.readAllStandardOutput()).toVariant().toMap();
    const auto content = dump.value(QStringLiteral("tables")).toMap().value(table).toMap();
    const auto columns = content.value(QStringLiteral("columns")).toStringList();
    QList<QVariantMap> rows;
    for (const auto &row : content.value(QStringLiteral("rows")).toList()) {
        QVariantMap values;
        for (int i = 0; i < columns.size(); ++i)
            values.insert(columns.at(i), row.toList().value(i));
        rows.append(values);
    }
    return rows;
}

void TestCreationJourney::shouldStandInADumpOfTheStore()
{
    const QDate today = QDate::currentDate();
    const auto text = [](const QDate &date) { return date.toString(Qt::ISODate); };
    QStringList expected;
    for (const char *device : {"keyboard", "mouse"}) {
        const QString by = QStringLiteral(" by %1: ").arg(QLatin1String(device));
        expected.append({QStringLiteral("Fixed") + by + text(today.addDays(1 - today.dayOfWeek())) + " 7 days",
                         QStringLiteral("Free") + by + text(today) + " 0 days 32400-64800 28800 3600",
                         QStringLiteral("Shift") + by + text(today) + " 4 days",
                         QStringLiteral("Year") + by + text(QDate(today.year(), 1, 1)) + " 0 days, one marked"});
    }
    const auto marked = dumped(QStringLiteral("schedule_calendar_day"));
    QStringList found;
    for (const auto &row : dumped(QStringLiteral("schedule"))) {
        const auto mode = QJsonDocument::fromJson(row.value("mode").toString().toUtf8()).toVariant().toMap();
        QString line = QStringLiteral("%1: %2 %3 days")
                           .arg(row.value("name").toString(), row.value("start_date").toString())
                           .arg(mode.value("days").toList().size());
        if (row.value("free_norm").toInt() > 0)
            line += QStringLiteral(" %1-%2 %3 %4")
                        .arg(row.value("free_start").toInt())
                        .arg(row.value("free_finish").toInt())
                        .arg(row.value("free_norm").toInt())
                        .arg(row.value("free_break").toInt());
        for (const auto &day : marked) {
            if (day.value("schedule_id") == row.value("id")
                && day.value("shift_id").toUInt() == m_client->store.dayShift
                && day.value("date").toString() == text(QDate(today.year(), 2, 3)))
                line += QStringLiteral(", one marked");
        }
        found.append(line);
    }
    std::sort(found.begin(), found.end());
    std::sort(expected.begin(), expected.end());
    QCOMPARE(found, expected);
    QCOMPARE(marked.size(), 2);
}

QTEST_MAIN(TestCreationJourney)
#include "tst_creationjourney.moc"
