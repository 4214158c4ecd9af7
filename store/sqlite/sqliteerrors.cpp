#include "sqliteerrors.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QTemporaryFile>

#include <sys/mman.h>

namespace store {

namespace {

/// Whether programs can share memory through files of a folder; true if this cannot be tested.
bool sharesMemory(const QString &folder)
{
    constexpr int Page = 4096;
    QTemporaryFile file(folder + QStringLiteral("/shared-XXXXXX"));
    if (!file.open() || !file.resize(Page))
        return true;
    void *memory = mmap(nullptr, Page, PROT_READ | PROT_WRITE, MAP_SHARED, file.handle(), 0);
    return memory != MAP_FAILED && munmap(memory, Page) == 0;
}

} // namespace

int SqliteErrors::code(const QSqlError &error)
{
    return error.nativeErrorCode().toInt() & 0xff;
}

Outcome SqliteErrors::classify(const QSqlError &error)
{
    switch (code(error)) {
    case SqliteBusy:
    case SqliteLocked:
        return {ResultNoConnection, tr("Хранилище данных занято другой программой."), tr("Повторите действие позже.")};
    case SqliteConstraint:
        return {ResultInvalidData, tr("Хранилище не приняло данные: %1.").arg(error.databaseText()), {}};
    case SqliteFull:
        return {ResultStorageError, tr("На диске нет места для хранилища данных."),
                tr("Освободите место и повторите действие.")};
    case SqliteIoError:
        return {ResultStorageError, tr("Диск с хранилищем данных отвечает ошибкой."),
                tr("Проверьте диск и повторите действие.")};
    case SqliteReadOnly:
        return {ResultStorageError, tr("Хранилище данных доступно только для чтения."),
                tr("Проверьте права на запись в файл и в его папку.")};
    case SqliteCorrupt:
    case SqliteNotADatabase:
        return {ResultStorageError, tr("Хранилище данных повреждено."), tr("Восстановите его из резервной копии.")};
    default:
        return {ResultStorageError, tr("Ошибка хранилища данных: %1.").arg(error.databaseText()), {}};
    }
}

Outcome SqliteErrors::notAStore(const QString &path)
{
    return {ResultInvalidData, tr("Файл %1 – не хранилище данных этой программы.").arg(QDir::toNativeSeparators(path)),
            tr("Укажите другой файл. Этот файл не изменён.")};
}

Outcome SqliteErrors::unsuitableDisk(const QString &path)
{
    return {ResultStorageError,
            tr("Диск, на котором лежит хранилище %1, не годится для него: на нём нельзя вести журнал изменений.")
                .arg(QDir::toNativeSeparators(path)),
            tr("Перенесите хранилище на диск этого компьютера.")};
}

Outcome SqliteErrors::foreignLog(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    return {ResultInvalidData,
            tr("Рядом с файлом %1 лежит журнал другого хранилища.").arg(QDir::toNativeSeparators(path)),
            tr("Файл не изменён. Закройте программы, которые с ним работают, уберите из папки файлы %1-wal и %1-shm и "
               "откройте хранилище снова.")
                .arg(name)};
}

Outcome SqliteErrors::cannotOpen(const QString &path, const QSqlError &error)
{
    // Qt reports only the engine's primary code, which is the same for this cause and for a disk fault.
    if (code(error) == SqliteIoError && !sharesMemory(QFileInfo(path).path()))
        return unsuitableDisk(path);
    const QString name = QDir::toNativeSeparators(path);
    switch (code(error)) {
    case SqliteNotADatabase:
        return notAStore(path);
    case SqliteCorrupt:
        return {ResultStorageError, tr("Файл хранилища %1 повреждён.").arg(name),
                tr("Восстановите его из резервной копии.")};
    case SqliteReadOnly:
        return {ResultStorageError, tr("Файл хранилища %1 или его папка доступны только для чтения.").arg(name),
                tr("Дайте право на запись или укажите другой файл.")};
    case SqliteBusy:
    case SqliteLocked:
        return {ResultNoConnection, tr("Файл хранилища %1 занят другой программой.").arg(name),
                tr("Закройте её или повторите попытку позже.")};
    default:
        return {ResultStorageError, tr("Файл хранилища %1 не удалось открыть: %2.").arg(name, error.databaseText()),
                tr("Проверьте диск и права на файл и на его папку.")};
    }
}

} // namespace store
