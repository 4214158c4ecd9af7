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

/// What the client asks of every plug-in. The order of the virtual operations is part of the contract.
class TQSERVERINTERFACE_EXPORT TQPluginInterface
{
public:
    using Handler = std::function<void(Command &)>;

    /// What the plug-in has registered goes with its `object()`.
    virtual ~TQPluginInterface();

    /// Called once after loading. \a name is the plug-in's name in this client. Returns the command types that the
    /// plug-in handles; this base keeps both arguments and returns an empty list. The client keeps owning \a server.
    virtual QList<CommandType> init(TQServerInterface *server, const QString &name);
    /// Called before the plug-in is unloaded.
    virtual void uninit();
    /// Called when the connection to the store stands for the first time.
    virtual void initOnExchangeReady();
    /// The name that other plug-ins and host commands know it by ("scheduleview"); two of one name are not loaded.
    [[nodiscard]] virtual QString pluginName() const = 0;
    /// Version: the upper 16 bits count the major ones.
    [[nodiscard]] virtual quint32 pluginVersion() const = 0;
    /// Version and build as a person reads them.
    [[nodiscard]] virtual QString pluginBuild() const = 0;
    /// The plug-in's page; null for a plug-in without one. Owned by the plug-in until the client has inserted it.
    virtual QWidget *widget() = 0;
    /// The object whose life bounds the plug-in's callbacks; the page unless overridden.
    virtual QObject *object();
    /// Names of plug-ins that must be initialised before this one.
    [[nodiscard]] virtual QStringList requireList();

    /// A new host command with an identifier of its own.
    [[nodiscard]] Command newCommand() const;
    /// Sends a query; \a reply is called once on the GUI thread, later, unless `object()` has died.
    void sendQuery(const Command &command, Handler reply);
    /// Answers a host command that was handed to one of this plug-in's handlers; the first answer counts.
    void sendReply(const Command &command);

    /// What `init` was given; null before it and once the client is gone.
    [[nodiscard]] TQServerInterface *server() const;

protected:
    /// Has host commands of \a type handed to \a handler while `object()` lives. Without effect before `init`.
    void registerCommandHandler(const CommandType &type, Handler handler);

private:
    QPointer<TQServerInterface> m_server;
    QString m_name;
};

Q_DECLARE_INTERFACE(TQPluginInterface, "orvex.TQPluginInterface/1")
