#pragma once

#include <QMetaType>
#include <QString>

namespace store {

/// What a store is opened for.
enum class Access
{
    Read, ///< it need not be writable and is not changed
    Write,
};

/// Where a store is: a value. Today a file of the embedded engine.
class StoreAddress
{
public:
    /// No store.
    StoreAddress() = default;

    /// The store in the file \a path; a relative path is taken from the current folder.
    static StoreAddress file(const QString &path);

    /// Whether it names no store.
    [[nodiscard]] bool isEmpty() const { return m_filePath.isEmpty(); }
    /// The absolute path of the file.
    [[nodiscard]] const QString &filePath() const { return m_filePath; }
    /// What a person reads, such as in the state bar; `file()` reads it back.
    [[nodiscard]] QString toText() const;

    friend bool operator==(const StoreAddress &a, const StoreAddress &b) { return a.m_filePath == b.m_filePath; }

private:
    QString m_filePath;
};

} // namespace store

Q_DECLARE_METATYPE(store::StoreAddress)
