#pragma once

#include <QMetaType>
#include <QString>

namespace store {

/// The purpose for which a store is opened.
enum class Access
{
    Read, ///< the store need not be writable, and it is not changed
    Write,
};

/// The location of a store: a file.
class StoreAddress
{
public:
    /// No store.
    StoreAddress() = default;

    /// The store in the file \a path; a relative path starts from the current folder.
    static StoreAddress file(const QString &path);

    /// Whether it is the address of no store.
    [[nodiscard]] bool isEmpty() const { return m_filePath.isEmpty(); }
    /// The absolute path of the file.
    [[nodiscard]] const QString &filePath() const { return m_filePath; }
    /// The text for the operator, such as in the status bar; `file()` accepts it.
    [[nodiscard]] QString toText() const;

    friend bool operator==(const StoreAddress &a, const StoreAddress &b) { return a.m_filePath == b.m_filePath; }

private:
    QString m_filePath;
};

} // namespace store

Q_DECLARE_METATYPE(store::StoreAddress)
