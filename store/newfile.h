#pragma once

#include "outcome.h"

#include <QCoreApplication>

namespace store {

/// Makes a folder with the missing ones above it, for their owner alone; one that is there stays as it is.
[[nodiscard]] Outcome makeFolder(const QString &path);

/// A file that comes into being whole or not at all: it is written under another name in the same folder and gets its
/// own when it is complete and on the disk. It never takes the place of a file that is there.
class NewFile
{
    Q_DECLARE_TR_FUNCTIONS(store::NewFile)

public:
    /// \a path is the name that the file gets in the end. Nothing is done yet.
    explicit NewFile(const QString &path);
    /// Removes what was not committed.
    ~NewFile();
    Q_DISABLE_COPY(NewFile)

    /// Makes the empty file under its other name, readable by its owner alone. Refused where \a path is taken or its
    /// folder is missing.
    [[nodiscard]] Outcome create();
    /// Like `create`, for who makes the file under `partialPath()` by itself.
    [[nodiscard]] Outcome prepare();
    /// What to write into; closed before `commit`.
    [[nodiscard]] const QString &partialPath() const { return m_partial; }
    /// Brings what was written to the disk and gives it its name.
    [[nodiscard]] Outcome commit();

    /// That \a path could not be written, and why.
    [[nodiscard]] static Outcome cannotWrite(const QString &path, const QString &reason);

private:
    QString m_path;
    QString m_partial;
};

} // namespace store
