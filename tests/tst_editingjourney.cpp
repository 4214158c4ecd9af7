#include "clientfixture.h"
#include "requests.h"
#include "stress/faultyio.h"

#include <QLabel>
#include <QTabWidget>
#include <QTextEdit>

#include <cerrno>

using namespace orvex;

namespace {

constexpr int Hour = 3600;

SCHEDULE_DATA sample(ScheduleMode type)
{
    auto schedule = StoreFixture::schedule(QStringLiteral("Schedule"), type);
    schedule.startDate = QDate(QDate::currentDate().year(), 1, 1);
    if (type == ScheduleFixed || type == ScheduleShift) {
        schedule.shifts = {{-1, 0, {{-1, 8 * Hour, 10 * Hour}, {-1, 11 * Hour, 12 * Hour}, {-1, 13 * Hour, 17 * Hour}}},
                           {-1, 0, {{-1, 20 * Hour, 6 * Hour}}}};
        schedule.days = {{-1, 0, -1, false}, {-1, 1, -1, false}, {-1, 0, -1, false}, {-1, -1, -1, true}};
    }
    return schedule;
}

QString text(const SCHEDULE_DATA &schedule)
{
    QStringList words{schedule.name + QLatin1Char(':')};
    for (const auto &day : schedule.days)
        words.append(day.dayOff ? QStringLiteral("-") : QString::number(day.shift));
    for (const auto &shift : schedule.shifts) {
        words.append(QStringLiteral("|"));
        for (const auto &time : shift.times)
            words.append(QStringLiteral("%1-%2").arg(time.start / Hour).arg(time.finish / Hour));
    }
    if (schedule.type == ScheduleFree)
        words.append(QStringLiteral("%1-%2 %3/%4")
                         .arg(schedule.freeStart / Hour)
                         .arg(schedule.freeFinish / Hour)
                         .arg(schedule.freeNorm)
                         .arg(schedule.freeBreak));
    return words.join(QLatin1Char(' '));
}

} // namespace

