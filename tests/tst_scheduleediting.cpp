#include "requests.h"
#include "scheduledata.h"
#include "scheduleeditdialog.h"
#include "schedulemodel.h"
#include "tqdatastream.h"
#include "viewfixture.h"

#include <QAction>
#include <QLineEdit>
#include <QSpinBox>
#include <QStandardPaths>
#include <QTableView>
#include <QtTest>

#include <functional>

using namespace orvex;
using namespace scheduledata;

namespace {

const int ThisYear = QDate::currentDate().year();

using EditorWork = std::function<void(ScheduleEditDialog &)>;

/// An operator in the editor who notes which schedule it shows.
class Editing : public Operator
{
public:
    explicit Editing(QDialogButtonBox::StandardButton button, const EditorWork &work = {})
        : Operator(button, [this, work](QDialog &dialog) {
            auto &editor = dynamic_cast<ScheduleEditDialog &>(dialog);
            name = editor.findChild<QLineEdit *>("leScheduleName")->text();
            if (work)
                work(editor);
        })
    {
    }

    QString name; ///< empty while none has been open
};

SCHEDULE_CALENDAR_DAY dayOf(const QDate &date)
{
    SCHEDULE_CALENDAR_DAY day;
    day.date = date;
    day.shiftId = 7;
    day.dayMode = DayByShift;
    day.revision = 3;
    return day;
}

QByteArray daysReply(int id, int year, const QList<SCHEDULE_CALENDAR_DAY> &days)
{
    const QHash<int, QList<SCHEDULE_CALENDAR_DAY>> byId{{id, days}};
    return writePayload(QList<int>{id}, QDate(year, 1, 1), QDate(year, 12, 31), byId);
}

QByteArray daysRequest(int id, int year)
{
    return writePayload(QList<int>{id}, QDate(year, 1, 1), QDate(year, 12, 31));
}

} // namespace

