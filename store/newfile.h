#pragma once

#include "outcome.h"

#include <QCoreApplication>
#include <QStringList>

namespace store {

/// Creates a folder and its missing parents, accessible to their owner alone. An existing folder is not changed.
[[nodiscard]] Outcome makeFolder(const QString &path);

/// A file that appears complete or not at all: it is written under a temporary name in the same folder and renamed when
/// it is complete and on the disk. It never replaces an existing file.
class NewFile
{
    Q_DECLARE_TR_FUNCTIONS(store::NewFile)

public:
    /// A wildcard for the names of incomplete files.
    [[nodiscard]] static QString partialPattern();

    /// \a path is the final name; nothing is done yet. \a sideSuffixes are those of files that the writer may leave
    /// beside an incomplete file.
    explicit NewFile(const QString &path, const QStringList &sideSuffixes = {});
    /// Removes the file and the files beside it if it was not committed.
    ~NewFile();
    Q_DISABLE_COPY(NewFile)

    /// Creates the empty file under its temporary name, readable by its owner alone. Fails if the final name exists or
    /// its folder is missing.
    [[nodiscard]] Outcome create();
    /// The file to write into; it must be closed before `commit`.
    [[nodiscard]] const QString &partialPath() const { return m_partial; }
    /// Syncs the file to the disk and renames it.
    [[nodiscard]] Outcome commit();

    /// The outcome when \a path cannot be written; \a reason is the system's text.
    [[nodiscard]] static Outcome cannotWrite(const QString &path, const QString &reason);

private:
    [[nodiscard]] Outcome checkTarget() const;

    QString m_path;
    QString m_partial;
    QStringList m_sideSuffixes;
};

} // namespace store
