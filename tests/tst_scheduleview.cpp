#include "requests.h"
#include "scheduledata.h"
#include "schedulemodel.h"
#include "schedulewizard.h"
#include "searchwidget.h"
#include "tqdatastream.h"
#include "tqstackedtoolbars.h"
#include "viewfixture.h"

#include <QAction>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMessageBox>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTextEdit>
#include <QTimer>
#include <QToolTip>
#include <QtTest>

#include <functional>

using namespace orvex;
using namespace scheduledata;

namespace {

const QStringList AllRoles{"RL_SCHEDULE_SHOW", "RL_SCHEDULE_CREATE", "RL_SCHEDULE_UPDATE", "RL_SCHEDULE_DELETE"};

} // namespace

class TestScheduleView : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        emptyStorage();
        AuthData::setRoles(AllRoles);
        storeWorkers({worker(1, "Борисова Анна", "12"), worker(2, "Авдеев Пётр", "3")});
        auto calendar = schedule(3, "Календарь", ScheduleCalendar);
        store({schedule(1, "Бухгалтерия"), schedule(2, "Архив", ScheduleShift), calendar,
               personal(4, "Борисова март", 1, {2025, 3, 1}), personal(5, "Авдеев март", 2, {2025, 3, 1}),
               personal(6, "Авдеев апрель", 2, {2025, 4, 1})});
        m_fixture = std::make_unique<ViewFixture>();
    }

    void cleanup() { m_fixture.reset(); }

    void shouldIntroduceItself()
    {
        QVERIFY(m_fixture->view->canShow());
        AuthData::setRoles({"RL_SCHEDULE_SHOWN", "rl_schedule_show"});
        QVERIFY(!m_fixture->view->canShow());
        for (const int tab : {0, 1}) {
            m_fixture->view->onTabActivated(tab);
            const auto tabs = m_fixture->view->tabList();
            QCOMPARE(tabs.size(), 2);
            for (const auto &each : tabs)
                QCOMPARE(each.current, each.index == tab);
        }
    }

    void shouldShowTheTabsTheirOwnWay()
    {
        const auto hidden = [this] {
            QList<int> columns;
            for (int column = 0; column < ScheduleModel::ColumnCount; ++column) {
                if (table()->isColumnHidden(column))
                    columns.append(column);
            }
            return columns;
        };
        QCOMPARE(names(), (QStringList{"Архив", "Бухгалтерия", "Календарь"}));
        QCOMPARE(hidden(), (QList<int>{3, 4, 5}));
        QVERIFY(action("actionAddSchedule")->isVisible() && !action("actionAddPersonalSchedule")->isVisible());

        m_fixture->view->onTabActivated(1);
        QCOMPARE(names(), (QStringList{"Авдеев апрель", "Авдеев март", "Борисова март"}));
        QCOMPARE(hidden(), (QList<int>{1, 2}));
        QVERIFY(!action("actionDelSchedule")->isVisible() && action("actionDelPersonalSchedule")->isVisible());
        QCOMPARE(table()->horizontalHeader()->sortIndicatorSection(), 5);

        m_fixture->view->onTabActivated(0);
        QCOMPARE(names(), (QStringList{"Архив", "Бухгалтерия", "Календарь"}));

        // What the user sorts by is forgotten with the next tab.
        table()->sortByColumn(ScheduleModel::NameColumn, Qt::DescendingOrder);
        store({schedule(7, "Яблоко")});
        QCOMPARE(names(), (QStringList{"Яблоко", "Календарь", "Бухгалтерия", "Архив"}));
        m_fixture->view->onTabActivated(1);
        m_fixture->view->onTabActivated(0);
        QCOMPARE(names().constFirst(), "Архив");
    }

    void shouldFilterAsOneTypes()
    {
        const auto search = m_fixture->view->findChild<SearchWidget *>();
        for (const QString &letter : {QStringLiteral("А"), QStringLiteral("Р")})
            QTest::sendKeyEvent(QTest::Click, search->focusProxy(), Qt::Key_unknown, letter, Qt::NoModifier);
        QCOMPARE(names(), (QStringList{"Архив", "Календарь"}));
        search->clear();
        QCOMPARE(names().size(), 3);

        // The list says why it is empty, as long as it is.
        const auto isBlank = [this] {
            const QImage image = table()->viewport()->grab().toImage();
            QImage ground(image);
            ground.fill(image.pixelColor(0, 0));
            return image == ground;
        };
        search->setText("нет такого");
        QCOMPARE(table()->accessibleDescription(), "Ничего не найдено.");
        QVERIFY(!isBlank());
        store({schedule(7, "Есть и нет такого")});
        QVERIFY(table()->accessibleDescription().isEmpty());
        store({}, {7});
        QVERIFY(!isBlank());
        search->clear();
        store({}, {1, 2, 3});
        QVERIFY(table()->accessibleDescription().isEmpty());
        QVERIFY(isBlank());
    }

    void shouldKeepItsControlsInANarrowWindow()
    {
        const auto view = m_fixture->view.get();
        const auto handle = view->findChild<QWidget *>("panelHandle");
        view->setMinimumSize(1, 1); // as in a window that does not ask the page
        for (const int letters : {62, 90}) {
            view->resize(letters * view->fontMetrics().averageCharWidth(), 400);
            for (const int tab : {0, 1}) {
                view->onTabActivated(tab);
                QCoreApplication::sendPostedEvents();
                for (const QWidget *control : {view->findChild<SearchWidget *>()->focusProxy(), handle})
                    QCOMPARE(view->childAt(control->mapTo(view, control->rect().center())), control);
                const auto bar = view->findChild<TQStackedToolBars *>()->currentWidget();
                const auto arrow = bar->findChild<QWidget *>("qt_toolbar_ext_button");
                QVERIFY(arrow->isHidden() || arrow->geometry().right() > bar->width() - arrow->width());
            }
        }
    }

    void shouldTellTextsThatAreCutOff()
    {
        const auto toolTip = [this](int row) {
            const auto cell = table()->visualRect(table()->model()->index(row, ScheduleModel::NameColumn));
            QHelpEvent help(QEvent::ToolTip, cell.center(), table()->viewport()->mapToGlobal(cell.center()));
            QApplication::sendEvent(table()->viewport(), &help);
            return QToolTip::text();
        };
        const QString endless = QString("Ящик <b> ").repeated(40);
        store({schedule(7, endless)});
        QCOMPARE(toolTip(0), QString());
        QVERIFY(toolTip(3).contains(endless.toHtmlEscaped()));
    }

    void shouldReadNotices()
    {
        auto hidden = schedule(10, "Черновик");
        hidden.state = 0;
        store({hidden});
        QVERIFY(!names().contains("Черновик"));
        // A shown record that turns away from its state keeps its old row, also when it is removed then.
        auto archive = schedule(2, "Архив 2", ScheduleShift);
        archive.state = 2;
        store({archive});
        store({}, {2});
        QVERIFY(names().contains("Архив"));

        store({schedule(1, "Касса"), schedule(11, "Новый")});
        QCOMPARE(names(), (QStringList{"Архив", "Календарь", "Касса", "Новый"}));
        store({}, {1, 11, 99});
        QCOMPARE(names(), (QStringList{"Архив", "Календарь"}));
    }

    void shouldSelectTheAwaitedSchedule_data()
    {
        QTest::addColumn<QList<quint32>>("notice");
        QTest::addColumn<QStringList>("selected");
        QTest::addColumn<bool>("stillAwaited");
        QTest::newRow("alone") << QList<quint32>{20} << QStringList{"Двадцать"} << false;
        QTest::newRow("last of two") << QList<quint32>{21, 20} << QStringList{"Двадцать"} << false;
        QTest::newRow("before another new one") << QList<quint32>{20, 21} << QStringList{} << true;
        QTest::newRow("before a known one") << QList<quint32>{20, 1} << QStringList{"Двадцать"} << false;
        QTest::newRow("twice, with another in between") << QList<quint32>{20, 21, 20} << QStringList{} << true;
        QTest::newRow("another one") << QList<quint32>{21} << QStringList{} << true;
    }

    void shouldSelectTheAwaitedSchedule()
    {
        QFETCH(QList<quint32>, notice);
        QFETCH(QStringList, selected);
        QFETCH(bool, stillAwaited);
        const auto selectedNames = [this] {
            QStringList found;
            const auto rows = table()->selectionModel()->selectedRows(ScheduleModel::NameColumn);
            for (const auto &index : rows)
                found.append(index.data().toString());
            return found;
        };
        m_fixture->view->appendSchedule();
        emit m_fixture->view->findChild<ScheduleWizard *>()->createFixedSchedule();
        answer(request::AddSchedule, ResultSuccess, writePayload(qint32(20)));
        disconnect(LocalStorage::instance(), nullptr, m_fixture->view.get(), nullptr);
        store({schedule(20, "Двадцать"), schedule(21, "Двадцать один")});
        m_fixture->view->scheduleRead(notice);
        QCOMPARE(selectedNames(), selected);
        const auto current = table()->currentIndex().siblingAtColumn(ScheduleModel::NameColumn).data().toString();
        QCOMPARE(current == "Двадцать", !selected.isEmpty());

        m_fixture->view->scheduleRemoved({20});
        table()->clearSelection();
        m_fixture->view->scheduleRead({20});
        QCOMPARE(selectedNames(), stillAwaited ? QStringList{"Двадцать"} : QStringList());
    }

    void shouldEnableActionsByRightsAndSelection_data()
    {
        QTest::addColumn<QStringList>("roles");
        QTest::addColumn<QStringList>("selected");
        QTest::addColumn<QString>("enabled");
        const QStringList none;
        const QStringList one{"Архив"};
        const QStringList two{"Архив", "Бухгалтерия"};
        QTest::newRow("all rights, nothing") << AllRoles << none << "a";
        QTest::newRow("all rights, one") << AllRoles << one << "aed";
        QTest::newRow("all rights, two") << AllRoles << two << "ad";
        QTest::newRow("only to see, one") << QStringList(AllRoles.mid(0, 1)) << one << "";
        QTest::newRow("no update, one") << QStringList{AllRoles.at(1), AllRoles.at(3)} << one << "ad";
        QTest::newRow("no delete, one") << QStringList(AllRoles.mid(0, 3)) << one << "ae";
    }

    void shouldEnableActionsByRightsAndSelection()
    {
        QFETCH(QStringList, roles);
        QFETCH(QStringList, selected);
        QFETCH(QString, enabled);
        AuthData::setRoles(roles);
        select({"Календарь"});
        select(selected);
        const QList<QPair<QString, QChar>> actions{
            {"actionAdd%1Schedule", 'a'}, {"actionEdit%1Schedule", 'e'}, {"actionDel%1Schedule", 'd'}};
        for (const auto &[name, letter] : actions)
            QCOMPARE(action(qPrintable(name.arg(QString())))->isEnabled(), enabled.contains(letter));
        // The other tab starts without a selection.
        m_fixture->view->onTabActivated(1);
        QCOMPARE(action("actionAddPersonalSchedule")->isEnabled(), enabled.contains('a'));
        QVERIFY(!action("actionEditPersonalSchedule")->isEnabled()
                && !action("actionDelPersonalSchedule")->isEnabled());
        table()->selectRow(0);
        QCOMPARE(action("actionEditPersonalSchedule")->isEnabled(), roles.contains("RL_SCHEDULE_UPDATE"));
        QCOMPARE(action("actionDelPersonalSchedule")->isEnabled(), roles.contains("RL_SCHEDULE_DELETE"));
    }

    void shouldTellWhenRowsLeaveTheSelection()
    {
        QList<SCHEDULE_DATA> many;
        for (int id = 100; id < 400; ++id)
            many.append(schedule(id, id % 2 ? QString("нечётный %1").arg(id) : QString("чётный %1").arg(id)));
        store(many);
        const auto selectedCount = [this] { return table()->selectionModel()->selectedRows().size(); };
        const auto remove = action("actionDelSchedule");

        // The host activates the shown tab again: the list stays where it is.
        table()->scrollToBottom();
        const int bottom = table()->verticalScrollBar()->value();
        m_fixture->view->onTabActivated(0);
        QVERIFY(bottom > 0);
        QCOMPARE(table()->verticalScrollBar()->value(), bottom);

        table()->selectAll();
        QCOMPARE(selectedCount(), 303);
        m_fixture->view->findChild<SearchWidget *>()->setText("нечётный");
        QCOMPARE(selectedCount(), 150);
        QVERIFY(remove->isEnabled());
        QList<quint32> odd;
        for (int id = 101; id < 400; id += 2)
            odd.append(quint32(id));
        store({}, odd.mid(0, 149));
        QCOMPARE(selectedCount(), 1);
        QVERIFY(action("actionEditSchedule")->isEnabled());

        m_fixture->view->findChild<SearchWidget *>()->clear();
        table()->selectAll();
        m_fixture->view->onTabActivated(1);
        QCOMPARE(selectedCount(), 0);
        QVERIFY(!remove->isEnabled());
        m_fixture->view->onTabActivated(0);
        QCOMPARE(selectedCount(), 0);
    }

    void shouldAskBeforeDeleting_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QStringList>("selected");
        QTest::addColumn<QString>("question");
        QTest::addColumn<QList<quint32>>("ids");
        QTest::newRow("one") << 0 << QStringList{"Архив"} << "Удалить график работы \"Архив\"?" << QList<quint32>{2};
        QTest::newRow("three") << 0 << QStringList{"Архив", "Бухгалтерия", "Календарь"}
                               << "Удалить 3 графиков(а) работ?" << QList<quint32>{2, 1, 3};
        QTest::newRow("personal") << 1 << QStringList{"Авдеев март"} << "Удалить график работы \"Авдеев март\"?"
                                  << QList<quint32>{5};
    }

    void shouldAskBeforeDeleting()
    {
        QFETCH(int, tab);
        QFETCH(QStringList, selected);
        QFETCH(QString, question);
        QFETCH(QList<quint32>, ids);
        m_fixture->view->onTabActivated(tab);
        select(selected);
        {
            const Operator person(QDialogButtonBox::Cancel, [&question](QDialog &dialog) {
                auto &box = dynamic_cast<QMessageBox &>(dialog);
                QCOMPARE(box.windowTitle(), "Удаление");
                QCOMPARE(box.text(), question);
                QCOMPARE(box.standardButton(box.defaultButton()), QMessageBox::Cancel);
            });
            QKeyEvent held(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier, {}, true);
            QCoreApplication::sendEvent(table(), &held);
            QVERIFY(!person.isDone());
            QTest::keyClick(table(), Qt::Key_Delete);
            QVERIFY(person.isDone());
            QVERIFY(sentCommand(request::RemoveSchedules).name().isEmpty());
        }
        const Operator person(QDialogButtonBox::Ok);
        action(tab == 0 ? "actionDelSchedule" : "actionDelPersonalSchedule")->trigger();
        QCOMPARE(sentCommand(request::RemoveSchedules).payload(), writePayload(ids));
        QVERIFY(names().contains(selected.first()));
    }

    void shouldOnlyLogMissingRights()
    {
        const QList<QPair<QString, Qt::Key>> keys{{"RL_SCHEDULE_CREATE", Qt::Key_Insert},
                                                  {"RL_SCHEDULE_UPDATE", Qt::Key_Return},
                                                  {"RL_SCHEDULE_DELETE", Qt::Key_Delete}};
        for (const int tab : {0, 1}) {
            m_fixture->view->onTabActivated(tab);
            table()->selectRow(0);
            for (const auto &[right, key] : keys) {
                QStringList others = AllRoles;
                others.removeOne(right);
                AuthData::setRoles(others);
                expectWarning("the user has no rights");
                QTest::keyClick(table(), key);
            }
        }
        QVERIFY(!m_fixture->view->findChild<QDialog *>());
        QVERIFY(sentCommand(request::RemoveSchedules).name().isEmpty());
        QVERIFY(m_fixture->popups.isEmpty());
    }

    void shouldRefreshTheInfoPanelOnce()
    {
        m_fixture->view->onTabActivated(1);
        select({"Борисова март"});
        select({"Авдеев апрель"});
        store({personal(4, "Борисова май", 1, {2025, 5, 1})});
        QTRY_COMPARE(m_fixture->sent.size(), 2);
        const QList<int> ids{6};
        QCOMPARE(sentCommand(request::GetScheduleCalendar).payload(),
                 writePayload(ids, QDate(2025, 1, 1), QDate(2025, 12, 31)));
        const QList<_BLOB_DATA_RESQUEST> photo{{2, "PT_PHOTO", {}}};
        QCOMPARE(sentCommand(request::GetBlobDataChange).payload(), writePayload(photo));

        const auto text = m_fixture->view->findChild<QTextEdit *>();
        select({"Авдеев апрель", "Авдеев март"});
        QCOMPARE(text->toPlainText(), "Выбрано графиков работ: 2");
        table()->clearSelection();
        QVERIFY(text->toPlainText().isEmpty());
        QSignalSpy refreshed(panelTimer(), &QTimer::timeout);
        store({personal(5, "Авдеев май", 2, {2025, 5, 1})});
        QVERIFY(refreshed.wait());
        QCOMPARE(m_fixture->sent.size(), 2);
    }

    void shouldAskAnewForWhatThePanelShows()
    {
        m_fixture->view->onTabActivated(1);
        select({"Авдеев март"});
        QTRY_COMPARE(m_fixture->sent.size(), 2);
        const auto storage = LocalStorage::instance();
        const auto isAskedAfter = [this](const std::function<void()> &notice) {
            m_fixture->sent.clear();
            notice();
            return panelTimer()->isActive() && QTest::qWaitFor([this] { return m_fixture->sent.size() == 2; })
                && sentCommand(request::GetScheduleCalendar).payload()
                == writePayload(QList<int>{5}, QDate(2025, 1, 1), QDate(2025, 12, 31));
        };
        QVERIFY(isAskedAfter([&] { emit storage->objectChanged(SCHEDULE_SHIFT_DATANAME, {1}); }));
        QVERIFY(isAskedAfter([&] { emit storage->objectRemoved(SHIFT_INTERVAL_DATANAME, {1}); }));
        QVERIFY(isAskedAfter([&] { storeWorkers({worker(2, "Авдеев Павел", "3")}); }));
        QVERIFY(isAskedAfter([&] { emit storage->blobChanged(2, db::param::PHOTO); }));
        m_fixture->server.setConnected(false);
        QVERIFY(isAskedAfter([&] { m_fixture->server.setConnected(true); }));

        QVERIFY(!isAskedAfter([&] { storeWorkers({worker(1, "Борисова Алла", "12")}); }));
        QVERIFY(!isAskedAfter([&] { emit storage->blobChanged(1, db::param::PHOTO); }));
        QVERIFY(!isAskedAfter([&] { m_fixture->server.setConnected(false); }));
    }

    void shouldPassOnlyIntactCalendarDays()
    {
        SCHEDULE_CALENDAR_DAY day;
        day.date = {2025, 3, 8};
        day.shiftId = 7;
        const QHash<int, QList<SCHEDULE_CALENDAR_DAY>> days{{3, {day}}};
        const QByteArray intact = writePayload(QList<int>{3, 4}, QDate(2025, 1, 1), QDate(2025, 12, 31), days);
        QSignalSpy received(m_fixture->view.get(), &ScheduleView::calandarDaysReceived);
        const auto deliver = [this](const QByteArray &payload) {
            m_fixture->sent.clear();
            m_fixture->view->sendGetCalandarDays(3, 2025);
            answer(request::GetScheduleCalendar, ResultSuccess, payload);
        };
        deliver(intact);
        QCOMPARE(received.size(), 1);
        QCOMPARE(received.at(0).at(0).toInt(), 3);
        const auto got = received.at(0).at(1).value<QList<SCHEDULE_CALENDAR_DAY>>();
        QCOMPARE(got.size(), 1);
        QCOMPARE(got.first().date, day.date);
        QCOMPARE(got.first().shiftId, 7u);

        for (int length = 0; length < intact.size(); ++length) {
            expectWarning("broken calendar days reply");
            deliver(intact.left(length));
        }
        QCOMPARE(received.size(), 1);
        const QHash<int, QList<SCHEDULE_CALENDAR_DAY>> none;
        deliver(writePayload(QList<int>(), QDate(), QDate(), days));
        QCOMPARE(received.size(), 1);
        deliver(writePayload(QList<int>{9}, QDate(), QDate(), none));
        QCOMPARE(received.size(), 2);
        QVERIFY(received.at(1).at(1).value<QList<SCHEDULE_CALENDAR_DAY>>().isEmpty());
    }

    void shouldKeepThePhotos()
    {
        m_fixture->view->onTabActivated(1);
        select({"Авдеев март"});
        QTRY_COMPARE(m_fixture->sent.size(), 2);
        const QHash<quint32, QHash<QString, QByteArray>> blobs{{2, {{"PT_PHOTO", "picture"}, {"PT_OTHER", "other"}}}};
        answer(request::GetBlobDataChange, ResultSuccess, writePayload(blobs));
        QCOMPARE(LocalStorage::instance()->blob(2, "PT_PHOTO"), QByteArray("picture"));
        QVERIFY(LocalStorage::instance()->blob(2, "PT_OTHER").isEmpty());
        // The panel is refreshed, and this time the photo at hand is the current one.
        m_fixture->sent.clear();
        QTRY_COMPARE(m_fixture->sent.size(), 2);
        const QHash<quint32, QHash<QString, QByteArray>> nothing;
        answer(request::GetBlobDataChange, ResultSuccess, writePayload(nothing));
        QVERIFY(!panelTimer()->isActive());
    }

    void shouldReportFailures_data()
    {
        QTest::addColumn<QString>("request");
        QTest::addColumn<QString>("log");
        QTest::addColumn<QString>("popup");
        QTest::newRow("delete") << QString(request::RemoveSchedules) << "delete schedule error 3"
                                << "Ошибка удаления графика работ";
        QTest::newRow("days") << QString(request::GetScheduleCalendar) << "read calendar days error 3"
                              << "Ошибка чтения расписания графика работ";
        QTest::newRow("photo") << QString(request::GetBlobDataChange) << "blob data read error 3"
                               << "";
    }

    void shouldReportFailures()
    {
        QFETCH(QString, request);
        QFETCH(QString, log);
        QFETCH(QString, popup);
        m_fixture->view->onTabActivated(1);
        select({"Авдеев март"});
        const Operator person(QDialogButtonBox::Ok);
        m_fixture->view->deletePersonalSchedule();
        QTRY_COMPARE(m_fixture->sent.size(), 3);
        expectWarning(log);
        answer(request, ResultChangedMeanwhile, writePayload(QString("text")));
        QCOMPARE(m_fixture->popups, popup.isEmpty() ? QStringList() : QStringList{popup});
    }

    void shouldAnswerTheShowCommand()
    {
        // The editor itself would wait for its operator.
        disconnect(m_fixture->view.get(), &ScheduleView::showEditDialog, m_fixture->view.get(),
                   &ScheduleView::editSchedule);
        QSignalSpy shown(m_fixture->view.get(), &ScheduleView::showEditDialog);
        QList<QByteArray> replies;
        const auto show = [&](const QByteArray &payload) {
            Command command({HostCommandKind, "show:scheduleview"});
            command.setPayload(payload);
            replies.clear();
            m_fixture->server.sendQuery(command, this, [&replies](Command &reply) { replies.append(reply.payload()); });
            QTRY_COMPARE(replies.size(), 1);
        };
        show(writePayload(qint32(3)));
        QCOMPARE(shown.size(), 1);
        QCOMPARE(shown.at(0).at(0).toInt(), 3);
        QCOMPARE(replies.first(), QByteArray());

        expectWarning("schedule not found 99");
        show(writePayload(qint32(99)));
        expectWarning("schedule not found 0");
        show("?");
        AuthData::setRoles({"RL_SCHEDULE_SHOW"});
        expectWarning("no rights to show dialog");
        show(writePayload(qint32(3)));
        QCOMPARE(replies.first(), writePayload(QString("norights")));
        QCOMPARE(shown.size(), 1);
    }

    void shouldOpenTheShiftGuide()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^show guides error 2 .*show:guidesview"));
        m_fixture->view->showShiftGuides();
        QCoreApplication::processEvents();

        QByteArray payload;
        m_fixture->server.registerCommandHandler({HostCommandKind, "show:guidesview"}, this,
                                                 [&payload](Command &command) { payload = command.payload(); });
        m_fixture->view->showShiftGuides();
        QTRY_COMPARE(payload, writePayload(QString("schedule_shift")));
        QVERIFY(m_fixture->popups.isEmpty());
    }