class TestScheduleEditing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init()
    {
        emptyStorage();
        auto calendar = schedule(3, "Календарь", ScheduleCalendar);
        calendar.startDate = QDate(2025, 1, 1);
        auto other = schedule(4, "Другой календарь", ScheduleCalendar);
        other.startDate = QDate(2024, 1, 1);
        store({schedule(1, "Бухгалтерия"), schedule(2, "Архив", ScheduleShift), calendar, other,
               personal(5, "Март", 9, {2025, 3, 1})});
        m_fixture = std::make_unique<ViewFixture>();
    }

    void cleanup() { m_fixture.reset(); }

    void shouldOpenTheEditorOnTheCurrentSchedule_data()
    {
        QTest::addColumn<QString>("way");
        for (const char *way : {"Return", "Enter", "action"})
            QTest::newRow(way) << QString(way);
    }

    void shouldOpenTheEditorOnTheCurrentSchedule()
    {
        QFETCH(QString, way);
        setCurrent("Архив");
        const Editing person(QDialogButtonBox::Cancel, [](ScheduleEditDialog &editor) {
            QTest::keyClicks(editor.findChild<QLineEdit *>("leScheduleName"), "x");
        });
        if (way == "action")
            m_fixture->view->findChild<QAction *>("actionEditSchedule")->trigger();
        else
            QTest::keyClick(table(), way == "Return" ? Qt::Key_Return : Qt::Key_Enter);
        QCOMPARE(person.name, "Архив");
        QVERIFY(sent(request::UpdateSchedule).isEmpty());
    }

    void shouldOpenTheEditorForAnotherPage_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("name");
        QTest::newRow("common") << 1 << "ScheduleEditDialog Бухгалтерия";
        QTest::newRow("personal") << 5 << "PersonalScheduleEditDialog "; // its name stands hidden
    }

    void shouldOpenTheEditorForAnotherPage()
    {
        QFETCH(int, id);
        QString name;
        const Operator person(QDialogButtonBox::Cancel, [&name](QDialog &dialog) {
            name = QString(dialog.metaObject()->className()) + ' '
                + dialog.findChild<QLineEdit *>("leScheduleName")->text();
        });
        Command command({HostCommandKind, "show:scheduleview"});
        command.setPayload(writePayload(id));
        bool answered = false;
        m_fixture->server.sendQuery(command, this, [&](Command &) {
            answered = true;
            QVERIFY(!person.isDone());
        });
        QTRY_VERIFY(person.isDone() && !QApplication::activeModalWidget());
        QTEST(name, "name");
        QVERIFY(answered);
    }

    void shouldNotEditWhatIsNotThere()
    {
        const Editing person(QDialogButtonBox::Cancel);
        QTest::ignoreMessage(QtWarningMsg, "schedule not found 99");
        m_fixture->view->editSchedule(99);
        table()->setCurrentIndex({});
        QTest::ignoreMessage(QtWarningMsg, "schedule not found 0");
        m_fixture->view->editSchedule();
        QVERIFY(person.name.isEmpty());
    }

    void shouldStopAtTheFirstFailure()
    {
        edit("Календарь");
        QTest::ignoreMessage(QtWarningMsg, "update schedule error 3");
        reply(sent(request::UpdateSchedule).constFirst(), ResultChangedMeanwhile, writePayload(QString("text")));
        QVERIFY(sent(request::UpdateScheduleCalendar).isEmpty());
        QStringList expected{"Ошибка обновления графика работ"};
        QCOMPARE(m_fixture->popups, expected);

        edit("Календарь");
        reply(sent(request::UpdateSchedule).constLast(), ResultSuccess);
        QTest::ignoreMessage(QtWarningMsg, "update schedule days error 6");
        reply(sent(request::UpdateScheduleCalendar).constFirst(), ResultNoConnection, writePayload(QString("text")));
        QCOMPARE(m_fixture->popups, expected + expected);
    }

    void shouldStoreEachCalendarsOwnDays()
    {
        // The period is that of the record's own year, whatever year the calendar showed.
        const QList<SCHEDULE_CALENDAR_DAY> days{dayOf(QDate(ThisYear, 12, 31)), dayOf(QDate(ThisYear, 2, 28))};
        edit("Календарь", [&days](ScheduleEditDialog &editor) { editor.setCalendarDays(3, days); });
        edit("Другой календарь");
        const auto updates = sent(request::UpdateSchedule);
        QCOMPARE(updates.size(), 2);
        QVERIFY(sent(request::UpdateScheduleCalendar).isEmpty());
        reply(updates.at(0), ResultSuccess);
        reply(updates.at(1), ResultSuccess);

        const auto requests = sent(request::UpdateScheduleCalendar);
        QCOMPARE(requests.size(), 2);
        QCOMPARE(requests.at(0).payload(), writePayload(qint32(3), QDate(2025, 1, 1), QDate(2025, 12, 31), days));
        QCOMPARE(requests.at(1).payload(),
                 writePayload(qint32(4), QDate(2024, 1, 1), QDate(2024, 12, 31), QList<SCHEDULE_CALENDAR_DAY>()));
    }

    void shouldAnswerTheEditorsRequests()
    {
        const QDate date(2031, 2, 3);
        edit("Календарь", [this, date](ScheduleEditDialog &editor) {
            QTRY_VERIFY(!sent(request::GetScheduleCalendar).isEmpty());
            QCOMPARE(sent(request::GetScheduleCalendar).constLast().payload(), daysRequest(3, ThisYear));
            reply(sent(request::GetScheduleCalendar).constLast(), ResultSuccess, daysReply(3, ThisYear, {}));
            QVERIFY(editor.findChild<QWidget *>("calendarWidget")->isEnabled());

            editor.findChild<QSpinBox *>("sbYear")->setValue(2031);
            QCOMPARE(sent(request::GetScheduleCalendar).constLast().payload(), daysRequest(3, 2031));
            QVERIFY(!editor.findChild<QWidget *>("calendarWidget")->isEnabled());
            // Somebody selected another schedule before: its days are not for this editor.
            QTest::ignoreMessage(QtWarningMsg, "wrong schedule id 3 4");
            reply(sent(request::GetScheduleCalendar).constLast(), ResultSuccess, daysReply(4, 2031, {dayOf(date)}));
            QVERIFY(!editor.findChild<QWidget *>("calendarWidget")->isEnabled());

            m_fixture->server.setConnected(false);
            m_fixture->sent.clear();
            m_fixture->server.setConnected(true);
            QCOMPARE(sent(request::GetScheduleCalendar).size(), 1);
            QCOMPARE(sent(request::GetScheduleCalendar).constFirst().payload(), daysRequest(3, 2031));
            reply(sent(request::GetScheduleCalendar).constFirst(), ResultSuccess, daysReply(3, 2031, {dayOf(date)}));
            QVERIFY(editor.findChild<QWidget *>("calendarWidget")->isEnabled());
            m_fixture->server.setConnected(false);
            m_fixture->server.setConnected(true);
            QCOMPARE(sent(request::GetScheduleCalendar).size(), 1);
        });

        Command shown;
        m_fixture->server.registerCommandHandler({HostCommandKind, "show:guidesview"}, this,
                                                 [&shown](Command &command) { shown = command; });
        edit("Календарь", [this, date](ScheduleEditDialog &editor) {
            emit editor.showShiftGuides();
            m_fixture->sent.clear();
            editor.findChild<QSpinBox *>("sbYear")->setValue(2031);
            reply(sent(request::GetScheduleCalendar).constLast(), ResultSuccess, daysReply(3, 2031, {dayOf(date)}));
            QCOMPARE(editor.calendarDays().size(), 1);
            QCOMPARE(editor.calendarDays().constFirst().date, date);
        });
        QTRY_COMPARE(shown.payload(), writePayload(QString("schedule_shift")));
    }

    void shouldSurviveTheEndOfThePage_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("editor") << Qt::Key_Return;
        QTest::newRow("question") << Qt::Key_Delete;
    }

    void shouldSurviveTheEndOfThePage()
    {
        QFETCH(Qt::Key, key);
        setCurrent("Архив");
        const Operator end(QDialogButtonBox::Ok, [this](QDialog &) { m_fixture->view.reset(); });
        QTest::keyClick(table(), key);
        QVERIFY(end.isDone());
        QVERIFY(m_fixture->sent.isEmpty());
    }

private:
    [[nodiscard]] QTableView *table() const { return m_fixture->table(); }

    void setCurrent(const QString &name) const
    {
        const auto model = table()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->index(row, ScheduleModel::NameColumn).data() == name)
                table()->selectRow(row);
        }
    }

    [[nodiscard]] QList<Command> sent(const QString &name) const { return m_fixture->requests(name); }
    void reply(const Command &request, int result, const QByteArray &payload = {})
    {
        m_fixture->reply(request, result, payload);
    }

    /// Edits a schedule of the list and accepts.
    void edit(const QString &name, const EditorWork &work = {})
    {
        setCurrent(name);
        const Editing person(QDialogButtonBox::Ok, work);
        QTest::keyClick(table(), Qt::Key_Return);
        QCOMPARE(person.name, name);
    }

    std::unique_ptr<ViewFixture> m_fixture;
};

QTEST_MAIN(TestScheduleEditing)
#include "tst_scheduleediting.moc"
