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
    void send(const QString &name, QObject *sender, int kind = StoreRequestKind)
    {
        server.sendQuery(Command({kind, name}), sender, [this](Command &reply) {
            results.append(reply.result());
            payloads.append(reply.payload());
        });
    }

    TQServerInterface server;
    QObject context;
    QList<Command> sent;
    QList<int> results;
    QList<QByteArray> payloads;
};

QString text(const QByteArray &payload)
{
    QString text;
    return readPayload(payload, text) ? text : QString();
}

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
        exchange.send(QStringLiteral("schedule.add"), &exchange.context);
        QCOMPARE(exchange.sent.count(), 1);
        QVERIFY(!exchange.sent.first().id().isNull());

        Command unknown = exchange.sent.first();
        unknown.setId(QUuid::createUuid());
        exchange.server.deliver(unknown);
        QCOMPARE(exchange.results, QList<int>());

        exchange.server.deliver(exchange.sent.first());
        exchange.server.deliver(exchange.sent.first());
        QCOMPARE(exchange.results, QList<int>({ResultSuccess}));
    }

    void shouldCallBackEachSenderOfTheSameIdentifier()
    {
        Exchange exchange;
        Command command({StoreRequestKind, QStringLiteral("schedule.add")});
        command.setId(QUuid::createUuid());
        int calls = 0;
        for (int i = 0; i < 2; ++i)
            exchange.server.sendQuery(command, &exchange.context, [&calls](Command &) { ++calls; });
        QCOMPARE(exchange.sent.first().id(), command.id());
        for (const Command &sent : std::as_const(exchange.sent))
            exchange.server.deliver(sent);
        QCOMPARE(calls, 2);
    }

    void shouldReplyAfterTheDeadline()
    {
        Exchange exchange;
        QSignalSpy failed(&exchange.server, &TQServerInterface::requestFailed);
        exchange.server.setDeadline(60000);
        exchange.send(QStringLiteral("in time"), &exchange.context);
        exchange.server.setDeadline(30);
        exchange.send(QStringLiteral("late"), &exchange.context);
        QTRY_COMPARE(exchange.results, QList<int>({ResultNoConnection}));
        QVERIFY(!text(exchange.payloads.first()).isEmpty());
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
        exchange.server.sendQuery(Command({StoreRequestKind, QStringLiteral("dialog")}), &exchange.context,
                                  [&](Command &) {
                                      QTRY_COMPARE(exchange.results, QList<int>({ResultNoConnection}));
                                      waited = true;
                                  });
        exchange.send(QStringLiteral("other"), &exchange.context);
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
        exchange.send(QStringLiteral("schedule.add"), &exchange.context);
        QVERIFY(exchange.results.isEmpty());
        processQueuedCalls();
        QCOMPARE(exchange.results, QList<int>({ResultNoConnection}));
        QVERIFY(exchange.sent.isEmpty());
    }

    void shouldNotCallBackADestroyedSender()
    {
        Exchange exchange;
        QSignalSpy failed(&exchange.server, &TQServerInterface::requestFailed);
        auto sender = std::make_unique<QObject>();
        exchange.send(QStringLiteral("schedule.add"), sender.get());
        sender.reset();
        Command reply = exchange.sent.first();
        reply.setResult(ResultStorageError);
        exchange.server.deliver(reply);
        QVERIFY(exchange.results.isEmpty());
        QCOMPARE(failed.count(), 1); // the failure is still logged
    }

    void shouldReplyToAHostCommandOnce_data()
    {
        QTest::addColumn<QString>("handler");
        QTest::addColumn<int>("result");
        QTest::addColumn<QString>("payload");
        QTest::newRow("no handler") << "none" << int(ResultNotFound) << "*";
        QTest::newRow("handler without a reply") << "silent" << int(ResultSuccess) << "";
        QTest::newRow("handler with a reply") << "replies" << int(ResultNoRights) << "norights";
        QTest::newRow("handler with two replies") << "twice" << int(ResultNoRights) << "norights";
        QTest::newRow("destroyed handler") << "destroyed" << int(ResultNotFound) << "*";
    }

    void shouldReplyToAHostCommandOnce()
    {
        QFETCH(QString, handler);
        QFETCH(QString, payload);
        Exchange exchange;
        QSignalSpy arrived(&exchange.server, &TQServerInterface::commandArrived);
        QSignalSpy failed(&exchange.server, &TQServerInterface::requestFailed);
        auto page = std::make_unique<QObject>();
        const CommandType type{HostCommandKind, QStringLiteral("show:page")};
        if (handler != "none") {
            exchange.server.registerCommandHandler(type, page.get(),
                                                   [](Command &) { QFAIL("this handler was replaced"); });
            exchange.server.registerCommandHandler(type, page.get(), [&](Command &command) {
                command.setResult(ResultNoRights);
                command.setPayload(writePayload(QStringLiteral("norights")));
                if (handler == "replies" || handler == "twice")
                    exchange.server.sendReply(command);
                if (handler == "twice")
                    exchange.server.sendReply(command);
            });
        }
        exchange.server.setConnected(false); // a host command needs no store
        exchange.send(type.name, &exchange.context, HostCommandKind);
        QVERIFY(exchange.results.isEmpty() && arrived.isEmpty());
        if (handler == "destroyed")
            page.reset();
        processQueuedCalls();
        QTEST(exchange.results.value(0), "result");
        QCOMPARE(exchange.results.count(), 1);
        if (payload == "*")
            QVERIFY(!text(exchange.payloads.first()).isEmpty());
        else
            QCOMPARE(text(exchange.payloads.first()), payload);
        QCOMPARE(arrived.count(), handler == "none" || handler == "destroyed" ? 0 : 1);
        QVERIFY(exchange.sent.isEmpty() && failed.isEmpty());
    }

    void shouldNotLimitTheTimeOfAHandler()
    {
        Exchange exchange;
        exchange.server.setDeadline(10);
        exchange.server.registerCommandHandler({HostCommandKind, QStringLiteral("show:page")}, &exchange.context,
                                               [&](Command &) {
                                                   QTest::qWait(60); // a modal dialog
                                                   QVERIFY(exchange.results.isEmpty());
                                               });
        exchange.send(QStringLiteral("show:page"), &exchange.context, HostCommandKind);
        QTRY_COMPARE(exchange.results, QList<int>({ResultSuccess}));
    }

    void shouldNotCallBackADestroyedPlugin()
    {
        Exchange exchange;
        auto plugin = std::make_unique<Plugin>(&exchange.server);
        auto *data = new tq5sdk::Data(plugin.get(), QStringLiteral("session-1"));
        bool called = false;
        data->removeSchedules({1}, [&called](Command &) { called = true; });
        QCOMPARE(exchange.sent.first().sessionId(), QStringLiteral("session-1"));
        plugin.reset();
        exchange.server.deliver(exchange.sent.first());
        QVERIFY(!called);
    }
};

QTEST_GUILESS_MAIN(TestServerInterface)
#include "tst_serverinterface.moc"
