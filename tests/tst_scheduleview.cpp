#include "authdata.h"
#include "clientcache.h"
#include "dialoghandler.h"
#include "hands.h"
#include "localstorage.h"
#include "requests.h"
#include "sampleobjects.h"
#include "samplerecords.h"
#include "schedulemodel.h"
#include "schedulewizard.h"
#include "searchwidget.h"
#include "testcolumns.h"
#include "tqdatastream.h"
#include "tqstackedtoolbars.h"
#include "viewfixture.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QMessageBox>
#include <QScrollBar>
#include <QTableView>
#include <QTextEdit>
#include <QToolTip>
#include <QtTest>

#include <functional>

using namespace orvex;
using namespace support;

class TestScheduleView : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        clearCache();
        storeEmployees({employee(1, "Борисова Анна", "12"), employee(2, "Авдеев Пётр", "3")});
        storeSchedules({schedule(1, "Бухгалтерия"), schedule(2, "Архив", ScheduleShift),
                        schedule(3, "Календарь", ScheduleCalendar),
                        personalSchedule(4, "Борисова март", 1, {2025, 3, 1}),
                        personalSchedule(5, "Авдеев март", 2, {2025, 3, 1}),
                        personalSchedule(6, "Авдеев апрель", 2, {2025, 4, 1})});
        m_fixture = std::make_unique<ViewFixture>();
    }

    void cleanup() { m_fixture.reset(); }

    void shouldShowTheColumnsOfEachTab()
    {
        const auto hidden = [this] {
            QList<int> columns;
            for (int column = 0; column < ScheduleModel::ColumnCount; ++column) {
                if (table()->isColumnHidden(column))
                    columns.append(column);
            }
            return columns;
        };
        QCOMPARE(m_fixture->names(), (QStringList{"Архив", "Бухгалтерия", "Календарь"}));
        QCOMPARE(hidden(), (QList<int>{3, 4, 5}));
        QVERIFY(m_fixture->view->tabList().at(0).current && !m_fixture->view->tabList().at(1).current);
        QVERIFY(m_fixture->action("actionAddSchedule")->isVisible()
                && !m_fixture->action("actionAddPersonalSchedule")->isVisible());

        m_fixture->view->onTabActivated(1);
        QVERIFY(!m_fixture->view->tabList().at(0).current && m_fixture->view->tabList().at(1).current);
        QCOMPARE(m_fixture->names(), (QStringList{"Авдеев апрель", "Авдеев март", "Борисова март"}));
        QCOMPARE(hidden(), (QList<int>{1, 2}));
        QVERIFY(!m_fixture->action("actionDelSchedule")->isVisible()
                && m_fixture->action("actionDelPersonalSchedule")->isVisible());
        QCOMPARE(table()->horizontalHeader()->sortIndicatorSection(), 5);

        m_fixture->view->onTabActivated(0);
        // Another tab resets the sort order.
        table()->sortByColumn(ScheduleModel::NameColumn, Qt::DescendingOrder);
        storeSchedules({schedule(7, "Яблоко")});
        QCOMPARE(m_fixture->names(), (QStringList{"Яблоко", "Календарь", "Бухгалтерия", "Архив"}));
        m_fixture->view->onTabActivated(1);
        m_fixture->view->onTabActivated(0);
        QCOMPARE(m_fixture->names().constFirst(), "Архив");
    }

    void shouldFilterByTheSearchText()
    {
        const auto search = m_fixture->view->findChild<SearchWidget *>();
        typeText(search->focusProxy(), "АР");
        QCOMPARE(m_fixture->names(), (QStringList{"Архив", "Календарь"}));
        search->clear();
        QCOMPARE(m_fixture->names().size(), 3);

        // An empty list says that the search finds nothing.
        const auto isBlank = [this] {
            const QImage image = table()->viewport()->grab().toImage();
            QImage background(image);
            background.fill(image.pixelColor(0, 0));
            return image == background;
        };
        search->setText("нет такого");
        QCOMPARE(table()->accessibleDescription(), "Ничего не найдено.");
        QVERIFY(!isBlank());
        storeSchedules({schedule(7, "Есть и нет такого")});
        QVERIFY(table()->accessibleDescription().isEmpty());
        storeSchedules({}, {7});
        QVERIFY(!isBlank());
        search->clear();
        storeSchedules({}, {1, 2, 3});
        QVERIFY(table()->accessibleDescription().isEmpty());
        QVERIFY(isBlank());
    }

    void shouldShowAllControlsInANarrowWindow()
    {
        const auto view = m_fixture->view.get();
        const auto handle = view->findChild<QWidget *>("panelHandle");
        view->setMinimumSize(1, 1); // as in a window that ignores the size of the page
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

    void shouldShowToolTipsForCutOffTexts()
    {
        const auto toolTip = [this](int row) {
            const auto cell = table()->visualRect(table()->model()->index(row, ScheduleModel::NameColumn));
            QHelpEvent help(QEvent::ToolTip, cell.center(), table()->viewport()->mapToGlobal(cell.center()));
            QApplication::sendEvent(table()->viewport(), &help);
            return QToolTip::text();
        };
        const QString longName = QString("Ящик <b> ").repeated(40);
        storeSchedules({schedule(7, longName)});
        QCOMPARE(toolTip(0), QString());
        QVERIFY(toolTip(3).contains(longName.toHtmlEscaped()));
    }

    void shouldApplyChanges()
    {
        auto hidden = schedule(10, "Черновик");
        hidden.state = 0;
        storeSchedules({hidden});
        QVERIFY(!m_fixture->names().contains("Черновик"));
        // A shown record that changes to another state keeps its old row, even after its removal.
        auto archive = schedule(2, "Архив 2", ScheduleShift);
        archive.state = 2;
        storeSchedules({archive});
        storeSchedules({}, {2});
        QVERIFY(m_fixture->names().contains("Архив"));

        storeSchedules({schedule(1, "Касса"), schedule(11, "Новый")});
        QCOMPARE(m_fixture->names(), (QStringList{"Архив", "Календарь", "Касса", "Новый"}));
        storeSchedules({}, {1, 11, 99});
        QCOMPARE(m_fixture->names(), (QStringList{"Архив", "Календарь"}));
    }

    void shouldSelectTheAwaitedSchedule_data()
    {
        addColumns<QList<quint32>, QStringList, bool>({"changed", "selected", "stillAwaited"});
        QTest::newRow("alone") << QList<quint32>{20} << QStringList{"Двадцать"} << false;
        QTest::newRow("last of two") << QList<quint32>{21, 20} << QStringList{"Двадцать"} << false;
        QTest::newRow("before another new one") << QList<quint32>{20, 21} << QStringList{} << true;
        QTest::newRow("before a known one") << QList<quint32>{20, 1} << QStringList{"Двадцать"} << false;
        QTest::newRow("twice, with another in between") << QList<quint32>{20, 21, 20} << QStringList{} << true;
        QTest::newRow("another one") << QList<quint32>{21} << QStringList{} << true;
    }

    void shouldSelectTheAwaitedSchedule()
    {
        QFETCH(QList<quint32>, changed);
        QFETCH(QStringList, selected);
        QFETCH(bool, stillAwaited);
        const auto selectedNames = [this] {
            QStringList found;
            for (const auto &row : table()->selectionModel()->selectedRows(ScheduleModel::NameColumn))
                found.append(row.data().toString());
            return found;
        };
        m_fixture->view->appendSchedule();
        emit m_fixture->view->findChild<ScheduleWizard *>()->createFixedSchedule();
        answer(request::AddSchedule, ResultSuccess, writePayload(qint32(20)));
        disconnect(LocalStorage::instance(), nullptr, m_fixture->view.get(), nullptr);
        storeSchedules({schedule(20, "Двадцать"), schedule(21, "Двадцать один")});
        m_fixture->view->scheduleRead(changed);
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
        addColumns<int, int>({"tab", "selected"});
        for (const int tab : {0, 1}) {
            for (const int selected : {0, 1, 2})
                QTest::addRow("tab %d, selected %d", tab, selected) << tab << selected;
        }
    }

    void shouldEnableActionsByRightsAndSelection()
    {
        QFETCH(int, tab);
        QFETCH(int, selected);
        // The other tab starts without a selection.
        m_fixture->view->onTabActivated(1 - tab);
        table()->selectAll();
        m_fixture->view->onTabActivated(tab);
        m_fixture->select(m_fixture->names().mid(0, selected));
        const auto enabled = [this, tab] {
            QString verbs;
            for (const char *verb : {"Add", "Edit", "Del"}) {
                const auto name = QString("action%1%2Schedule").arg(verb, tab == 0 ? "" : "Personal");
                if (m_fixture->action(name)->isEnabled())
                    verbs += verb;
            }
            return verbs;
        };
        const QString edit = selected == 1 ? "Edit" : "";
        const QString remove = selected > 0 ? "Del" : "";
        QCOMPARE(enabled(), "Add" + edit + remove);
        const QList<QPair<QStringList, QString>> expected{{{"RL_SCHEDULE_SHOW"}, ""},
                                                          {{"RL_SCHEDULE_SHOW", "RL_SCHEDULE_CREATE"}, "Add"},
                                                          {{"RL_SCHEDULE_SHOW", "RL_SCHEDULE_UPDATE"}, edit},
                                                          {{"RL_SCHEDULE_SHOW", "RL_SCHEDULE_DELETE"}, remove}};
        for (const auto &[roles, verbs] : expected) {
            AuthData::setRoles(roles);
            QCOMPARE(enabled(), verbs);
        }
    }

    void shouldDeselectRowsThatDisappear()
    {
        QList<SCHEDULE_DATA> many;
        for (int id = 100; id < 400; ++id)
            many.append(schedule(id, id % 2 ? QString("нечётный %1").arg(id) : QString("чётный %1").arg(id)));
        storeSchedules(many);
        const auto selectedCount = [this] { return table()->selectionModel()->selectedRows().size(); };
        const auto remove = m_fixture->action("actionDelSchedule");

        // Activating the shown tab again does not scroll.
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
        for (quint32 id = 101; id < 399; id += 2)
            odd.append(id);
        storeSchedules({}, odd);
        QCOMPARE(selectedCount(), 1);
        QVERIFY(m_fixture->action("actionEditSchedule")->isEnabled());

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
        addColumns<int, QStringList, QString, QList<quint32>>({"tab", "selected", "question", "ids"});
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
        m_fixture->select(selected);
        {
            const DialogHandler handler(QDialogButtonBox::Cancel, [&question](QDialog &dialog) {
                auto &box = dynamic_cast<QMessageBox &>(dialog);
                QCOMPARE(box.windowTitle(), "Удаление");
                QCOMPARE(box.text(), question);
                QCOMPARE(box.standardButton(box.defaultButton()), QMessageBox::Cancel);
            });
            QKeyEvent held(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier, {}, true);
            QCoreApplication::sendEvent(table(), &held);
            QVERIFY(!handler.hasOpened());
            QTest::keyClick(table(), Qt::Key_Delete);
            QVERIFY(handler.hasOpened());
            QVERIFY(sentCommand(request::RemoveSchedules).name().isEmpty());
        }
        const DialogHandler handler(QDialogButtonBox::Ok);
        m_fixture->action(tab == 0 ? "actionDelSchedule" : "actionDelPersonalSchedule")->trigger();
        QCOMPARE(sentCommand(request::RemoveSchedules).payload(), writePayload(ids));
        QVERIFY(m_fixture->names().contains(selected.first()));
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
                QStringList others = ViewFixture::AllRoles;
                others.removeOne(right);
                AuthData::setRoles(others);
                expectWarning("the user has no rights");
                QTest::keyClick(table(), key);
            }
        }
        QVERIFY(!m_fixture->view->findChild<QDialog *>());
        QVERIFY(sentCommand(request::RemoveSchedules).name().isEmpty());
        QVERIFY(m_fixture->popups.isEmpty());
        QVERIFY(m_fixture->view->canShow());
        AuthData::setRoles({"RL_SCHEDULE_SHOWN", "rl_schedule_show"});
        QVERIFY(!m_fixture->view->canShow());
    }

    void shouldRefreshTheInfoPanelOnce()
    {
        m_fixture->view->onTabActivated(1);
        m_fixture->select({"Борисова март"});
        m_fixture->select({"Авдеев апрель"});
        storeSchedules({personalSchedule(4, "Борисова май", 1, {2025, 5, 1})});
        QTRY_COMPARE(m_fixture->sent.size(), 2);
        QCOMPARE(sentCommand(request::GetScheduleCalendar).payload(), ViewFixture::daysRequest(6, 2025));
        const QList<_BLOB_DATA_RESQUEST> photo{{2, "PT_PHOTO", {}}};
        QCOMPARE(sentCommand(request::GetBlobDataChange).payload(), writePayload(photo));

        const auto text = m_fixture->view->findChild<QTextEdit *>();
        m_fixture->select({"Авдеев апрель", "Авдеев март"});
        QCOMPARE(text->toPlainText(), "Выбрано графиков работ: 2");
        table()->clearSelection();
        QVERIFY(text->toPlainText().isEmpty());
        QSignalSpy refreshed(panelTimer(), &QTimer::timeout);
        storeSchedules({personalSchedule(5, "Авдеев май", 2, {2025, 5, 1})});
        QVERIFY(refreshed.wait());
        QCOMPARE(m_fixture->sent.size(), 2);
    }

    void shouldRequestAgainWhatThePanelShows()
    {
        showInPanel("Авдеев март");
        const auto isRequestedAfter = [this](const std::function<void()> &change) {
            m_fixture->sent.clear();
            change();
            return panelTimer()->isActive() && QTest::qWaitFor([this] { return m_fixture->sent.size() == 2; })
                && sentCommand(request::GetScheduleCalendar).payload() == ViewFixture::daysRequest(5, 2025);
        };
        QVERIFY(isRequestedAfter([] { storeEmployees({employee(2, "Авдеев Павел", "3")}); }));
        QVERIFY(!isRequestedAfter([] { storeEmployees({employee(1, "Борисова Алла", "12")}); }));
        QVERIFY(!isRequestedAfter([this] { m_fixture->server.setConnected(false); }));
        QVERIFY(isRequestedAfter([this] { m_fixture->server.setConnected(true); }));
    }

    void shouldPassOnlyIntactCalendarDays()
    {
        using Days = QList<SCHEDULE_CALENDAR_DAY>;
        const Days days{calendarDay({2025, 3, 8}, 7)};
        const QHash<int, Days> daysOf3{{3, days}};
        const QByteArray intact = writePayload(QList<int>{3, 4}, QDate(2025, 1, 1), QDate(2025, 12, 31), daysOf3);
        QSignalSpy received(m_fixture->view.get(), &ScheduleView::calandarDaysReceived);
        const auto deliver = [this](const QByteArray &payload) {
            m_fixture->sent.clear();
            m_fixture->view->sendGetCalandarDays(3, 2025);
            answer(request::GetScheduleCalendar, ResultSuccess, payload);
        };
        deliver(intact);
        QCOMPARE(received.size(), 1);
        QCOMPARE(received.at(0).at(0).toInt(), 3);
        QCOMPARE(received.at(0).at(1).value<Days>(), days);

        for (int length = 0; length < intact.size(); ++length) {
            expectWarning("broken calendar days reply");
            deliver(intact.left(length));
        }
        deliver(writePayload(QList<int>(), QDate(), QDate(), daysOf3));
        QCOMPARE(received.size(), 1);
        deliver(writePayload(QList<int>{9}, QDate(), QDate(), QHash<int, Days>()));
        QCOMPARE(received.size(), 2);
        QVERIFY(received.at(1).at(1).value<Days>().isEmpty());
    }

    void shouldCachePhotos()
    {
        showInPanel("Авдеев март");
        const QHash<quint32, QHash<QString, QByteArray>> blobs{{2, {{"PT_PHOTO", "picture"}, {"PT_OTHER", "other"}}}};
        answer(request::GetBlobDataChange, ResultSuccess, writePayload(blobs));
        QCOMPARE(LocalStorage::instance()->blob(2, "PT_PHOTO"), QByteArray("picture"));
        QVERIFY(LocalStorage::instance()->blob(2, "PT_OTHER").isEmpty());
        // The refreshed panel requests once more; now the cached photo is current.
        m_fixture->sent.clear();
        QTRY_COMPARE(m_fixture->sent.size(), 2);
        answer(request::GetBlobDataChange, ResultSuccess, writePayload(decltype(blobs)()));
        QVERIFY(!panelTimer()->isActive());
    }

    void shouldReportFailures_data()
    {
        addColumns<QString, QString, QString>({"request", "log", "popup"});
        QTest::newRow("delete") << QString(request::RemoveSchedules) << "delete schedule error 3"
                                << "Ошибка удаления графика работ";
        QTest::newRow("days") << QString(request::GetScheduleCalendar) << "read calendar days error 3"
                              << "Ошибка чтения расписания графика работ";
        QTest::newRow("photo") << QString(request::GetBlobDataChange) << "blob data read error 3" << QString();
    }

    void shouldReportFailures()
    {
        QFETCH(QString, request);
        QFETCH(QString, log);
        QFETCH(QString, popup);
        showInPanel("Авдеев март");
        const DialogHandler handler(QDialogButtonBox::Ok);
        m_fixture->view->deletePersonalSchedule();
        QTRY_COMPARE(m_fixture->sent.size(), 3);
        expectWarning(log);
        answer(request, ResultChangedMeanwhile, writePayload(QString("text")));
        QCOMPARE(m_fixture->popups, popup.isEmpty() ? QStringList() : QStringList{popup});
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
    [[nodiscard]] Command sentCommand(const QString &name) const { return m_fixture->requests(name).value(0); }
    void answer(const QString &name, int result, const QByteArray &payload = {})
    {
        m_fixture->reply(sentCommand(name), result, payload);
    }
    /// Selects a personal schedule and waits for the requests of the panel.
    void showInPanel(const QString &name)
    {
        m_fixture->view->onTabActivated(1);
        m_fixture->select({name});
        QTRY_COMPARE(m_fixture->sent.size(), 2);
    }
    [[nodiscard]] QTimer *panelTimer() const
    {
        return m_fixture->view->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    }

    std::unique_ptr<ViewFixture> m_fixture;
};

QTEST_MAIN(TestScheduleView)
#include "tst_scheduleview.moc"
