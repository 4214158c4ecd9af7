#include "authdata.h"
#include "clientcache.h"
#include "dialoghandler.h"
#include "hands.h"
#include "requests.h"
#include "samplerecords.h"
#include "scheduleeditdialog.h"
#include "testcolumns.h"
#include "tqdatastream.h"
#include "viewfixture.h"

#include <QAction>
#include <QLineEdit>
#include <QSpinBox>
#include <QTableView>
#include <QtTest>

using namespace orvex;
using namespace support;

namespace {

const int ThisYear = QDate::currentDate().year();

using EditorSteps = std::function<void(ScheduleEditDialog &)>;

SCHEDULE_CALENDAR_DAY dayOf(const QDate &date)
{
    return calendarDay(date, 7, DayByShift, 3);
}

} // namespace

class TestScheduleEditing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init()
    {
        clearCache();
        auto calendar = schedule(3, "Календарь", ScheduleCalendar);
        calendar.startDate = QDate(2025, 1, 1);
        auto other = schedule(4, "Другой календарь", ScheduleCalendar);
        other.startDate = QDate(2024, 1, 1);
        storeSchedules({schedule(1, "Бухгалтерия"), schedule(2, "Архив", ScheduleShift), calendar, other,
                        personalSchedule(5, "Март", 9, {2025, 3, 1})});
        m_fixture = std::make_unique<ViewFixture>();
    }

    void cleanup() { m_fixture.reset(); }

    void shouldOpenEditorOnCurrentSchedule()
    {
        m_fixture->setCurrent("Архив");
        const auto type = [](ScheduleEditDialog &editor) {
            QTest::keyClicks(editor.findChild<QLineEdit *>("leScheduleName"), "x");
        };
        for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_unknown}) {
            const auto handler = inEditor(QDialogButtonBox::Cancel, type);
            if (key == Qt::Key_unknown)
                m_fixture->action("actionEditSchedule")->trigger();
            else
                QTest::keyClick(table(), key);
            QCOMPARE(m_edited, "Архив");
        }
        QVERIFY(sent(request::UpdateSchedule).isEmpty());

        const DialogHandler handler(QDialogButtonBox::Cancel);
        expectWarning("schedule not found 99");
        m_fixture->view->editSchedule(99);
        table()->setCurrentIndex({});
        expectWarning("schedule not found 0");
        m_fixture->view->editSchedule();
        QVERIFY(!handler.hasOpened());
    }

    void shouldOpenEditorForAnotherPage_data()
    {
        // The outcome is the opened editor or a warning.
        addColumns<QByteArray, bool, QString>({"request", "mayUpdate", "outcome"});
        QTest::newRow("common") << writePayload(qint32(1)) << true << "ScheduleEditDialog Бухгалтерия";
        QTest::newRow("personal, its name hidden") << writePayload(qint32(5)) << true << "PersonalScheduleEditDialog ";
        QTest::newRow("no such schedule") << writePayload(qint32(99)) << true << "schedule not found 99";
        QTest::newRow("broken request") << QByteArray("?") << true << "schedule not found 0";
        QTest::newRow("no right") << writePayload(qint32(1)) << false << "no rights to show dialog";
    }

    void shouldOpenEditorForAnotherPage()
    {
        QFETCH(QByteArray, request);
        QFETCH(QString, outcome);
        QFETCH(bool, mayUpdate);
        const bool opens = outcome.contains("Dialog ");
        if (!mayUpdate)
            AuthData::setRoles({"RL_SCHEDULE_SHOW"});
        if (!opens)
            expectWarning(outcome);
        QString opened;
        const DialogHandler handler(QDialogButtonBox::Cancel, [&opened](QDialog &dialog) {
            opened = QString(dialog.metaObject()->className()) + ' '
                + dialog.findChild<QLineEdit *>("leScheduleName")->text();
        });
        Command command({HostCommandKind, "show:scheduleview"});
        command.setPayload(request);
        QList<QByteArray> replies;
        m_fixture->server.sendQuery(command, this, [&](Command &reply) {
            replies.append(reply.payload());
            QVERIFY(!handler.hasOpened());
        });
        QTRY_COMPARE(replies.size(), 1);
        QCOMPARE(replies.first(), mayUpdate ? QByteArray() : writePayload(QString("norights")));
        QCoreApplication::processEvents(); // the editor opens after the reply
        QTRY_COMPARE(handler.hasOpened(), opens);
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QCOMPARE(opened, opens ? outcome : QString());
    }

    void shouldSendNoDaysAfterFailure()
    {
        edit("Календарь");
        expectWarning("update schedule error 3");
        reply(sent(request::UpdateSchedule).constFirst(), ResultChangedMeanwhile, writePayload(QString("text")));
        QVERIFY(sent(request::UpdateScheduleCalendar).isEmpty());
        QStringList expected{"Ошибка обновления графика работ"};
        QCOMPARE(m_fixture->popups, expected);

        edit("Календарь");
        reply(sent(request::UpdateSchedule).constLast(), ResultSuccess);
        expectWarning("update schedule days error 6");
        reply(sent(request::UpdateScheduleCalendar).constFirst(), ResultNoConnection, writePayload(QString("text")));
        QCOMPARE(m_fixture->popups, expected + expected);
    }

    void shouldStoreDaysOfEachCalendar()
    {
        // The period is the year of the record, not the shown one.
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

    void shouldAnswerRequestsOfEditor()
    {
        const QDate date(2031, 2, 3);
        edit("Календарь", [this, date](ScheduleEditDialog &editor) {
            const auto *calendar = editor.findChild<QWidget *>("calendarWidget");
            const auto answer = [this](int id, int year, const QList<SCHEDULE_CALENDAR_DAY> &days) {
                const Command sentLast = sent(request::GetScheduleCalendar).constLast();
                QCOMPARE(sentLast.payload(), ViewFixture::daysRequest(3, year));
                reply(sentLast, ResultSuccess, ViewFixture::daysReply(id, year, days));
            };
            QTRY_VERIFY(!sent(request::GetScheduleCalendar).isEmpty());
            QVERIFY(!calendar->isEnabled());
            answer(3, ThisYear, {});
            QVERIFY(calendar->isEnabled());

            editor.findChild<QSpinBox *>("sbYear")->setValue(2031);
            QVERIFY(!calendar->isEnabled());
            // The late answer for a schedule that was selected before.
            expectWarning("wrong schedule id 3 4");
            answer(4, 2031, {dayOf(date)});
            QVERIFY(!calendar->isEnabled());

            m_fixture->server.setConnected(false);
            m_fixture->server.setConnected(true);
            answer(3, 2031, {dayOf(date)});
            QVERIFY(calendar->isEnabled());
            QCOMPARE(editor.calendarDays(), (QList{dayOf(date)}));
        });

        Command shown;
        m_fixture->server.registerCommandHandler({HostCommandKind, "show:guidesview"}, this,
                                                 [&shown](Command &command) { shown = command; });
        edit("Календарь", [](ScheduleEditDialog &editor) { emit editor.showShiftGuides(); });
        QTRY_COMPARE(shown.payload(), writePayload(QString("schedule_shift")));
    }

    void shouldSurviveDestructionOfPage()
    {
        for (const auto key : {Qt::Key_Return, Qt::Key_Delete}) {
            init();
            m_fixture->setCurrent("Архив");
            const DialogHandler handler(QDialogButtonBox::Ok, [this](QDialog &) { m_fixture->view.reset(); });
            QTest::keyClick(table(), key);
            QVERIFY(handler.hasOpened());
            QVERIFY(m_fixture->sent.isEmpty());
        }
    }

private:
    [[nodiscard]] QTableView *table() const { return m_fixture->table(); }

    [[nodiscard]] QList<Command> sent(const QString &name) const { return m_fixture->requests(name); }
    void reply(const Command &request, int result, const QByteArray &payload = {})
    {
        m_fixture->reply(request, result, payload);
    }

    /// Acts in the editor that opens next and notes the name of its schedule.
    [[nodiscard]] DialogHandler inEditor(QDialogButtonBox::StandardButton button, const EditorSteps &steps)
    {
        m_edited.clear();
        return DialogHandler(button, [this, steps](QDialog &dialog) {
            m_edited = dialog.findChild<QLineEdit *>("leScheduleName")->text();
            if (steps)
                steps(dynamic_cast<ScheduleEditDialog &>(dialog));
        });
    }

    /// Edits a schedule of the list and accepts.
    void edit(const QString &name, const EditorSteps &steps = {})
    {
        m_fixture->setCurrent(name);
        const auto handler = inEditor(QDialogButtonBox::Ok, steps);
        QTest::keyClick(table(), Qt::Key_Return);
        QCOMPARE(m_edited, name);
    }

    std::unique_ptr<ViewFixture> m_fixture;
    QString m_edited;
};

QTEST_MAIN(TestScheduleEditing)
#include "tst_scheduleediting.moc"
