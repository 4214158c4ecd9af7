#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

#include <sys/types.h>

namespace store {

/// The file that the embedded engine has open, looked at beside the engine: what others do to a file, the engine takes
/// for its own.
class OpenFile
{
public:
    /// What stands in the first bytes (https://www.sqlite.org/fileformat.html#the_database_header).
    struct Header
    {
        bool keepsLog = false; ///< it has been written with a write-ahead log since it was made
        quint32 number = 0; ///< of this very file, one more with everything written; 0: it has none yet
    };

    /// Takes the file to which \a path leads for the one that the engine opens right after this.
    void setPath(const QString &path);
    /// Whether the path still leads to it.
    [[nodiscard]] bool isInPlace() const;
    /// The header as it lies in the file; that of a cut-off file is all zeros. False where nobody can tell.
    [[nodiscard]] bool readHeader(Header &header) const;
    /// The number that the file had after the first thing that the log at \a path holds; none where nobody can tell.
    [[nodiscard]] static std::optional<quint32> firstNumberInLog(const QString &path);

private:
    [[nodiscard]] bool readHeader(int descriptor, Header &header) const;
    [[nodiscard]] bool isOurs(int descriptor) const;

    QByteArray m_path;
    dev_t m_device = 0;
    ino_t m_inode = 0;
    mutable int m_descriptor = -1; ///< that last was one of this file
};

} // namespace store
