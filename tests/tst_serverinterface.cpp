#include "testcolumns.h"
#include "tq5sdkdata.h"
#include "tqdatastream.h"
#include "tqplugininterface.h"
#include "tqserverinterface.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

/// The smallest plug-in that can send requests.
class Plugin : public TQPluginInterface
{
public:
    explicit Plugin(TQServerInterface *server) { init(server, QStringLiteral("test")); }

    QString pluginName() const override { return QStringLiteral("test"); }
    quint32 pluginVersion() const override { return 1; }
    QString pluginBuild() const override { return {}; }
    QWidget *widget() override { return nullptr; }
    QObject *object() override { return &m_object; }

private:
    QObject m_object;
};

/// A server whose transport records the requests, and the replies to its senders.
struct Exchange
{
    Exchange()
    {
        server.setTransport([this](const Command &command) { sent.append(command); });
        server.setConnected(true);
    }
    void send(const Command &command)
    {
        server.sendQuery(command, &context, [this](Command &reply) {
            QString text;
            results.append(reply.result());
            texts.append(readPayload(reply.payload(), text) ? text : QString());
        });
    }

    TQServerInterface server;
    QObject context;
    QList<Command> sent;
    QList<int> results;
    QStringList texts;
};

Command request(const QString &name = QStringLiteral("schedule.add"))
{
    return Command({StoreRequestKind, name});
}

const CommandType ShowPage{HostCommandKind, QStringLiteral("show:page")};

/// Processes queued calls, including those that they queue.
void processQueuedCalls()
{
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
}

} // namespace

class TestServerInterface : public QObject
{
    Q_OBJECT

private slots:
    void shouldCallBackOnceForEachRequest()
    {
        Exchange exchange;
        Command identified = request();
        identified.setId(QUuid::createUuid());
        for (const Command &command : {request(), request(), identified, identified})
            exchange.send(command);
        QSet<QUuid> ids;
        for (const Command &sent : std::as_const(exchange.sent))
            ids.insert(sent.id());
        QCOMPARE(ids.size(), 4);
        QCOMPARE(exchange.sent.at(2).id(), identified.id());

        Command unknown = request();
        unknown.setId(QUuid::createUuid());
        exchange.server.deliver(unknown);
        QVERIFY(exchange.results.isEmpty());
        for (const Command &sent : exchange.sent + exchange.sent)
            exchange.server.deliver(sent);
        QCOMPARE(exchange.results, QList<int>({ResultSuccess, ResultSuccess, ResultSuccess, ResultSuccess}));
    }

    void shouldReplyAfterTheDeadline()
    {
        Exchange exchange;
        QSignalSpy failed(&exchange.server, &TQServerInterface::requestFailed);
        exchange.server.setDeadline(60000);
        exchange.send(request(QStringLiteral("in time")));
        exchange.server.setDeadline(30);
        exchange.send(request(QStringLiteral("late")));
        QTRY_COMPARE(exchange.results, QList<int>({ResultNoConnection}));
        QVERIFY(!exchange.texts.first().isEmpty());
        QCOMPARE(failed.count(), 1);
        QCOMPARE(failed.first().first().value<Command>().name(), QStringLiteral("late"));

        exchange.server.deliver(exchange.sent.last()); // too late
        QCOMPARE(exchange.results.count(), 1);
        exchange.server.deliver(exchange.sent.first());
        QCOMPARE(exchange.results, QList<int>({ResultNoConnection, ResultSuccess}));
    }

    /// A callback may open a dialog, which runs a nested event loop.
    void shouldKeepOtherDeadlinesDuringACallback()
    {
        Exchange exchange;
        exchange.server.setDeadline(20);
        bool waited = false;
        exchange.server.sendQuery(request(), &exchange.context, [&](Command &) {
            QTRY_COMPARE(exchange.results, QList<int>({ResultNoConnection}));
            waited = true;
        });
        exchange.send(request());
        QTRY_VERIFY(waited);
        QCOMPARE(exchange.results.count(), 1);
    }

