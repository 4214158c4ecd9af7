#pragma once

#include "command.h"
#include "tqserverinterface_export.h"

#include <QList>
#include <QPointer>
#include <QStringList>

#include <functional>

class QObject;
class QWidget;
class TQServerInterface;

/// The interface of a plug-in. The order of the virtual functions is part of the contract.
class TQSERVERINTERFACE_EXPORT TQPluginInterface
{
public:
    using Handler = std::function<void(Command &)>;

    /// The plug-in's handlers are removed when its `object()` is destroyed.
    virtual ~TQPluginInterface();

    /// Called once after loading. \a name is the plug-in's name in this client. Returns the command types that the
    /// plug-in handles. This base stores \a server, which the client owns, and returns an empty list.
    virtual QList<CommandType> init(TQServerInterface *server, const QString &name);
    /// Called before the plug-in is unloaded.
    virtual void uninit();
    /// Called once, when the connection to the store is established and the page is in the window.
    virtual void initOnExchangeReady();
    /// The name in other plug-ins and host commands ("scheduleview"). A second plug-in of the same name is not loaded.
    [[nodiscard]] virtual QString pluginName() const = 0;
    /// The version; the upper 16 bits are the major version.
    [[nodiscard]] virtual quint32 pluginVersion() const = 0;
    /// Version and build as display text.
    [[nodiscard]] virtual QString pluginBuild() const = 0;
    /// The plug-in's page; null if it has none. The client takes ownership when it inserts the page.
    virtual QWidget *widget() = 0;
    /// The context of the plug-in's callbacks: none is called after its destruction. The page unless overridden.
    virtual QObject *object();
    /// Names of the plug-ins that must be initialised before this one.
    [[nodiscard]] virtual QStringList requireList();

    /// A new host command with a new identifier.
    [[nodiscard]] Command newCommand() const;
    /// Sends a query. \a reply is called once, asynchronously, on the GUI thread, unless `object()` is destroyed
    /// before.
    void sendQuery(const Command &command, Handler reply);
    /// Replies to a host command from one of this plug-in's handlers. Only the first reply is delivered.
    void sendReply(const Command &command);

    /// The server that was passed to `init`; null before `init` and after the server's destruction.
    [[nodiscard]] TQServerInterface *server() const;

protected:
    /// Registers \a handler for host commands of \a type until `object()` is destroyed. Does nothing before `init`.
    void registerCommandHandler(const CommandType &type, Handler handler);

private:
    QPointer<TQServerInterface> m_server;
};

Q_DECLARE_INTERFACE(TQPluginInterface, "orvex.TQPluginInterface/1")
