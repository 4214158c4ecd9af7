#include "authdata.h"
#include "requests.h"
#include "scheduledata.h"
#include "scheduleeditdialog.h"
#include "schedulemodel.h"
#include "scheduleview.h"
#include "tqdatastream.h"
#include "tqserverinterface.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QStandardPaths>
#include <QTableView>
#include <QTimer>
#include <QtTest>

using namespace orvex;
using namespace scheduledata;

namespace {

const QStringList AllRoles{"RL_SCHEDULE_SHOW", "RL_SCHEDULE_CREATE", "RL_SCHEDULE_UPDATE", "RL_SCHEDULE_DELETE"};
const int ThisYear = QDate::currentDate().year();

/// Works in the editor that opens next, as an operator would, and closes it.
class Operator : public QObject
{
public:
    using Work = std::function<void(ScheduleEditDialog &)>;

    explicit Operator(QDialogButtonBox::StandardButton button, Work work = {})
        : m_button(button)
        , m_work(std::move(work))
    {
        m_timer.start(0);
        connect(&m_timer, &QTimer::timeout, this, &Operator::look);
    }

    QString name; ///< of the schedule that the editor showed; empty while none has been open

private:
    void look()
    {
        auto *editor = qobject_cast<ScheduleEditDialog *>(QApplication::activeModalWidget());
        if (!editor)
            return;
        m_timer.stop();
        name = editor->findChild<QLineEdit *>("leScheduleName")->text();
        if (m_work)
            m_work(*editor);
        editor->findChild<QDialogButtonBox *>("buttonBox")->button(m_button)->click();
    }

    QDialogButtonBox::StandardButton m_button;
    Work m_work;
    QTimer m_timer;
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
    void initTestCase();
    void init();
    void cleanup();

    void shouldOpenTheEditorOnTheCurrentSchedule_data();
    void shouldOpenTheEditorOnTheCurrentSchedule();
    void shouldOpenTheEditorForAnotherPage();
    void shouldLeavePersonalSchedulesToTheirOwnEditor();
    void shouldRefuseToEdit();
    void shouldSendNothingAfterCancel();
    void shouldSendTheEditedRecord();
    void shouldSendTheDaysOfACalendarAfterIt();
    void shouldNotSendTheDaysOfARefusedRecord();
    void shouldTellThatTheDaysWereNotStored();
    void shouldStoreEachCalendarsOwnDays();
    void shouldAnswerTheEditorsRequests();
    void shouldOpenTheShiftGuideFromTheEditor();
    void shouldSurviveTheEndOfThePage();

private:
    [[nodiscard]] QTableView *table() const { return m_view->findChild<QTableView *>("scheduleView"); }
    void setCurrent(const QString &name) const;
    [[nodiscard]] QList<Command> sent(const QString &name) const;
    void reply(Command request, int result, const QByteArray &payload = {});
    void edit(const QString &name, const Operator::Work &work = {});

    std::unique_ptr<TQServerInterface> m_server;
    std::unique_ptr<ScheduleView> m_view;
    QList<Command> m_sent; ///< what reached the transport
    QStringList m_popups;
};

void TestScheduleEditing::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestScheduleEditing::init()
{
    emptyStorage();
    AuthData::setRoles(AllRoles);
    auto calendar = schedule(3, "Календарь", ScheduleCalendar);
    calendar.startDate = QDate(2025, 1, 1);
    auto other = schedule(4, "Другой календарь", ScheduleCalendar);
    other.startDate = QDate(2024, 1, 1);
    store({schedule(1, "Бухгалтерия"), schedule(2, "Архив", ScheduleShift), calendar, other,
           personal(5, "Март", 9, {2025, 3, 1})});

    m_sent.clear();
    m_popups.clear();
    m_server = std::make_unique<TQServerInterface>();
    m_server->setTransport([this](const Command &command) { m_sent.append(command); });
    m_server->setConnected(true);
    m_view = std::make_unique<ScheduleView>();
    connect(m_view.get(), &PluginWidget::popupCriticalMessageRequested, this,
            [this](const QString &text) { m_popups.append(text); });
    m_view->init(m_server.get(), "scheduleview");
    m_view->insertedToInterface();
    m_view->resize(900, 500);
    m_view->show();
}

void TestScheduleEditing::cleanup()
{
    m_view.reset();
    m_server.reset();
}

void TestScheduleEditing::setCurrent(const QString &name) const
{
    const auto model = table()->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        if (model->index(row, ScheduleModel::NameColumn).data() == name)
            table()->selectRow(row);
    }
}

QList<Command> TestScheduleEditing::sent(const QString &name) const
{
    QList<Command> commands;
    std::copy_if(m_sent.cbegin(), m_sent.cend(), std::back_inserter(commands),
                 [&name](const Command &command) { return command.name() == name; });
    return commands;
}

void TestScheduleEditing::reply(Command request, int result, const QByteArray &payload)
{
    request.setResult(result);
    request.setPayload(payload);
    m_server->deliver(request);
}

