#include "clientfixture.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTreeView>
#include <QWizard>
#include <QtTest>

#include <memory>

namespace {

const QString Employee = QStringLiteral("Петрова Анна");

} // namespace

/// An operator's way through the running client and a real store: find an employee by typing, mark a month with a
/// repeated pattern, save, change three days, save, delete.
class TestPersonalJourney : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void shouldBeDoneByMouse();
    void shouldBeDoneByKeyboardAlone();
    void shouldRefuseAMonthThatIsTaken();

private:
    [[nodiscard]] QTableView *table() const { return m_client->table(); }
    [[nodiscard]] QWizard *wizard() const { return m_client->window().findChild<QWizard *>(); }
    [[nodiscard]] static QTableView *grid(const QWidget &window)
    {
        return window.findChild<QTableView *>("calendarView");
    }
    void addByMouse();
    void finishByMouse();
    void checkCreated();
    void checkThreeDaysOff();
    [[nodiscard]] QMap<QDate, quint32> storedShifts();
    [[nodiscard]] quint32 patternShift(const QDate &date) const;
    [[nodiscard]] QString outcome() const { return wizard()->findChild<QLabel *>("messageLabel")->text(); }

    std::unique_ptr<ClientFixture> m_client;
    QDate m_month; ///< its first day
    QDate m_monday; ///< the first one of the month
};

void TestPersonalJourney::init()
{
    const QDate today = QDate::currentDate();
    m_month = QDate(today.year(), today.month(), 1);
    m_monday = m_month.addDays((8 - m_month.dayOfWeek()) % 7);
    m_client = std::make_unique<ClientFixture>(QFileInfo(QStringLiteral(PLUGIN_FILE)).path());
    auto *tabs = m_client->window().findChild<QTabBar *>("pageTabs");
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
}

void TestPersonalJourney::cleanup()
{
    m_client.reset();
}

QMap<QDate, quint32> TestPersonalJourney::storedShifts()
{
    orvex::StorageChange all;
    if (!m_client->store.database.snapshot(all).ok() || all.schedules.isEmpty())
        return {};
    const QList<qint32> ids{qint32(all.schedules.cbegin().key())};
    const auto reply = m_client->store.database.execute(
        StoreFixture::request(request::GetScheduleCalendar, ids, m_month, m_month.addMonths(1).addDays(-1)));
    QList<qint32> read;
    QDate first;
    QDate last;
    QHash<qint32, QList<orvex::SCHEDULE_CALENDAR_DAY>> days;
    QMap<QDate, quint32> shifts;
    if (readPayload(reply.payload(), read, first, last, days)) {
        for (const auto &day : days.value(ids.first()))
            shifts.insert(day.date, day.shiftId);
    }
    return shifts;
}

quint32 TestPersonalJourney::patternShift(const QDate &date) const
{
    const auto days = m_monday.daysTo(date);
    if (days < 0)
        return 0;
    return days % 4 == 0 ? m_client->store.dayShift : days % 4 == 1 ? m_client->store.nightShift : 0;
}

void TestPersonalJourney::checkCreated()
{
    QTRY_COMPARE(table()->selectionModel()->selectedRows().size(), 1);
    const QModelIndex row = table()->currentIndex();
    const QString month = QLocale().standaloneMonthName(m_month.month(), QLocale::LongFormat);
    QCOMPARE(row.siblingAtColumn(1).data().toString(),
             QStringLiteral("%1 %2 %3").arg(Employee, month).arg(m_month.year()));
    QCOMPARE(row.siblingAtColumn(3).data().toString(), Employee);
    const auto shifts = storedShifts();
    for (QDate date = m_month; date.month() == m_month.month(); date = date.addDays(1))
        QCOMPARE(shifts.value(date), patternShift(date));
}

void TestPersonalJourney::checkThreeDaysOff()
{
    QTRY_COMPARE(storedShifts().value(m_monday.addDays(1)), 0u);
    const auto shifts = storedShifts();
    for (QDate date = m_monday; date.month() == m_month.month(); date = date.addDays(1))
        QCOMPARE(shifts.value(date), m_monday.daysTo(date) < 3 ? 0 : patternShift(date));
}

/// As far as the employee's month.
void TestPersonalJourney::addByMouse()
{
    hand::clickAction(m_client->window(), QStringLiteral("actionAddPersonalSchedule"));
    QVERIFY(wizard());
    hand::activate(*wizard());
    auto *tree = wizard()->findChild<QTreeView *>("employeeView");
    QTest::mouseClick(wizard()->findChild<QLineEdit *>("searchEdit"), Qt::LeftButton);
    hand::type(QStringLiteral("петр"));
    const auto found = tree->model()->match(tree->model()->index(0, 0), Qt::DisplayRole, m_client->store.otherWorker, 1,
                                            Qt::MatchExactly | Qt::MatchRecursive);
    QCOMPARE(found.size(), 1);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(found.first()).center());
    QTest::mouseClick(wizard()->button(QWizard::NextButton), Qt::LeftButton);
    QCOMPARE(wizard()->currentId(), 1);
}

void TestPersonalJourney::finishByMouse()
{
    QTest::mouseClick(wizard()->button(QWizard::NextButton), Qt::LeftButton);
    QTRY_VERIFY(wizard()->button(QWizard::FinishButton)->isEnabled());
}

