#pragma once

#include "command.h"
#include "requests.h"
#include "tqdatastream.h"

#include <QUuid>

namespace support {

/// A request of the store under an identifier of its own.
template <class... T> [[nodiscard]] Command storeRequest(const QString &name, const T &...values)
{
    Command command({StoreRequestKind, name});
    command.setId(QUuid::createUuid());
    command.setPayload(writePayload(values...));
    return command;
}

/// Why a request was refused, and the advice.
[[nodiscard]] inline QString refusal(const Command &reply)
{
    QString text;
    QString advice;
    if (readPayload(reply.payload(), text, advice))
        return text + QLatin1Char(' ') + advice;
    return readPayload(reply.payload(), text) ? text : QString();
}

} // namespace support
