#include "tqplugininterface.h"

#include "tqdatastream.h"
#include "tqserverinterface.h"

#include <QCoreApplication>
#include <QWidget>

TQPluginInterface::~TQPluginInterface() = default;

QList<CommandType> TQPluginInterface::init(TQServerInterface *server, const QString &name)
{
    m_server = server;
    m_name = name;
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
    if (m_server) {
        m_server->sendQuery(command, object(), std::move(reply));
        return;
    }
    Command answer = command;
    answer.setResult(ResultNoConnection);
    answer.setPayload(writePayload(QCoreApplication::translate("TQPluginInterface", "Плагин не подключён к клиенту.")));
    QMetaObject::invokeMethod(
        object(), [answer, reply]() mutable { reply(answer); }, Qt::QueuedConnection);
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
