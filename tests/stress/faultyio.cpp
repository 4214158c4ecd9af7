#include "faultyio.h"

#include <QFileInfo>

#include <atomic>
#include <cerrno>
#include <dlfcn.h>
#include <mutex>
#include <sys/mman.h>
#include <sys/types.h>
#include <unistd.h>

namespace faultyio {

namespace {

std::mutex mutex;
std::atomic_bool isActive{false};
std::atomic_bool sharesMemory{true};
QByteArray recordedFolder;
QVector<Operation> operations;
QByteArray failingFolder;
int errorCode = 0;
int successesLeft = 0;
int failuresLeft = 0;
int failed = 0;

QByteArray folderPath(const QString &folder)
{
    return folder.isEmpty() ? QByteArray() : QFileInfo(folder).canonicalFilePath().toLocal8Bit() + '/';
}

void update()
{
    isActive = !recordedFolder.isEmpty() || !failingFolder.isEmpty();
}

QByteArray pathOf(int handle)
{
    char path[4096];
    const auto length = ::readlink(("/proc/self/fd/" + QByteArray::number(handle)).constData(), path, sizeof path);
    return length > 0 ? QByteArray(path, int(length)) : QByteArray();
}

bool isIn(const QByteArray &path, const QByteArray &folder)
{
    return !folder.isEmpty() && path.startsWith(folder) && !path.endsWith("-shm");
}

/// Whether the operation must fail; sets `errno`.
bool mustFail(int handle)
{
    if (!isActive)
        return false;
    const std::lock_guard lock(mutex);
    if (!isIn(pathOf(handle), failingFolder) || successesLeft-- > 0 || failuresLeft == 0)
        return false;
    failuresLeft = failuresLeft > 0 ? failuresLeft - 1 : failuresLeft;
    ++failed;
    errno = errorCode;
    return true;
}

void record(Operation::Kind kind, int handle, qint64 offset = 0, const QByteArray &bytes = {})
{
    if (!isActive)
        return;
    const std::lock_guard lock(mutex);
    const QByteArray path = pathOf(handle);
    if (isIn(path, recordedFolder))
        operations.append({kind, QString::fromLocal8Bit(path.mid(recordedFolder.size())), offset, bytes});
}

template <class Function> Function originalFunction(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

void startRecording(const QString &folder)
{
    const std::lock_guard lock(mutex);
    operations.clear();
    recordedFolder = folderPath(folder);
    update();
}

QVector<Operation> stopRecording()
{
    const std::lock_guard lock(mutex);
    recordedFolder.clear();
    update();
    return std::move(operations);
}

void mark(int number)
{
    const std::lock_guard lock(mutex);
    operations.append({Operation::Mark, {}, number, {}});
}

void fail(const QString &folder, int code, int successes, int failureCount)
{
    const std::lock_guard lock(mutex);
    failingFolder = folderPath(folder);
    errorCode = code;
    successesLeft = successes;
    failuresLeft = failureCount;
    failed = 0;
    update();
}

void refuseSharedMemory()
{
    sharesMemory = false;
}

void reset()
{
    sharesMemory = true;
    fail({}, 0, 0, 0);
}

int failures()
{
    const std::lock_guard lock(mutex);
    return failed;
}

} // namespace faultyio

#define REPLACES_C_LIBRARY extern "C" __attribute__((visibility("default")))

REPLACES_C_LIBRARY ssize_t pwrite64(int handle, const void *bytes, size_t size, off64_t offset)
{
    static const auto next = faultyio::originalFunction<ssize_t (*)(int, const void *, size_t, off64_t)>("pwrite64");
    if (faultyio::mustFail(handle))
        return -1;
    const ssize_t written = next(handle, bytes, size, offset);
    if (written > 0)
        faultyio::record(faultyio::Operation::Write, handle, offset,
                         QByteArray(static_cast<const char *>(bytes), int(written)));
    return written;
}

REPLACES_C_LIBRARY int ftruncate64(int handle, off64_t length)
{
    static const auto next = faultyio::originalFunction<int (*)(int, off64_t)>("ftruncate64");
    const int result = next(handle, length);
    if (result == 0)
        faultyio::record(faultyio::Operation::Truncate, handle, length);
    return result;
}

REPLACES_C_LIBRARY int fdatasync(int handle)
{
    static const auto next = faultyio::originalFunction<int (*)(int)>("fdatasync");
    if (faultyio::mustFail(handle))
        return -1;
    const int result = next(handle);
    if (result == 0)
        faultyio::record(faultyio::Operation::Sync, handle);
    return result;
}

REPLACES_C_LIBRARY void *mmap(void *address, size_t length, int protection, int flags, int handle, off_t offset)
{
    static const auto next = faultyio::originalFunction<decltype(&mmap)>("mmap");
    if (faultyio::sharesMemory || handle < 0 || (flags & MAP_SHARED) == 0)
        return next(address, length, protection, flags, handle, offset);
    errno = ENODEV;
    return MAP_FAILED;
}

REPLACES_C_LIBRARY void *mmap64(void *address, size_t length, int protection, int flags, int handle, off64_t offset)
{
    return mmap(address, length, protection, flags, handle, offset);
}
