#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// The disk between this program and the store: the engine's writes and syncs pass through here, are recorded, or fail.
/// Linked into a program with exported symbols, it stands before the C library for every library of the process.
namespace faultyio {

struct Operation
{
    enum Kind
    {
        Write,
        Truncate, ///< to the length `offset`
        Sync, ///< whatever was written to the file is on the disk from now on
        Mark, ///< the program has been told that its request number `offset` is done
    };
    Kind kind = Write;
    QString file; ///< name without its folder
    qint64 offset = 0;
    QByteArray bytes;
};

/// Records what happens to the files of \a folder until `stopRecording`, apart from the shared memory, which no disk
/// keeps.
void startRecording(const QString &folder);
[[nodiscard]] QVector<Operation> stopRecording();
void mark(int number);

/// Lets \a good writes and syncs on the files of \a folder pass, then fails the next \a bad ones with the system's
/// error \a code (`ENOSPC`, `EIO`), then lets them pass again. A negative \a bad fails them all until `heal`.
void fail(const QString &folder, int code, int good, int bad);
/// As on a network folder: no memory can be shared over the files of this process until `heal`.
void refuseSharedMemory();
void heal();
/// How many operations have failed since `fail`.
[[nodiscard]] int failures();

} // namespace faultyio
