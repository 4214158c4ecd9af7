#include "storeaddress.h"

#include <QDir>
#include <QFileInfo>

namespace store {

StoreAddress StoreAddress::file(const QString &path)
{
    StoreAddress address;
    if (!path.isEmpty())
        address.m_filePath = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    return address;
}

QString StoreAddress::toText() const
{
    return QDir::toNativeSeparators(m_filePath);
}

} // namespace store
