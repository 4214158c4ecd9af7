#pragma once

#include "command.h"
#include "tqserverinterface_export.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

/// The client's switchboard: requests to the store and commands between plug-ins pass through it. GUI thread only.
///
/// For every query exactly one callback is called, on the GUI thread and never from inside the call: with the answer,
/// with code 6 when the store did not answer in time or there is no connection, or not at all once its context has
/// died.
class TQSERVERINTERFACE_EXPORT TQServerInterface : public QObject
{
    Q_OBJECT

public:
    /// Gets a reply, or a host command to be carried out. The command is its own copy.
    using Handler = std::function<void(Command &)>;
    /// Takes a request to the store.
    using Transport = std::function<void(const Command &)>;

    /// Without transport and not connected.
    explicit TQServerInterface(QObject *parent = nullptr);
    ~TQServerInterface() override;

    /// Where requests to the store go. The transport must not answer from inside the call.
    void setTransport(Transport transport);
    /// How long a request that is sent from now on waits for its answer, in milliseconds (30,000 at first). Host
    /// commands wait for as long as it takes.
    void setDeadline(int milliseconds);

    /// Whether requests reach the store now; false at first.
    [[nodiscard]] bool isConnected() const;
    /// Without a connection a query is answered with code 6 at once (but not from inside the call).
    void setConnected(bool connected);

    /// Sends \a command: to the handler of its name if it is a host command (an unknown name is answered with code 2),
    /// else to the transport. Gives it an identifier of its own if it has none or one that is still waited for. \a
    /// reply is called while \a context lives.
    void sendQuery(Command command, QObject *context, Handler reply);
    /// For those who have no server to send by: answers \a command with code 6, later, while \a context lives.
    static void refuseQuery(const Command &command, QObject *context, const Handler &reply);
    /// Registers the handler of a host command; a later one of the same type replaces it. It goes with \a context.
    void registerCommandHandler(const CommandType &type, QObject *context, Handler handler);
    /// Forgets the handlers that go with \a context.
    void dropHandlersOf(const QObject *context);
    /// Answers a host command from its handler. A handler that sends no answer has its command answered with success.
    void sendReply(const Command &command);

public slots:
    /// The answer of the transport. An identifier that nobody waits for any more is ignored.
    void deliver(const Command &reply);

signals:
    /// Emitted when `isConnected` has become \a connected.
    void connectedChanged(bool connected);
    /// The answer of a request to the store is about to be handed to its sender.
    void answerArrives();
    /// A failed answer of the store has just been delivered to its sender, \a reply.
    void requestFailed(const Command &reply);
    /// A host command is about to be handed to its handler: the moment to bring the handler's page to the front.
    void commandArrived(const QString &name);

private:
    struct Waiting
    {
        Command command;
        QPointer<QObject> context;
        Handler reply;
        qint64 due = 0; ///< on m_clock, milliseconds
    };
    struct Registered
    {
        QPointer<QObject> context;
        Handler handler;
    };

    void dispatchToHandler(Command command);
    void answerLater(const Command &command, int result, const QString &text);
    void checkDeadlines();
    void restartTimer();

    Transport m_transport;
    bool m_connected = false;
    int m_deadline = 30000;
    QElapsedTimer m_clock;
    QTimer m_timer;
    QHash<QUuid, Waiting> m_waiting;
    QHash<QString, Registered> m_handlers; ///< host commands by name
};
