#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

#include <sys/types.h>

namespace store {

/// The file that the embedded engine has open, read without the engine, which does not detect that other programs
/// write into its file.
class OpenFile
{
public:
    /// Part of the first bytes (https://www.sqlite.org/fileformat.html#the_database_header).
    struct Header
    {
        bool usesLog = false; ///< the file has been written with a write-ahead log
        quint32 generation = 0; ///< begins at random and grows by one with each commit; 0: not assigned yet
    };

    /// Remembers the file at \a path, which the engine is about to open.
    void setPath(const QString &path);
    /// Whether the path still refers to that file.
    [[nodiscard]] bool isInPlace() const;
    /// The header that is in the file; all zeros if the file has been cut off. False if it cannot be read.
    [[nodiscard]] bool readHeader(Header &header) const;
    /// The generation of the first commit in the log at \a path; none if it cannot be determined.
    [[nodiscard]] static std::optional<quint32> firstGenerationInLog(const QString &path);

private:
    [[nodiscard]] bool readHeader(int descriptor, Header &header) const;
    [[nodiscard]] bool isSameFile(int descriptor) const;

    QByteArray m_path;
    dev_t m_device = 0;
    ino_t m_inode = 0;
    mutable int m_descriptor = -1; ///< the last one found for this file
};

} // namespace store
