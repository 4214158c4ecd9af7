#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// Records the writes and syncs of the database engine, or makes them fail. In a program with exported symbols, these
/// functions replace those of the C library for every library of the process.
namespace faultyio {

struct Operation
{
    enum Kind
    {
        Write,
        Truncate, ///< to the length `offset`
        Sync, ///< everything written to the file before is on the disk
        Mark, ///< the request number `offset` has been acknowledged
    };
    Kind kind = Write;
    QString file; ///< name without its folder
    qint64 offset = 0;
    QByteArray bytes;
};

/// Records the operations on the files in \a folder until `stopRecording`, except for shared memory, which is not
/// stored on the disk.
void startRecording(const QString &folder);
[[nodiscard]] QVector<Operation> stopRecording();
void mark(int number);

/// Makes writes and syncs on the files in \a folder fail with the system error \a code (`ENOSPC`, `EIO`): after
/// \a successes that succeed, \a failureCount fail, and later ones succeed again. A negative \a failureCount means all
/// until `reset`.
void fail(const QString &folder, int code, int successes, int failureCount);
/// Makes it impossible to share memory through files until `reset`, as on a network folder.
void refuseSharedMemory();
/// Ends all faults.
void reset();
/// The number of operations that have failed since `fail`.
[[nodiscard]] int failures();

} // namespace faultyio
