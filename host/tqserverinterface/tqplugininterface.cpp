#include "tqplugininterface.h"

#include "tqserverinterface.h"

#include <QWidget>

TQPluginInterface::~TQPluginInterface() = default;

QList<CommandType> TQPluginInterface::init(TQServerInterface *server, const QString & /*name*/)
{
    m_server = server;
    return {};
}

void TQPluginInterface::uninit() { }

void TQPluginInterface::initOnExchangeReady() { }

QObject *TQPluginInterface::object()
{
    return widget();
}

QStringList TQPluginInterface::requireList()
{
    return {};
}

Command TQPluginInterface::newCommand() const
{
    Command command({HostCommandKind, {}});
    command.setId(QUuid::createUuid());
    return command;
}

void TQPluginInterface::sendQuery(const Command &command, Handler reply)
{
    if (m_server)
        m_server->sendQuery(command, object(), std::move(reply));
    else
        TQServerInterface::refuseQuery(command, object(), reply);
}

void TQPluginInterface::sendReply(const Command &command)
{
    if (m_server)
        m_server->sendReply(command);
}

TQServerInterface *TQPluginInterface::server() const
{
    return m_server;
}

void TQPluginInterface::registerCommandHandler(const CommandType &type, Handler handler)
{
    if (m_server)
        m_server->registerCommandHandler(type, object(), std::move(handler));
}
