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

} // namespace support
