#include "openfile.h"

#include <QDir>
#include <QFile>
#include <QtEndian>

#include <array>

#include <sys/stat.h>
#include <unistd.h>

namespace store {

namespace {

constexpr int GenerationAt = 60; // the "user version", which is free for programs to use

quint32 bigEndian(const QByteArray &bytes, int at)
{
    return qFromBigEndian<quint32>(bytes.constData() + at);
}

/// The running checksum of a log (https://www.sqlite.org/fileformat.html#checksum_algorithm).
class LogChecksum
{
public:
    explicit LogChecksum(bool isBigEndian)
        : m_isBigEndian(isBigEndian)
    {
    }

    void add(const QByteArray &bytes, int from, int size)
    {
        for (int at = from; at < from + size; at += 8) {
            m_first += word(bytes, at) + m_second;
            m_second += word(bytes, at + 4) + m_first;
        }
    }

    [[nodiscard]] bool matches(const QByteArray &bytes, int at) const
    {
        return bigEndian(bytes, at) == m_first && bigEndian(bytes, at + 4) == m_second;
    }

private:
    [[nodiscard]] quint32 word(const QByteArray &bytes, int at) const
    {
        return m_isBigEndian ? bigEndian(bytes, at) : qFromLittleEndian<quint32>(bytes.constData() + at);
    }

    bool m_isBigEndian;
    quint32 m_first = 0;
    quint32 m_second = 0;
};

} // namespace

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
    // Through the engine's own descriptor: closing another descriptor of the file would release the process's locks.
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
    std::array<uchar, 64> bytes = {};
    // Checked before and after: another thread may close the descriptor, and its number be reused for another file.
    if (!isSameFile(descriptor) || pread(descriptor, bytes.data(), bytes.size(), 0) < 0 || !isSameFile(descriptor))
        return false;
    header.usesLog = bytes[WriteVersionAt] == 2;
    header.generation = qFromBigEndian<quint32>(&bytes[GenerationAt]);
    return true;
}

std::optional<quint32> OpenFile::firstGenerationInLog(const QString &path)
{
    constexpr int HeadSize = 32; // magic, version, page size, sequence, two salts, two checksums
    constexpr int FrameHeadSize = 24; // page, size of the file, two salts, two checksums
    constexpr quint32 Magic = 0x377f0682; // one more if the checksums are big-endian
    QFile log(path);
    if (!log.open(QIODevice::ReadOnly))
        return {};
    const QByteArray head = log.read(HeadSize);
    if (head.size() != HeadSize || (bigEndian(head, 0) & ~1U) != Magic)
        return {};
    LogChecksum checksum(bigEndian(head, 0) != Magic);
    checksum.add(head, 0, 24);
    const int pageSize = int(bigEndian(head, 8));
    if (!checksum.matches(head, 24) || pageSize < 512 || pageSize > 65536)
        return {};
    while (true) {
        // After the last valid frame there may be remains of older logs or an incomplete frame.
        const QByteArray frame = log.read(FrameHeadSize + pageSize);
        if (frame.size() != FrameHeadSize + pageSize || frame.mid(8, 8) != head.mid(16, 8))
            return {};
        checksum.add(frame, 0, 8);
        checksum.add(frame, FrameHeadSize, pageSize);
        if (!checksum.matches(frame, 16))
            return {};
        if (bigEndian(frame, 0) == 1)
            return bigEndian(frame, FrameHeadSize + GenerationAt);
    }
}

bool OpenFile::isSameFile(int descriptor) const
{
    struct stat status = {};
    return fstat(descriptor, &status) == 0 && status.st_dev == m_device && status.st_ino == m_inode;
}

} // namespace store
