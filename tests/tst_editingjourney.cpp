#include "calendarcells.h"
#include "clientfixture.h"
#include "faultyio.h"
#include "hands.h"
#include "testcolumns.h"

#include <QFileInfo>
#include <QLabel>
#include <QTabWidget>
#include <QTextEdit>
#include <QtTest>

#include <cerrno>

using namespace orvex;
using namespace support;

namespace {

SCHEDULE_DATA sample(ScheduleMode type)
{
    auto schedule = newSchedule(QStringLiteral("Schedule"), type);
    schedule.startDate = QDate(QDate::currentDate().year(), 1, 1);
    if (type == ScheduleFixed || type == ScheduleShift) {
        schedule.shifts = {shift({{8 * Hour, 10 * Hour}, {11 * Hour, 12 * Hour}, {13 * Hour, 17 * Hour}}),
                           shift({{20 * Hour, 6 * Hour}})};
        schedule.days = {workingDay(0), workingDay(1), workingDay(0), {-1, -1, -1, true}};
    }
    return schedule;
}

} // namespace

/// The operator changes schedules in the running client: what they see afterwards, and what is stored.
class TestEditingJourney : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_person = Operator(true); }

    void cleanup()
    {
        faultyio::reset();
        m_client.reset();
    }

    void shouldEditEachType_data()
    {
        addColumns<int, bool, QString, QString>({"type", "mouse", "stored", "panelText"});

        const auto add = [](const char *name, int type, const QString &stored, const QString &panelText) {
            QTest::addRow("%s by mouse", name) << type << true << stored << panelText;
            QTest::addRow("%s by keyboard", name) << type << false << stored << panelText;
        };
        add("fixed", ScheduleFixed, "New: - 1 0 - - - - | 8-10 11-12 13-17 | 20-6", "20:00");
        // Without the night shift and its days; the last interval is first, and a day is added.
        add("shift", ScheduleShift, "New: 0 - 0 - 0 | 13-17 8-10 11-12", "Сменный");
        add("free", ScheduleFree, "New: 22-6 7-1", "7 час. 0 мин.");
        add("calendar", ScheduleCalendar, "New:", "февраля 8");
    }
    void shouldEditEachType()
    {
        QFETCH(int, type);
        QFETCH(bool, mouse);
        QFETCH(QString, panelText);
        m_person = Operator(mouse);
        const auto before = start(ScheduleMode(type));
        m_client->edit(m_person, [&](QDialog &editor) {
            QCOMPARE(focusWidget()->objectName(), QStringLiteral("leScheduleName"));
            typeText(focusWidget(), QStringLiteral("New"));
            if (type == ScheduleFixed)
                m_person.toggleCell("tvMode", 0, 2);
            else if (type == ScheduleShift)
                rearrangeShifts(editor, mouse);
            else if (type == ScheduleFree)
                enterNightLimits();
            else
                putDayShift();
            m_person.acceptDialog();
        });
        // The record, and the days of a calendar after it.
        QTRY_COMPARE(stored().version, before.version + (type == ScheduleCalendar ? 2 : 1));
        QTEST(scheduleText(stored()), "stored");
        QTRY_COMPARE(listedName(), QStringLiteral("New"));
        QTRY_VERIFY2(panel().contains("New") && panel().contains(panelText), qPrintable(panel()));
        QCOMPARE(popups(), QStringList());
    }

    void shouldRefuseToSave_data()
    {
        addColumns<bool, QString>({"isChanged", "reason"});
        QTest::newRow("changed by another") << true << "Откройте график заново и повторите изменения.";
        QTest::newRow("without the right") << false << "Обратитесь к администратору.";
    }
    void shouldRefuseToSave()
    {
        QFETCH(QString, reason);
        QFETCH(bool, isChanged);
        auto theirs = start(ScheduleShift);
        auto &database = m_client->store.database;
        m_client->edit(m_person, [&](QDialog &) {
            theirs.name = QStringLiteral("Theirs");
            if (isChanged)
                QVERIFY(database.execute(storeRequest(request::UpdateSchedule, theirs)).isSuccess());
            else
                QVERIFY(database.setRoleGranted(QStringLiteral("RL_SCHEDULE_UPDATE"), false).ok());
            typeText(focusWidget(), QStringLiteral("Mine"));
            m_person.acceptDialog();
        });
        QTRY_COMPARE(popups().size(), 1);
        QVERIFY2(isUpdateError(popups().first(), reason), qPrintable(popups().first()));
        const QString kept = isChanged ? QStringLiteral("Theirs") : QStringLiteral("Schedule");
        QCOMPARE(stored().name, kept);
        QTRY_COMPARE(listedName(), kept);
    }

    void shouldKeepTheRecordWhenItsDaysCannotBeSaved()
    {
        const auto before = start(ScheduleCalendar);
        // The disk fails as soon as the record is stored, before its answer arrives.
        QObject watch;
        connect(&m_client->client().server(), &TQServerInterface::aboutToDeliverReply, &watch, [&] {
            if (stored().version > before.version)
                faultyio::fail(QFileInfo(m_client->store.path()).path(), EIO, 0, -1);
        });
        m_client->edit(m_person, [&](QDialog &) {
            typeText(focusWidget(), QStringLiteral("New"));
            putDayShift();
            m_person.acceptDialog();
        });
        const auto &server = m_client->client().server();
        QTRY_VERIFY_WITH_TIMEOUT(!server.isConnected(), 20000);
        QCOMPARE(popups().size(), 1);
        QVERIFY2(isUpdateError(popups().first(), QStringLiteral("Проверьте диск")), qPrintable(popups().first()));
        disconnect(&server, nullptr, &watch, nullptr);
        faultyio::reset();
        QTRY_VERIFY_WITH_TIMEOUT(server.isConnected(), 20000);
        QTRY_COMPARE(listedName(), QStringLiteral("New"));
        QCOMPARE(stored().version, before.version + 1);

        m_client->edit(m_person, [&](QDialog &) {
            putDayShift();
            m_person.acceptDialog();
        });
        QTRY_COMPARE(stored().version, before.version + 3);
        QTRY_VERIFY(panel().contains(QStringLiteral("февраля 8")));
    }

