#include "tq5sdkdata.h"
#include "tqdatastream.h"
#include "tqplugininterface.h"
#include "tqserverinterface.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

/// A plug-in without a page of its own kind: what a request needs of one.
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

/// A switchboard whose transport only remembers, and the replies that came to one sender.
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

/// Everything that is queued, and what that queues in turn.
void settle()
{
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
}

} // namespace

class TestServerInterface : public QObject
{
    Q_OBJECT

private slots:
    void shouldCallBackOnceWhateverTheTransportAnswers()
    {
        Exchange exchange;
        exchange.send(QStringLiteral("schedule.add"), &exchange.context);
        QCOMPARE(exchange.sent.count(), 1);
        QVERIFY(!exchange.sent.first().id().isNull());

        Command stranger = exchange.sent.first();
        stranger.setId(QUuid::createUuid());
        exchange.server.deliver(stranger);
        QCOMPARE(exchange.results, QList<int>());

        exchange.server.deliver(exchange.sent.first());
        exchange.server.deliver(exchange.sent.first());
        QCOMPARE(exchange.results, QList<int>({ResultSuccess}));
    }

    void shouldCallBackEverySenderOfOneIdentifier()
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

    void shouldAnswerWhenTheStoreDoesNot()
    {
        Exchange exchange;
        QSignalSpy failed(&exchange.server, &TQServerInterface::requestFailed);
        exchange.server.setDeadline(60000);
        exchange.send(QStringLiteral("patient"), &exchange.context);
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

    /// A reply may open a dialog, which spins the event loop inside the callback.
    void shouldMeetOtherDeadlinesWhileACallbackWaits()
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

    void shouldAnswerAtOnceButNotFromInsideTheCallWithoutAConnection()
    {
        Exchange exchange;
        QSignalSpy connected(&exchange.server, &TQServerInterface::connectedChanged);
        exchange.server.setConnected(false);
        exchange.server.setConnected(false);
        QCOMPARE(connected.count(), 1);
        exchange.send(QStringLiteral("schedule.add"), &exchange.context);
        QVERIFY(exchange.results.isEmpty());
        settle();
        QCOMPARE(exchange.results, QList<int>({ResultNoConnection}));
        QVERIFY(exchange.sent.isEmpty());
    }

    void shouldNotCallTheDead()
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
        QCOMPARE(failed.count(), 1); // still worth a line in the log
    }

    void shouldAnswerAHostCommandOnce_data()
    {
        QTest::addColumn<QString>("handler");
        QTest::addColumn<int>("result");
        QTest::addColumn<QString>("payload");
        QTest::newRow("that nobody handles") << "none" << int(ResultNotFound) << "*";
        QTest::newRow("whose handler keeps silent") << "silent" << int(ResultSuccess) << "";
        QTest::newRow("whose handler answers") << "answers" << int(ResultNoRights) << "norights";
        QTest::newRow("whose handler answers twice") << "twice" << int(ResultNoRights) << "norights";
        QTest::newRow("whose handler dies meanwhile") << "dies" << int(ResultNotFound) << "*";
    }

    void shouldAnswerAHostCommandOnce()
    {
        QFETCH(QString, handler);
        QFETCH(QString, payload);
        Exchange exchange;
        QSignalSpy arrived(&exchange.server, &TQServerInterface::commandArrived);
        QSignalSpy failed(&exchange.server, &TQServerInterface::requestFailed);
        auto page = std::make_unique<QObject>();
        const CommandType type{HostCommandKind, QStringLiteral("show:page")};
        if (handler != "none") {
            exchange.server.registerCommandHandler(type, page.get(), [](Command &) { QFAIL("was replaced"); });
            exchange.server.registerCommandHandler(type, page.get(), [&](Command &command) {
                command.setResult(ResultNoRights);
                command.setPayload(writePayload(QStringLiteral("norights")));
                if (handler == "answers" || handler == "twice")
                    exchange.server.sendReply(command);
                if (handler == "twice")
                    exchange.server.sendReply(command);
            });
        }
        exchange.server.setConnected(false); // a host command needs no store
        exchange.send(type.name, &exchange.context, HostCommandKind);
        QVERIFY(exchange.results.isEmpty() && arrived.isEmpty());
        if (handler == "dies")
            page.reset();
        settle();
        QTEST(exchange.results.value(0), "result");
        QCOMPARE(exchange.results.count(), 1);
        if (payload == "*")
            QVERIFY(!text(exchange.payloads.first()).isEmpty());
        else
            QCOMPARE(text(exchange.payloads.first()), payload);
        QCOMPARE(arrived.count(), handler == "none" || handler == "dies" ? 0 : 1);
        QVERIFY(exchange.sent.isEmpty() && failed.isEmpty());
    }

    void shouldLetAHandlerTakeItsTime()
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

    void shouldForgetTheCallbacksOfAPluginThatIsGone()
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