void TestPersonalJourney::shouldBeDoneByMouse()
{
    addByMouse();
    auto &days = *grid(*wizard());
    hand::clickDay(days, m_monday);
    hand::clickMenu(days, QStringLiteral("Задать смену"), QStringLiteral("Д День"));
    hand::clickDay(days, m_monday.addDays(1));
    hand::clickMenu(days, QStringLiteral("Задать смену"), QStringLiteral("Н Ночь"));
    hand::clickDay(days, m_monday);
    hand::clickDay(days, m_monday.addDays(3), Qt::ShiftModifier);
    hand::clickMenu(days, QStringLiteral("Применить периодичность"), QStringLiteral("До конца месяца"));
    finishByMouse();
    QCOMPARE(outcome(), QStringLiteral("Создание графика успешно завершено!"));
    QTest::mouseClick(wizard()->button(QWizard::FinishButton), Qt::LeftButton);
    QTRY_VERIFY(!wizard());
    checkCreated();

    hand::whenOpen([this](QDialog &dialog) {
        auto &days = *grid(dialog);
        QTRY_COMPARE(hand::cell(days, m_monday).data(CalendarShiftRole).toUInt(), m_client->store.dayShift);
        hand::clickDay(days, m_monday);
        hand::clickDay(days, m_monday.addDays(2), Qt::ShiftModifier);
        hand::clickMenu(days, QStringLiteral("Задать смену"), QStringLiteral("Выходной"));
        const auto *box = dialog.findChild<QDialogButtonBox *>("buttonBox");
        QTest::mouseClick(box->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
    const QPoint row = table()->visualRect(table()->currentIndex()).center();
    QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, row);
    QTest::mouseDClick(table()->viewport(), Qt::LeftButton, {}, row);
    checkThreeDaysOff();

    hand::whenOpen([](QDialog &dialog) {
        QTest::mouseClick(qobject_cast<QMessageBox *>(&dialog)->button(QMessageBox::Ok), Qt::LeftButton);
    });
    hand::clickAction(m_client->window(), QStringLiteral("actionDelPersonalSchedule"));
    QTRY_COMPARE(table()->model()->rowCount(), 0);
}

void TestPersonalJourney::shouldBeDoneByKeyboardAlone()
{
    hand::tabTo(QStringLiteral("scheduleView"));
    hand::press(Qt::Key_Insert);
    QVERIFY(wizard());
    hand::activate(*wizard());
    hand::type(QStringLiteral("петр"));
    hand::press(Qt::Key_Down);
    hand::press(Qt::Key_Return);
    QCOMPARE(wizard()->currentId(), 1);
    hand::tabTo(QStringLiteral("calendarView"));
    auto &days = *grid(*wizard());
    hand::goToDay(days, m_monday);
    hand::keyMenu(QStringLiteral("Задать смену"), QStringLiteral("Д День"));
    hand::press(Qt::Key_Right);
    hand::keyMenu(QStringLiteral("Задать смену"), QStringLiteral("Н Ночь"));
    hand::press(Qt::Key_Left);
    for (int i = 0; i < 3; ++i)
        hand::press(Qt::Key_Right, Qt::ShiftModifier);
    hand::keyMenu(QStringLiteral("Применить периодичность"), QStringLiteral("До конца месяца"));
    hand::press(Qt::Key_Return);
    QTRY_VERIFY(wizard()->button(QWizard::FinishButton)->isEnabled());
    QCOMPARE(outcome(), QStringLiteral("Создание графика успешно завершено!"));
    hand::press(Qt::Key_Return);
    QTRY_VERIFY(!wizard());
    checkCreated();

    hand::activate(m_client->window());
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(table()));
    hand::whenOpen([this](QDialog &dialog) {
        auto &days = *grid(dialog);
        QTRY_COMPARE(hand::cell(days, m_monday).data(CalendarShiftRole).toUInt(), m_client->store.dayShift);
        hand::goToDay(days, m_monday);
        hand::press(Qt::Key_Right, Qt::ShiftModifier);
        hand::press(Qt::Key_Right, Qt::ShiftModifier);
        hand::keyMenu(QStringLiteral("Задать смену"), QStringLiteral("Выходной"));
        hand::press(Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
    });
    hand::press(Qt::Key_Return);
    checkThreeDaysOff();

    hand::activate(m_client->window());
    hand::whenOpen([](QDialog &dialog) {
        const auto *ok = qobject_cast<QMessageBox *>(&dialog)->button(QMessageBox::Ok);
        for (int i = 0; i < 3 && !ok->hasFocus(); ++i)
            hand::press(Qt::Key_Tab);
        hand::press(Qt::Key_Space);
    });
    hand::press(Qt::Key_Delete);
    QTRY_COMPARE(table()->model()->rowCount(), 0);
}

void TestPersonalJourney::shouldRefuseAMonthThatIsTaken()
{
    addByMouse();
    finishByMouse();
    QTest::mouseClick(wizard()->button(QWizard::FinishButton), Qt::LeftButton);
    QTRY_COMPARE(table()->model()->rowCount(), 1);
    QTRY_VERIFY(!wizard());

    addByMouse();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^found double for personal schedule \\d+ QDate"));
    finishByMouse();
    QCOMPARE(outcome(),
             QStringLiteral("Индивидуальный график для %1 за %2 уже существует")
                 .arg(Employee, QLocale().toString(m_month, QStringLiteral("MMMM yyyy"))));
    QTest::mouseClick(wizard()->button(QWizard::FinishButton), Qt::LeftButton);
    QCOMPARE(table()->model()->rowCount(), 1);
}

QTEST_MAIN(TestPersonalJourney)
#include "tst_personaljourney.moc"