/// Edits a schedule of the list and accepts.
void TestScheduleEditing::edit(const QString &name, const Operator::Work &work)
{
    setCurrent(name);
    const Operator person(QDialogButtonBox::Ok, work);
    QTest::keyClick(table(), Qt::Key_Return);
    QCOMPARE(person.name, name);
}

void TestScheduleEditing::shouldOpenTheEditorOnTheCurrentSchedule_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"double click", "Return", "Enter", "action"})
        QTest::newRow(way) << QString(way);
}

void TestScheduleEditing::shouldOpenTheEditorOnTheCurrentSchedule()
{
    QFETCH(QString, way);
    setCurrent("Архив");
    const Operator person(QDialogButtonBox::Cancel);
    if (way == "double click") {
        const auto cell = table()->visualRect(table()->currentIndex().siblingAtColumn(ScheduleModel::NameColumn));
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, cell.center());
        QTest::mouseDClick(table()->viewport(), Qt::LeftButton, {}, cell.center());
    } else if (way == "action") {
        m_view->findChild<QAction *>("actionEditSchedule")->trigger();
    } else {
        QTest::keyClick(table(), way == "Return" ? Qt::Key_Return : Qt::Key_Enter);
    }
    QCOMPARE(person.name, "Архив");
}

void TestScheduleEditing::shouldOpenTheEditorForAnotherPage()
{
    const Operator person(QDialogButtonBox::Cancel);
    Command command({HostCommandKind, "show:scheduleview"});
    command.setPayload(writePayload(qint32(1)));
    bool answered = false;
    m_server->sendQuery(command, this, [&](Command &) {
        answered = true;
        QVERIFY(person.name.isEmpty());
    });
    QTRY_COMPARE(person.name, "Бухгалтерия");
    QTRY_VERIFY(answered);
}

void TestScheduleEditing::shouldLeavePersonalSchedulesToTheirOwnEditor()
{
    m_view->onTabActivated(1);
    table()->selectRow(0);
    const Operator person(QDialogButtonBox::Cancel);
    QTest::keyClick(table(), Qt::Key_Return);
    QTest::qWait(50);
    QVERIFY(person.name.isEmpty());
}

void TestScheduleEditing::shouldRefuseToEdit()
{
    const Operator person(QDialogButtonBox::Cancel);
    QTest::ignoreMessage(QtWarningMsg, "schedule not found 99");
    m_view->editSchedule(99);
    table()->setCurrentIndex({});
    QTest::ignoreMessage(QtWarningMsg, "schedule not found 0");
    m_view->editSchedule();
    AuthData::setRoles({"RL_SCHEDULE_SHOW", "RL_SCHEDULE_CREATE", "RL_SCHEDULE_DELETE"});
    QTest::ignoreMessage(QtWarningMsg, "the user has no rights");
    m_view->editSchedule(1);
    QVERIFY(person.name.isEmpty());
}

void TestScheduleEditing::shouldSendNothingAfterCancel()
{
    setCurrent("Архив");
    const Operator person(QDialogButtonBox::Cancel, [](ScheduleEditDialog &editor) {
        QTest::keyClicks(editor.findChild<QLineEdit *>("leScheduleName"), "x");
    });
    QTest::keyClick(table(), Qt::Key_Return);
    QCOMPARE(person.name, "Архив");
    QVERIFY(sent(request::UpdateSchedule).isEmpty());
}

void TestScheduleEditing::shouldSendTheEditedRecord()
{
    SCHEDULE_DATA edited;
    edit("Архив", [&edited](ScheduleEditDialog &editor) {
        QTest::keyClicks(editor.findChild<QLineEdit *>("leScheduleName"), "2");
        QTest::mouseClick(editor.findChild<QAbstractButton *>("tbAddDay"), Qt::LeftButton);
        edited = editor.schedule();
        edited.name = editor.findChild<QLineEdit *>("leScheduleName")->text();
    });
    const auto requests = sent(request::UpdateSchedule);
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.first().payload(), writePayload(edited));
    QCOMPARE(edited.days.size(), 1);

    reply(requests.first(), ResultSuccess);
    QVERIFY(sent(request::UpdateScheduleCalendar).isEmpty());
    QVERIFY(m_popups.isEmpty());
}

void TestScheduleEditing::shouldSendTheDaysOfACalendarAfterIt()
{
    QList<SCHEDULE_CALENDAR_DAY> days{dayOf(QDate(ThisYear, 12, 31)), dayOf(QDate(ThisYear, 2, 28))};
    edit("Календарь", [&days](ScheduleEditDialog &editor) { editor.setCalendarDays(3, days); });
    QVERIFY(sent(request::UpdateScheduleCalendar).isEmpty());

    reply(sent(request::UpdateSchedule).first(), ResultSuccess);
    const auto requests = sent(request::UpdateScheduleCalendar);
    QCOMPARE(requests.size(), 1);
    // The period is that of the record's own year, whatever year the calendar showed.
    QCOMPARE(requests.first().payload(), writePayload(qint32(3), QDate(2025, 1, 1), QDate(2025, 12, 31), days));
    reply(requests.first(), ResultSuccess);
    QVERIFY(m_popups.isEmpty());
}