/// An operator changes schedules in the running client on a real store: what he sees afterwards, and what is stored.
class TestEditingJourney : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_person = Person(true); }

    void cleanup()
    {
        faultyio::reset();
        m_client.reset();
    }

    void shouldEditEachType_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("mouse");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("told"); // by the panel

        const auto add = [](const char *name, int type, const char *stored, const char *told) {
            QTest::addRow("%s by mouse", name) << type << true << QString(stored) << QString(told);
            QTest::addRow("%s by keyboard", name) << type << false << QString(stored) << QString(told);
        };
        add("fixed", ScheduleFixed, "New: - 1 0 - - - - | 8-10 11-12 13-17 | 20-6", "20:00");
        // The night shift goes, and its days with it; the last interval is the first now, and a day more is worked.
        add("shift", ScheduleShift, "New: 0 - 0 - 0 | 13-17 8-10 11-12", "Сменный");
        add("free", ScheduleFree, "New: 22-6 25200/3600", "7 час. 0 мин.");
        add("calendar", ScheduleCalendar, "New:", "февраля 8");
    }
    void shouldEditEachType()
    {
        QFETCH(int, type);
        QFETCH(bool, mouse);
        QFETCH(QString, told);
        m_person = Person(mouse);
        const auto before = start(ScheduleMode(type));
        m_client->edit(m_person, [&](QDialog &editor) {
            QCOMPARE(hand::focus()->objectName(), QStringLiteral("leScheduleName"));
            hand::type(QStringLiteral("New"));
            if (type == ScheduleFixed)
                m_person.tick("tvMode", 0, 2);
            else if (type == ScheduleShift)
                rearrangeShifts(editor, mouse);
            else if (type == ScheduleFree)
                limitTheNight();
            else
                markADay();
            m_person.accept();
        });
        // The record, and the days of a calendar after it.
        QTRY_COMPARE(stored().version, before.version + (type == ScheduleCalendar ? 2 : 1));
        QTEST(text(stored()), "stored");
        QTRY_COMPARE(listedName(), QStringLiteral("New"));
        QTRY_VERIFY2(panel().contains("New") && panel().contains(told), qPrintable(panel()));
        QCOMPARE(popups(), QStringList());
    }

    void shouldRefuseToSave_data()
    {
        QTest::addColumn<bool>("changed meanwhile");
        QTest::addColumn<QString>("reason");
        QTest::newRow("changed by another") << true << "Откройте график заново и повторите изменения.";
        QTest::newRow("without the right") << false << "Обратитесь к администратору.";
    }
    void shouldRefuseToSave()
    {
        QFETCH(QString, reason);
        const bool changed = *static_cast<const bool *>(QTest::qData("changed meanwhile", QMetaType::Bool));
        auto theirs = start(ScheduleShift);
        auto &database = m_client->store.database;
        m_client->edit(m_person, [&](QDialog &) {
            theirs.name = QStringLiteral("Theirs");
            if (changed)
                QVERIFY(database.execute(StoreFixture::request(request::UpdateSchedule, theirs)).isSuccess());
            else
                QVERIFY(database.setRoleGranted(QStringLiteral("RL_SCHEDULE_UPDATE"), false).ok());
            hand::type(QStringLiteral("Mine"));
            m_person.accept();
        });
        QTRY_COMPARE(popups().size(), 1);
        QVERIFY(popups().first().startsWith(QStringLiteral("Ошибка обновления графика работ")));
        QVERIFY2(popups().first().contains(reason), qPrintable(popups().first()));
        const QString kept = changed ? QStringLiteral("Theirs") : QStringLiteral("Schedule");
        QCOMPARE(stored().name, kept);
        QTRY_COMPARE(listedName(), kept);
    }

    void shouldSaveTheRecordWhoseDaysAreLost()
    {
        const auto before = start(ScheduleCalendar);
        // The disk goes as soon as the record is stored, with its answer still on the way.
        QObject watch;
        connect(&m_client->client().server(), &TQServerInterface::aboutToDeliverReply, &watch, [&] {
            if (stored().version > before.version)
                faultyio::fail(QFileInfo(m_client->store.path()).path(), EIO, 0, -1);
        });
        m_client->edit(m_person, [&](QDialog &) {
            hand::type(QStringLiteral("New"));
            markADay();
            m_person.accept();
        });
        const auto &server = m_client->client().server();
        QTRY_VERIFY_WITH_TIMEOUT(!server.isConnected(), 20000);
        QCOMPARE(popups().size(), 1);
        QVERIFY(popups().first().startsWith(QStringLiteral("Ошибка обновления графика работ")));
        QVERIFY2(popups().first().contains(QStringLiteral("Проверьте диск")), qPrintable(popups().first()));
        disconnect(&server, nullptr, &watch, nullptr);
        faultyio::reset();
        QTRY_VERIFY_WITH_TIMEOUT(server.isConnected(), 20000);
        QTRY_COMPARE(listedName(), QStringLiteral("New"));
        QCOMPARE(stored().version, before.version + 1);

        m_client->edit(m_person, [&](QDialog &) {
            markADay();
            m_person.accept();
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

    void rearrangeShifts(QDialog &editor, bool mouse) const
    {
        m_person.push("tbAddDay");
        m_person.goTo("tvMode", 4, 1);
        hand::press(Qt::Key_F2);
        hand::press(Qt::Key_Down);
        hand::press(Qt::Key_Return);
        QTRY_COMPARE(hand::focus()->objectName(), QStringLiteral("tvMode"));

        auto *tabs = editor.findChild<QTabWidget *>()->tabBar();
        if (mouse)
            QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
        else
            hand::press(Qt::Key_Tab, Qt::ControlModifier);
        m_person.goTo("tvTime", 2, 0);
        m_person.push("tbMoveUp");
        m_person.push("tbMoveUp");
        m_person.goTo("tvShift", 1, 0);
        if (mouse)
            m_person.push("tbDelShift");
        else
            hand::press(Qt::Key_Delete);
    }
    void limitTheNight() const
    {
        m_person.push("cbFreeUseStart");
        m_person.typeTime("freeStartEdit", QStringLiteral("2200"));
        m_person.push("cbFreeUseFinish");
        m_person.typeTime("freeFinishEdit", QStringLiteral("0600"));
        m_person.push("cbFreeUseNorm");
        m_person.push("cbFreeUseBreak");
        m_person.type("freeBreakEdit", QStringLiteral("60"));
    }
    void markADay() const
    {
        const auto &year = *m_person.see<QTableView>("calendarView");
        QTRY_VERIFY(year.isEnabled());
        const QDate date(QDate::currentDate().year(), 2, 3);
        // Neither a first try nor one that failed has left anything.
        QCOMPARE(hand::cell(year, date).data(CalendarShiftRole).toUInt(), 0u);
        m_person.mark(date, 1, QStringLiteral("Задать смену"), QStringLiteral("Д День"));
    }

    std::unique_ptr<ClientFixture> m_client;
    quint32 m_id = 0;
    Person m_person{true}; ///< with the mouse, unless a test says otherwise
};

QTEST_MAIN(TestEditingJourney)
#include "tst_editingjourney.moc"
