#pragma once

#include "tqdatastream.h"

#include <QByteArray>
#include <QMetaType>
#include <QString>
#include <QUuid>

#include <utility>

/// Kind of a command between parts of the client ("show:scheduleview").
constexpr int HostCommandKind = 8;
/// Kind of a request to the store.
constexpr int StoreRequestKind = 1;

/// The type of a command: a kind and a name.
struct CommandType
{
    int kind = 0; ///< `HostCommandKind` or `StoreRequestKind`
    QString name; ///< "show:PAGE" for a host command, a name from requests.h for the store
};

/// Equal in kind and name.
inline bool operator==(const CommandType &a, const CommandType &b)
{
    return a.kind == b.kind && a.name == b.name;
}

/// Result of a request.
enum ResultCode : int
{
    ResultSuccess = 1,
    ResultNotFound = 2,
    ResultChangedMeanwhile = 3, ///< the record was changed by someone else after it was read
    ResultNoRights = 4,
    ResultInvalidData = 5,
    ResultNoConnection = 6, ///< no connection, or no reply in time
    ResultStorageError = 7,
};

/// A request or its reply: a name, a payload written with `TQDataStream`, and an identifier that both have. The payload
/// of a failed reply holds a `QString` for the log and, where it helps, a second one with advice for the operator.
class Command
{
public:
    /// Kind 0, no name, no identifier, `ResultSuccess`.
    Command() = default;
    explicit Command(CommandType type)
        : m_type(std::move(type))
    {
    }

    /// Kind and name.
    [[nodiscard]] const CommandType &type() const { return m_type; }
    /// The name of its type.
    [[nodiscard]] const QString &name() const { return m_type.name; }
    /// Keeps the kind.
    void setName(const QString &name) { m_type.name = name; }

    /// Identifier of the request. A request that is sent again keeps it, so that it is executed once.
    [[nodiscard]] const QUuid &id() const { return m_id; }
    /// `TQServerInterface::sendQuery` sets one if there is none.
    void setId(const QUuid &id) { m_id = id; }

    /// The client's session; empty for a host command.
    [[nodiscard]] const QString &sessionId() const { return m_sessionId; }
    /// Sent to the store with the request; it has no influence on the rights.
    void setSessionId(const QString &sessionId) { m_sessionId = sessionId; }

    /// Of a reply: a `ResultCode`. It has no meaning in a query.
    [[nodiscard]] int result() const { return m_result; }
    /// Any code but `ResultSuccess` is a failure.
    void setResult(int result) { m_result = result; }
    /// Whether the result is `ResultSuccess`.
    [[nodiscard]] bool isSuccess() const { return m_result == ResultSuccess; }

    /// The contents, see requests.h. Read with `readPayload`.
    [[nodiscard]] const QByteArray &payload() const { return m_payload; }
    /// The contents, writable.
    [[nodiscard]] QByteArray &payload() { return m_payload; }
    /// \a payload: written with `writePayload`.
    void setPayload(const QByteArray &payload) { m_payload = payload; }

private:
    CommandType m_type;
    QUuid m_id;
    QString m_sessionId;
    int m_result = ResultSuccess;
    QByteArray m_payload;
};

/// The text of a failed \a reply for the operator: what is wrong and, if known, what to do. Empty if the payload holds
/// no text.
[[nodiscard]] inline QString failureReason(const Command &reply)
{
    QString text;
    QString advice;
    if (readPayload(reply.payload(), text, advice))
        return text + QLatin1Char(' ') + advice;
    return readPayload(reply.payload(), text) ? text : QString();
}

Q_DECLARE_METATYPE(Command)