private:
    /// A client with one schedule, selected.
    SCHEDULE_DATA start(ScheduleMode type)
    {
        m_client = std::make_unique<ClientFixture>();
        const auto schedule = m_client->store.add(sample(type));
        m_id = quint32(schedule.id);
        [this] { QTRY_COMPARE(m_client->table()->model()->rowCount(), 1); }();
        return schedule;
    }
    [[nodiscard]] SCHEDULE_DATA stored() { return m_client->store.stored(m_id); }
    [[nodiscard]] QString listedName() const { return m_client->table()->model()->index(0, 1).data().toString(); }
    [[nodiscard]] QString panel() const
    {
        return m_client->window().findChild<QTextEdit *>("textEdit")->toPlainText().simplified();
    }
    [[nodiscard]] QStringList popups() const
    {
        QStringList texts;
        for (const auto *label : m_client->window().findChildren<QLabel *>(QStringLiteral("popupText")))
            texts.append(label->text());
        return texts;
    }

    static bool isUpdateError(const QString &popup, const QString &reason)
    {
        return popup.startsWith(QStringLiteral("Ошибка обновления графика работ")) && popup.contains(reason);
    }

    void rearrangeShifts(QDialog &editor, bool mouse) const
    {
        m_person.press("tbAddDay");
        m_person.selectCell("tvMode", 4, 1);
        pressKey(Qt::Key_F2);
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Return);
        QTRY_COMPARE(focusWidget()->objectName(), QStringLiteral("tvMode"));

        m_person.selectTab(editor.findChild<QTabWidget *>()->tabBar(), 1);
        m_person.selectCell("tvTime", 2, 0);
        m_person.press("tbMoveUp");
        m_person.press("tbMoveUp");
        m_person.selectCell("tvShift", 1, 0);
        if (mouse)
            m_person.press("tbDelShift");
        else
            pressKey(Qt::Key_Delete);
    }
    void enterNightLimits() const
    {
        m_person.press("cbFreeUseStart");
        m_person.enterTime("freeStartEdit", QStringLiteral("2200"));
        m_person.press("cbFreeUseFinish");
        m_person.enterTime("freeFinishEdit", QStringLiteral("0600"));
        m_person.press("cbFreeUseNorm");
        m_person.press("cbFreeUseBreak");
        m_person.enterText("freeBreakEdit", QStringLiteral("60"));
    }
    void putDayShift() const
    {
        const auto *year = m_person.widget<QTableView>("calendarView");
        QTRY_VERIFY(year->isEnabled());
        const QDate date(QDate::currentDate().year(), 2, 3);
        // A save that failed has stored nothing.
        QCOMPARE(shiftOn(*year->model(), date), 0u);
        m_person.chooseForDays(date, 1, QStringLiteral("Задать смену"), QStringLiteral("Д День"));
    }

    std::unique_ptr<ClientFixture> m_client;
    quint32 m_id = 0;
    Operator m_person{true}; ///< with the mouse, unless a test says otherwise
};

QTEST_MAIN(TestEditingJourney)
#include "tst_editingjourney.moc"
