#include "newfile.h"

#include "latin1.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace store {

namespace {

constexpr QLatin1String PartialInfix = orvex::latin1(".partial-");

bool syncToDisk(const QString &path, int flags)
{
    const int handle = ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC);
    if (handle < 0)
        return false;
    const bool synced = ::fsync(handle) == 0;
    ::close(handle);
    return synced;
}

QString lastError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

bool makeFolders(const QString &path)
{
    constexpr QFile::Permissions owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    if (QFileInfo(path).isDir())
        return true;
    return makeFolders(QFileInfo(path).path()) && QDir().mkdir(path) && QFile::setPermissions(path, owner);
}

} // namespace

Outcome makeFolder(const QString &path)
{
    if (makeFolders(path))
        return {};
    return {ResultStorageError,
            QCoreApplication::translate("store::NewFile", "Не удалось создать папку %1.")
                .arg(QDir::toNativeSeparators(path)),
            QCoreApplication::translate("store::NewFile", "Проверьте права на запись или укажите другую папку.")};
}

QString NewFile::partialPattern()
{
    return QStringLiteral("*%1*").arg(PartialInfix);
}

NewFile::NewFile(const QString &path, const QStringList &sideSuffixes)
    : m_path(path)
    , m_partial(path + PartialInfix + QUuid::createUuid().toString(QUuid::WithoutBraces).left(8))
    , m_sideSuffixes(sideSuffixes)
{
}

NewFile::~NewFile()
{
    QFile::remove(m_partial);
    for (const QString &suffix : qAsConst(m_sideSuffixes))
        QFile::remove(m_partial + suffix);
}

Outcome NewFile::create()
{
    if (Outcome checked = checkTarget(); !checked.ok())
        return checked;
    QFile file(m_partial);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)
        || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        return cannotWrite(m_path, file.errorString());
    return {};
}

Outcome NewFile::checkTarget() const
{
    const QString folder = QFileInfo(m_path).path();
    if (!QFileInfo(folder).isDir()) {
        return {ResultNotFound, tr("Папки %1 нет.").arg(QDir::toNativeSeparators(folder)),
                tr("Создайте её или укажите другой файл.")};
    }
    if (QFileInfo::exists(m_path) || QFileInfo(m_path).isSymLink()) {
        return {ResultInvalidData, tr("Файл %1 уже есть, он не изменён.").arg(QDir::toNativeSeparators(m_path)),
                tr("Укажите имя файла, которого ещё нет.")};
    }
    return {};
}

Outcome NewFile::commit()
{
    if (!syncToDisk(m_partial, O_RDWR))
        return cannotWrite(m_path, lastError());
    // Fails if the name has been taken meanwhile.
    QFile file(m_partial);
    if (!file.rename(m_path))
        return cannotWrite(m_path, file.errorString());
    if (!syncToDisk(QFileInfo(m_path).path(), O_RDONLY | O_DIRECTORY))
        return cannotWrite(m_path, lastError());
    return {};
}

Outcome NewFile::cannotWrite(const QString &path, const QString &reason)
{
    return {ResultStorageError, tr("Файл %1 не удалось записать: %2.").arg(QDir::toNativeSeparators(path), reason),
            tr("Проверьте место на диске и права на папку.")};
}

} // namespace store