    void shouldReplyAsynchronouslyWithoutAConnection()
    {
        Exchange exchange;
        QSignalSpy connected(&exchange.server, &TQServerInterface::connectedChanged);
        exchange.server.setConnected(false);
        exchange.server.setConnected(false);
        QCOMPARE(connected.count(), 1);
        exchange.send(request());
        QVERIFY(exchange.results.isEmpty());
        processQueuedCalls();
        QCOMPARE(exchange.results, QList<int>({ResultNoConnection}));
        QVERIFY(exchange.sent.isEmpty());
    }

    void shouldReplyToAHostCommandOnce_data()
    {
        support::addColumns<QString, int, int>({"handler", "replies", "result"});
        QTest::newRow("no handler") << "none" << 0 << int(ResultNotFound);
        QTest::newRow("handler without a reply") << "kept" << 0 << int(ResultSuccess);
        QTest::newRow("handler with a reply") << "kept" << 1 << int(ResultNoRights);
        QTest::newRow("handler with two replies") << "kept" << 2 << int(ResultNoRights);
        QTest::newRow("destroyed handler") << "destroyed" << 0 << int(ResultNotFound);
    }

    void shouldReplyToAHostCommandOnce()
    {
        QFETCH(QString, handler);
        QFETCH(int, replies);
        QFETCH(int, result);
        Exchange exchange;
        QSignalSpy arrived(&exchange.server, &TQServerInterface::commandArrived);
        QSignalSpy failed(&exchange.server, &TQServerInterface::requestFailed);
        auto page = std::make_unique<QObject>();
        if (handler != "none") {
            exchange.server.registerCommandHandler(ShowPage, page.get(),
                                                   [](Command &) { QFAIL("this handler was replaced"); });
            exchange.server.registerCommandHandler(ShowPage, page.get(), [&](Command &command) {
                command.setResult(ResultNoRights);
                command.setPayload(writePayload(QStringLiteral("norights")));
                for (int i = 0; i < replies; ++i)
                    exchange.server.sendReply(command);
            });
        }
        exchange.server.setConnected(false); // a host command needs no store
        exchange.send(Command(ShowPage));
        QVERIFY(exchange.results.isEmpty() && arrived.isEmpty());
        if (handler == "destroyed")
            page.reset();
        processQueuedCalls();
        QCOMPARE(exchange.results, QList<int>{result});
        QCOMPARE(exchange.texts.first().isEmpty(), result == ResultSuccess);
        QCOMPARE(exchange.texts.first() == "norights", result == ResultNoRights);
        QCOMPARE(arrived.count(), handler == "kept" ? 1 : 0);
        QVERIFY(exchange.sent.isEmpty() && failed.isEmpty());
    }

    void shouldNotLimitTheTimeOfAHandler()
    {
        Exchange exchange;
        exchange.server.setDeadline(10);
        exchange.server.registerCommandHandler(ShowPage, &exchange.context, [&](Command &) {
            QTest::qWait(60); // a modal dialog
            QVERIFY(exchange.results.isEmpty());
        });
        exchange.send(Command(ShowPage));
        QTRY_COMPARE(exchange.results, QList<int>({ResultSuccess}));
    }

    void shouldNotCallBackADestroyedPlugin()
    {
        Exchange exchange;
        QSignalSpy failed(&exchange.server, &TQServerInterface::requestFailed);
        auto plugin = std::make_unique<Plugin>(&exchange.server);
        auto *data = new tq5sdk::Data(plugin.get(), QStringLiteral("session-1"));
        bool called = false;
        data->removeSchedules({1}, [&called](Command &) { called = true; });
        QCOMPARE(exchange.sent.first().sessionId(), QStringLiteral("session-1"));
        plugin.reset();
        Command reply = exchange.sent.first();
        reply.setResult(ResultStorageError);
        exchange.server.deliver(reply);
        QVERIFY(!called);
        QCOMPARE(failed.count(), 1); // the failure is still logged
    }
};

QTEST_GUILESS_MAIN(TestServerInterface)
#include "tst_serverinterface.moc"
