#include "openfile.h"

#include <QDir>
#include <QFile>
#include <QtEndian>

#include <array>

#include <sys/stat.h>
#include <unistd.h>

namespace store {

void OpenFile::setPath(const QString &path)
{
    m_path = QFile::encodeName(path);
    struct stat status = {};
    const bool exists = stat(m_path.constData(), &status) == 0;
    m_device = exists ? status.st_dev : 0;
    m_inode = exists ? status.st_ino : 0;
}

bool OpenFile::isInPlace() const
{
    struct stat status = {};
    return stat(m_path.constData(), &status) == 0 && status.st_dev == m_device && status.st_ino == m_inode;
}

bool OpenFile::readHeader(Header &header) const
{
    if (readHeader(m_descriptor, header))
        return true;
    // By the engine's own descriptor: closing another one of the same file would end the locks that the process holds.
    const QDir descriptors(QStringLiteral("/proc/self/fd"));
    for (const QString &entry : descriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        m_descriptor = entry.toInt();
        if (readHeader(m_descriptor, header))
            return true;
    }
    return false;
}

bool OpenFile::readHeader(int descriptor, Header &header) const
{
    constexpr int WriteVersionAt = 18;
    constexpr int NumberAt = 60; // the "user version", which is the program's to use
    std::array<uchar, 64> bytes = {};
    // Looked at twice: another thread may close it meanwhile, and its number serve another file.
    if (!isOurs(descriptor) || pread(descriptor, bytes.data(), bytes.size(), 0) < 0 || !isOurs(descriptor))
        return false;
    header.keepsLog = bytes[WriteVersionAt] == 2;
    header.number = qFromBigEndian<quint32>(&bytes[NumberAt]);
    return true;
}

bool OpenFile::isOurs(int descriptor) const
{
    struct stat status = {};
    return fstat(descriptor, &status) == 0 && status.st_dev == m_device && status.st_ino == m_inode;
}

} // namespace store
