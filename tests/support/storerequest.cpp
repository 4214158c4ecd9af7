#include "storerequest.h"

#include <QUuid>

namespace support {

Command storeRequestWith(const QString &name, const QByteArray &payload)
{
    Command command({StoreRequestKind, name});
    command.setId(QUuid::createUuid());
    command.setPayload(payload);
    return command;
}

} // namespace support
