#include "scratchstore.h"

#include "target.h"

#include <QFileInfo>

ScratchStore::ScratchStore()
{
    renew();
}

void ScratchStore::renew()
{
    const QString memory = QStringLiteral("/dev/shm");
    database.close();
    m_folder = QFileInfo(memory).isWritable() ? std::make_unique<QTemporaryDir>(memory + QStringLiteral("/orvex-fuzz-"))
                                              : std::make_unique<QTemporaryDir>();
    const auto address = store::StoreAddress::file(m_folder->filePath(QStringLiteral("store.db")));
    fuzz::require(store::Database::create(address).ok() && database.open(address).ok(), "there is an empty store");
}
