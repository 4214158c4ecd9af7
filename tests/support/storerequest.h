#pragma once

#include "command.h"
#include "requests.h"
#include "tqdatastream.h"

namespace support {

/// A request of the store under an identifier of its own.
[[nodiscard]] Command storeRequestWith(const QString &name, const QByteArray &payload);

template <class... T> [[nodiscard]] Command storeRequest(const QString &name, const T &...values)
{
    return storeRequestWith(name, writePayload(values...));
}

} // namespace support