private:
    [[nodiscard]] QTableView *table() const { return m_fixture->table(); }
    [[nodiscard]] QAction *action(const char *name) const { return m_fixture->view->findChild<QAction *>(name); }

    [[nodiscard]] QStringList names() const
    {
        QStringList names;
        const auto model = table()->model();
        for (int row = 0; row < model->rowCount(); ++row)
            names.append(model->index(row, ScheduleModel::NameColumn).data().toString());
        return names;
    }

    void select(const QStringList &wanted)
    {
        table()->clearSelection();
        const auto shown = names();
        for (const QString &name : wanted) {
            QVERIFY(shown.contains(name));
            const auto index = table()->model()->index(shown.indexOf(name), 0);
            table()->selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
    }

    [[nodiscard]] Command sentCommand(const QString &name) const { return m_fixture->requests(name).value(0); }
    void answer(const QString &name, int result, const QByteArray &payload = {})
    {
        m_fixture->reply(sentCommand(name), result, payload);
    }
    [[nodiscard]] QTimer *panelTimer() const
    {
        return m_fixture->view->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    }
    static void expectWarning(const QString &text) { QTest::ignoreMessage(QtWarningMsg, qPrintable(text)); }

    std::unique_ptr<ViewFixture> m_fixture;
};

QTEST_MAIN(TestScheduleView)
#include "tst_scheduleview.moc"