void TestScheduleEditing::shouldNotSendTheDaysOfARefusedRecord()
{
    edit("Календарь");
    QTest::ignoreMessage(QtWarningMsg, "update schedule error 3");
    reply(sent(request::UpdateSchedule).first(), ResultChangedMeanwhile, writePayload(QString("text")));
    QVERIFY(sent(request::UpdateScheduleCalendar).isEmpty());
    QCOMPARE(m_popups, QStringList("Ошибка обновления графика работ"));
}

void TestScheduleEditing::shouldTellThatTheDaysWereNotStored()
{
    edit("Календарь");
    reply(sent(request::UpdateSchedule).first(), ResultSuccess);
    QTest::ignoreMessage(QtWarningMsg, "update schedule days error 6");
    reply(sent(request::UpdateScheduleCalendar).first(), ResultNoConnection, writePayload(QString("text")));
    QCOMPARE(m_popups, QStringList("Ошибка обновления графика работ"));
}

void TestScheduleEditing::shouldStoreEachCalendarsOwnDays()
{
    const QList<SCHEDULE_CALENDAR_DAY> days{dayOf(QDate(ThisYear, 5, 5))};
    edit("Календарь", [&days](ScheduleEditDialog &editor) { editor.setCalendarDays(3, days); });
    edit("Другой календарь");
    const auto updates = sent(request::UpdateSchedule);
    QCOMPARE(updates.size(), 2);
    reply(updates.at(0), ResultSuccess);
    reply(updates.at(1), ResultSuccess);

    const auto requests = sent(request::UpdateScheduleCalendar);
    QCOMPARE(requests.size(), 2);
    QCOMPARE(requests.at(0).payload(), writePayload(qint32(3), QDate(2025, 1, 1), QDate(2025, 12, 31), days));
    QCOMPARE(requests.at(1).payload(),
             writePayload(qint32(4), QDate(2024, 1, 1), QDate(2024, 12, 31), QList<SCHEDULE_CALENDAR_DAY>()));
}

void TestScheduleEditing::shouldAnswerTheEditorsRequests()
{
    const QDate date(2031, 2, 3);
    edit("Календарь", [this, date](ScheduleEditDialog &editor) {
        QTRY_VERIFY(!sent(request::GetScheduleCalendar).isEmpty());
        QCOMPARE(sent(request::GetScheduleCalendar).last().payload(), daysRequest(3, ThisYear));
        reply(sent(request::GetScheduleCalendar).last(), ResultSuccess, daysReply(3, ThisYear, {}));
        QVERIFY(editor.findChild<QWidget *>("calendarWidget")->isEnabled());

        editor.findChild<QSpinBox *>("sbYear")->setValue(2031);
        QCOMPARE(sent(request::GetScheduleCalendar).last().payload(), daysRequest(3, 2031));
        QVERIFY(!editor.findChild<QWidget *>("calendarWidget")->isEnabled());
        // Somebody selected another schedule before: its days are not for this editor.
        QTest::ignoreMessage(QtWarningMsg, "wrong schedule id 3 4");
        reply(sent(request::GetScheduleCalendar).last(), ResultSuccess, daysReply(4, 2031, {dayOf(date)}));
        QVERIFY(!editor.findChild<QWidget *>("calendarWidget")->isEnabled());
    });

    edit("Календарь", [this, date](ScheduleEditDialog &editor) {
        m_sent.clear();
        editor.findChild<QSpinBox *>("sbYear")->setValue(2031);
        reply(sent(request::GetScheduleCalendar).last(), ResultSuccess, daysReply(3, 2031, {dayOf(date)}));
        QCOMPARE(editor.calendarDays().size(), 1);
        QCOMPARE(editor.calendarDays().first().date, date);
    });
}

void TestScheduleEditing::shouldOpenTheShiftGuideFromTheEditor()
{
    Command shown;
    m_server->registerCommandHandler({HostCommandKind, "show:guidesview"}, this,
                                     [&shown](Command &command) { shown = command; });
    edit("Календарь", [](ScheduleEditDialog &editor) { emit editor.showShiftGuides(); });
    QTRY_COMPARE(shown.payload(), writePayload(QString("schedule_shift")));
}

void TestScheduleEditing::shouldSurviveTheEndOfThePage()
{
    setCurrent("Архив");
    QTimer::singleShot(50, this, [this] { m_view.reset(); });
    m_view->editSchedule();
    QVERIFY(!m_view);
    QVERIFY(sent(request::UpdateSchedule).isEmpty());
}

QTEST_MAIN(TestScheduleEditing)
#include "tst_scheduleediting.moc"
