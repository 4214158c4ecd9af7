#pragma once

#include "tqdatastream.h"

#include <QByteArray>
#include <QMetaType>
#include <QString>
#include <QUuid>

/// Kind of a command that one part of the client sends to another ("show:scheduleview").
constexpr int HostCommandKind = 8;
/// Kind of a request to the store.
constexpr int StoreRequestKind = 1;

/// What a handler handles: a kind and a name.
struct CommandType
{
    int kind = 0; ///< `HostCommandKind` or `StoreRequestKind`
    QString name; ///< "show:PAGE" of a host command, one of requests.h for the store
};

/// Equal in kind and name.
inline bool operator==(const CommandType &a, const CommandType &b)
{
    return a.kind == b.kind && a.name == b.name;
}

/// Outcome of a request.
enum ResultCode : int
{
    ResultSuccess = 1,
    ResultNotFound = 2,
    ResultChangedMeanwhile = 3, ///< somebody else changed the record since it was read
    ResultNoRights = 4,
    ResultInvalidData = 5,
    ResultNoConnection = 6, ///< no connection, or no answer in time
    ResultStorageError = 7,
};

/// A request or its reply: a name, a payload written with `TQDataStream`, and an identifier that both share. The
/// payload of a failed reply holds one `QString` for the log and, where it helps, a second one with what the operator
/// can do.
class Command
{
public:
    /// Without name and identifier, of no kind; the result is success.
    Command() = default;
    explicit Command(CommandType type)
        : m_type(std::move(type))
    {
    }

    /// What it asks for.
    [[nodiscard]] const CommandType &type() const { return m_type; }
    /// The name of its type.
    [[nodiscard]] const QString &name() const { return m_type.name; }
    /// Changes the name and keeps the kind.
    void setName(const QString &name) { m_type.name = name; }

    /// Identifier of the request. A request that is sent again keeps it, so that it is done once.
    [[nodiscard]] const QUuid &id() const { return m_id; }
    /// The switchboard gives one to a query without.
    void setId(const QUuid &id) { m_id = id; }

    /// The session that it belongs to; empty for a host command.
    [[nodiscard]] const QString &sessionId() const { return m_sessionId; }
    /// Told to the store with the request; it decides nothing.
    void setSessionId(const QString &sessionId) { m_sessionId = sessionId; }

    /// Of a reply: a `ResultCode`. A query's says nothing.
    [[nodiscard]] int result() const { return m_result; }
    /// Any code but `ResultSuccess` is a failure.
    void setResult(int result) { m_result = result; }
    /// Whether the reply tells of success.
    [[nodiscard]] bool isSuccess() const { return m_result == ResultSuccess; }

    /// What the request or its reply carries; see requests.h. Read with `readPayload`.
    [[nodiscard]] const QByteArray &payload() const { return m_payload; }
    /// To be written into.
    [[nodiscard]] QByteArray &payload() { return m_payload; }
    /// Replaces it; made with `writePayload`.
    void setPayload(const QByteArray &payload) { m_payload = payload; }

private:
    CommandType m_type;
    QUuid m_id;
    QString m_sessionId;
    int m_result = ResultSuccess;
    QByteArray m_payload;
};

/// What a failed \a reply tells an operator: what is wrong, and where it is known, what to do. Empty when the payload
/// holds no text.
[[nodiscard]] inline QString failureReason(const Command &reply)
{
    QString text;
    QString advice;
    if (readPayload(reply.payload(), text, advice))
        return text + QLatin1Char(' ') + advice;
    return readPayload(reply.payload(), text) ? text : QString();
}

Q_DECLARE_METATYPE(Command)
