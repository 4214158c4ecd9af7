#pragma once

#include "command.h"
#include "tqserverinterface_export.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

/// Passes requests to the store and commands between plug-ins. GUI thread only.
///
/// Each query has exactly one callback, on the GUI thread and never from inside the call: with the reply, or with code
/// 6 if there is no connection or no reply in time. The callback of a destroyed context is not called.
class TQSERVERINTERFACE_EXPORT TQServerInterface : public QObject
{
    Q_OBJECT

public:
    /// Receives a reply, or a host command to execute. The command is a copy.
    using Handler = std::function<void(Command &)>;
    /// Sends a request to the store.
    using Transport = std::function<void(const Command &)>;

    /// Not connected, without a transport.
    explicit TQServerInterface(QObject *parent = nullptr);
    ~TQServerInterface() override;

    /// Sets the function that sends requests to the store. It must not call `deliver` from inside the call.
    void setTransport(Transport transport);
    /// Sets the deadline of the requests sent from now on, in milliseconds (30,000 at first). Host commands have no
    /// deadline.
    void setDeadline(int milliseconds);

    /// Whether requests are sent to the store; false at first.
    [[nodiscard]] bool isConnected() const;
    /// Without a connection each query gets a reply with code 6 at once, but not from inside the call.
    void setConnected(bool connected);

    /// Sends \a command: a host command to the handler of its name (code 2 if there is none), any other to the
    /// transport. Sets a new identifier if there is none or if it is in use. \a reply is not called after the
    /// destruction of \a context.
    void sendQuery(Command command, QObject *context, Handler reply);
    /// Replies with code 6 to a \a command for which there is no server; asynchronously, unless \a context is
    /// destroyed.
    static void refuseQuery(const Command &command, QObject *context, const Handler &reply);
    /// Registers the handler of a host command until \a context is destroyed. A later one of the same type replaces it.
    void registerCommandHandler(const CommandType &type, QObject *context, Handler handler);
    /// Removes the handlers that were registered with \a context.
    void removeHandlers(const QObject *context);
    /// Replies to a host command from its handler. Without a reply from the handler, the sender gets a success.
    void sendReply(const Command &command);

signals:
    /// `isConnected` has changed to \a connected.
    void connectedChanged(bool connected);
    /// The reply to a request to the store is about to be delivered to its sender.
    void aboutToDeliverReply();
    /// The failed \a reply of the store has been delivered to its sender.
    void requestFailed(const Command &reply);
    /// A host command is about to be passed to its handler. The client shows the page of the handler now.
    void commandArrived(const QString &name);

public slots:
    /// Takes a reply from the transport. A reply without a waiting request is ignored.
    void deliver(const Command &reply);

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
    void replyLater(const Command &command, int result, const QString &text);
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
