#include "tqserverinterface.h"

#include "tqdatastream.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

constexpr qint64 Never = std::numeric_limits<qint64>::max();

} // namespace

TQServerInterface::TQServerInterface(QObject *parent)
    : QObject(parent)
{
    m_clock.start();
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &TQServerInterface::checkDeadlines);
}

TQServerInterface::~TQServerInterface() = default;

void TQServerInterface::setTransport(Transport transport)
{
    m_transport = std::move(transport);
}

void TQServerInterface::setDeadline(int milliseconds)
{
    m_deadline = milliseconds;
}

bool TQServerInterface::isConnected() const
{
    return m_connected;
}

void TQServerInterface::setConnected(bool connected)
{
    if (m_connected == connected)
        return;
    m_connected = connected;
    emit connectedChanged(connected);
}

void TQServerInterface::sendQuery(Command command, QObject *context, Handler reply)
{
    const bool hostCommand = command.type().kind == HostCommandKind;
    if (command.id().isNull() || m_waiting.contains(command.id()))
        command.setId(QUuid::createUuid());
    // No deadline: a handler may keep a dialog open, and every handler is followed by a reply.
    const qint64 due = hostCommand ? Never : m_clock.elapsed() + m_deadline;
    m_waiting.insert(command.id(), {command, context, std::move(reply), due});
    restartTimer();

    if (hostCommand)
        dispatchToHandler(command);
    else if (m_connected && m_transport)
        m_transport(command);
    else
        replyLater(command, ResultNoConnection, tr("Нет связи с хранилищем данных."));
}

void TQServerInterface::refuseQuery(const Command &command, QObject *context, const Handler &reply)
{
    if (!context || !reply)
        return;
    Command answer = command;
    answer.setResult(ResultNoConnection);
    answer.setPayload(writePayload(tr("Нет связи с хранилищем данных.")));
    QMetaObject::invokeMethod(
        context, [answer, reply]() mutable { reply(answer); }, Qt::QueuedConnection);
}

void TQServerInterface::registerCommandHandler(const CommandType &type, QObject *context, Handler handler)
{
    m_handlers.insert(type.name, {context, std::move(handler)});
}

void TQServerInterface::removeHandlers(const QObject *context)
{
    for (auto it = m_handlers.begin(); it != m_handlers.end();)
        it = it->context == context ? m_handlers.erase(it) : std::next(it);
}

void TQServerInterface::sendReply(const Command &command)
{
    QMetaObject::invokeMethod(
        this, [this, command] { deliver(command); }, Qt::QueuedConnection);
}

void TQServerInterface::deliver(const Command &reply)
{
    const auto it = m_waiting.find(reply.id());
    if (it == m_waiting.end())
        return;
    const Waiting waiting = *it;
    m_waiting.erase(it);
    restartTimer();

    const bool isStoreRequest = waiting.command.type().kind != HostCommandKind;
    if (isStoreRequest)
        emit aboutToDeliverReply();
    if (waiting.context && waiting.reply) {
        Command answer = reply;
        waiting.reply(answer);
    }
    if (isStoreRequest && !reply.isSuccess())
        emit requestFailed(reply);
}

void TQServerInterface::dispatchToHandler(Command command)
{
    const auto registered = m_handlers.value(command.name());
    const auto call = [this, command, registered]() mutable {
        if (!registered.context || !registered.handler) {
            replyLater(command, ResultNotFound,
                       tr("В клиенте нет страницы, которая выполняет команду %1.").arg(command.name()));
            return;
        }
        emit commandArrived(command.name());
        registered.handler(command);
        // Queued after a reply of the handler, which is then delivered first.
        command.setResult(ResultSuccess);
        command.setPayload({});
        sendReply(command);
    };
    QMetaObject::invokeMethod(this, call, Qt::QueuedConnection);
}

void TQServerInterface::replyLater(const Command &command, int result, const QString &text)
{
    Command reply = command;
    reply.setResult(result);
    reply.setPayload(writePayload(text));
    sendReply(reply);
}

void TQServerInterface::checkDeadlines()
{
    const qint64 now = m_clock.elapsed();
    QList<Command> late;
    for (const auto &waiting : std::as_const(m_waiting)) {
        if (waiting.due <= now)
            late.append(waiting.command);
    }
    for (const Command &command : std::as_const(late)) {
        Command reply = command;
        reply.setResult(ResultNoConnection);
        reply.setPayload(writePayload(tr("Хранилище данных не ответило вовремя.")));
        deliver(reply);
    }
    restartTimer();
}

void TQServerInterface::restartTimer()
{
    const auto earlier = [](const Waiting &a, const Waiting &b) { return a.due < b.due; };
    const auto next = std::min_element(m_waiting.cbegin(), m_waiting.cend(), earlier);
    if (next == m_waiting.cend() || next->due == Never) {
        m_timer.stop();
        return;
    }
    const qint64 due = next->due;
    m_timer.start(int(qMax<qint64>(0, due - m_clock.elapsed())));
}
