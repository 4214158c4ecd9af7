#include "sqlitedriver.h"

#include "engines.h"
#include "log.h"
#include "newfile.h"
#include "sqliteerrors.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSqlError>
#include <QUrl>
#include <QUuid>
#include <QVariant>

#include <limits>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace store {

namespace {

constexpr int ApplicationId = 0x4F727678;
constexpr int BusyTimeout = 5000; // ms
const QLatin1String LogSuffix("-wal");
const QLatin1String SharedMemorySuffix("-shm");
const QLatin1String Generation("PRAGMA user_version"); // see OpenFile::Header
const QLatin1String Checkpoint("PRAGMA wal_checkpoint(TRUNCATE)"); // answers 1 if another connection prevents it

void registerEngine()
{
    engines::add([](const StoreAddress &) -> std::unique_ptr<Driver> { return std::make_unique<SqliteDriver>(); });
}
Q_CONSTRUCTOR_FUNCTION(registerEngine)

/// The suffixes of the files that the engine may leave beside its own.
QStringList sideSuffixes()
{
    return {LogSuffix, SharedMemorySuffix, QStringLiteral("-journal")};
}

bool isWritable(const QString &path)
{
    return faccessat(AT_FDCWD, QFile::encodeName(path).constData(), W_OK, AT_EACCESS) == 0;
}

QString loginOfProcess()
{
    const uid_t user = geteuid();
    const passwd *entry = getpwuid(user);
    return entry ? QString::fromLocal8Bit(entry->pw_name) : QString::number(user);
}

} // namespace

SqliteDriver::SqliteDriver() = default;

SqliteDriver::~SqliteDriver()
{
    close();
}

QString SqliteDriver::engine() const
{
    return QStringLiteral("sqlite");
}

Outcome SqliteDriver::create(const StoreAddress &address)
{
    if (Outcome made = makeFolder(QFileInfo(address.filePath()).path()); !made.ok())
        return made;
    return createFilled(address, [](const StoreAddress &) { return Outcome(); });
}

Outcome SqliteDriver::createFilled(const StoreAddress &address, const Fill &fill)
{
    NewFile file(address.filePath(), sideSuffixes());
    const auto unfinished = StoreAddress::file(file.partialPath());
    Outcome outcome = file.create();
    if (outcome.ok())
        outcome = connectToFile(unfinished, Access::Write);
    if (outcome.ok())
        outcome = applySteps(unfinished, 0);
    if (outcome.ok())
        outcome = checkIsWritable();
    close();
    if (outcome.ok())
        outcome = fill(unfinished);
    if (outcome.ok())
        outcome = writeLogBack(unfinished, address);
    return outcome.ok() ? file.commit() : outcome;
}

Outcome SqliteDriver::writeLogBack(const StoreAddress &unfinished, const StoreAddress &target)
{
    Outcome outcome = connectToFile(unfinished, Access::Write);
    if (!outcome.ok())
        return outcome;
    // Closing writes the log into the file as well, but ignores a full disk.
    int isBusy = 0;
    const QSqlError error = readNumber(Checkpoint, isBusy);
    close();
    if (error.isValid() || isBusy != 0)
        return NewFile::cannotWrite(target.filePath(), error.databaseText());
    return {};
}

Outcome SqliteDriver::copyTo(const QString &target)
{
    NewFile file(target, sideSuffixes());
    if (Outcome created = file.create(); !created.ok())
        return created;
    QSqlQuery copy(m_database);
    const bool copied = copy.prepare(QStringLiteral("VACUUM INTO :target"))
        && (copy.bindValue(QStringLiteral(":target"), file.partialPath()), copy.exec());
    if (!copied) {
        const QSqlError error = copy.lastError();
        const bool isTargetsFault =
            SqliteErrors::code(error) == SqliteFull || SqliteErrors::code(error) == SqliteIoError;
        return isTargetsFault ? NewFile::cannotWrite(target, error.databaseText())
                              : SqliteErrors::cannotOpen(m_path, error);
    }
    copy.finish();
    return file.commit();
}

Outcome SqliteDriver::finishOpening(Access access)
{
    if (access == Access::Write) {
        restrictPermissions();
        if (Outcome checked = checkIsWritable(); !checked.ok())
            return checked;
        rememberHeader();
    }
    m_dataVersion = std::make_unique<QSqlQuery>(m_database);
    m_dataVersion->setForwardOnly(true);
    if (!m_dataVersion->prepare(QStringLiteral("PRAGMA data_version")))
        return SqliteErrors::cannotOpen(m_path, m_dataVersion->lastError());
    (void)somethingChanged();
    return {};
}

void SqliteDriver::close()
{
    m_dataVersion.reset();
    if (m_connectionName.isEmpty())
        return;
    if (m_database.isOpen())
        flushOrDiscardLog();
    m_watchesHeader = false;
    m_database = {};
    QSqlDatabase::removeDatabase(m_connectionName);
    m_connectionName.clear();
}

void SqliteDriver::flushOrDiscardLog()
{
    if (isOverwritten()) {
        // The contents that the log belongs to no longer exist. Without a log the engine writes nothing on closing.
        if (truncate(QFile::encodeName(m_realPath + LogSuffix).constData(), 0) != 0)
            qCWarning(storeLog) << "the log of an overwritten file cannot be emptied:" << m_realPath;
    } else if (!m_file.isInPlace()) {
        // The file has been moved: the log is written into it, so that it is complete wherever it is.
        int isBusy = 0;
        const QSqlError error = readNumber(Checkpoint, isBusy);
        if (error.isValid() || isBusy != 0)
            qCWarning(storeLog) << "the log of a moved file cannot be written into it:" << error.databaseText();
    }
}

bool SqliteDriver::isAlive() const
{
    return m_database.isOpen() && m_file.isInPlace() && !isOverwritten();
}

bool SqliteDriver::isOverwritten() const
{
    OpenFile::Header header;
    if (!m_watchesHeader || !m_file.readHeader(header))
        return false;
    if (!header.usesLog)
        return true;
    if (header.generation == m_generationInFile)
        return false;
    int current = 0;
    if (readNumber(Generation, current).isValid())
        return false;
    // A checkpoint raises the generation in the file, at most to the one that the engine sees. Unsigned differences
    // are right even if the number has wrapped around.
    if (header.generation - m_generationInFile > quint32(current) - m_generationInFile) {
        // Read again: the engine may have been writing these bytes.
        OpenFile::Header again;
        return m_file.readHeader(again) && again.generation == header.generation;
    }
    m_generationInFile = header.generation;
    return false;
}

QSqlError SqliteDriver::begin(Transaction kind)
{
    m_writes = kind == Transaction::Write;
    // The driver's own transaction() is deferred: two writers that read first would both fail.
    return run(kind == Transaction::Write ? QStringLiteral("BEGIN IMMEDIATE") : QStringLiteral("BEGIN"));
}

QSqlError SqliteDriver::commit()
{
    const QSqlError error = m_writes ? incrementGeneration() : QSqlError();
    return error.isValid() ? error : run(QStringLiteral("COMMIT"));
}

/// An older copy that is written into the file has a smaller generation.
QSqlError SqliteDriver::incrementGeneration()
{
    int generation = 0;
    QSqlError error = readNumber(Generation, generation);
    if (error.isValid() || generation == 0)
        return error;
    return run(Generation + QStringLiteral(" = %1").arg(int(quint32(generation) + 1)));
}

void SqliteDriver::rollback()
{
    // After some failures the engine has already rolled back and this statement fails.
    (void)run(QStringLiteral("ROLLBACK"));
}

Outcome SqliteDriver::classify(const QSqlError &error) const
{
    return SqliteErrors::classify(error);
}

bool SqliteDriver::losesConnection(const QSqlError &error) const
{
    switch (SqliteErrors::code(error)) {
    case SqliteIoError:
    case SqliteCorrupt:
    case SqliteCantOpen:
    case SqliteNotADatabase:
        return true;
    default:
        return !isAlive();
    }
}

Outcome SqliteDriver::findDamage(QStringList &damage)
{
    QSqlQuery check(m_database);
    check.setForwardOnly(true);
    const bool read = check.exec(QStringLiteral("PRAGMA integrity_check(100)"));
    while (read && check.next()) {
        for (const QString &line : check.value(0).toString().split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            if (line != QLatin1String("ok") && !line.startsWith(QLatin1String("***")))
                damage.append(line);
        }
    }
    const QSqlError error = check.lastError();
    if (!error.isValid())
        return {};
    if (SqliteErrors::code(error) != SqliteCorrupt && SqliteErrors::code(error) != SqliteNotADatabase)
        return classify(error);
    damage.append(error.databaseText());
    return {};
}

bool SqliteDriver::somethingChanged()
{
    int version = m_lastDataVersion;
    // A failure counts as a change: the query that follows reports the reason.
    const bool read = m_dataVersion && m_dataVersion->exec() && m_dataVersion->next();
    if (read)
        version = m_dataVersion->value(0).toInt();
    if (m_dataVersion)
        m_dataVersion->finish();
    const bool changed = !read || version != m_lastDataVersion;
    m_lastDataVersion = version;
    return changed;
}

Outcome SqliteDriver::checkFile(const StoreAddress &address)
{
    const QFileInfo file(address.filePath());
    if (!QFileInfo(file.path()).isDir()) {
        return {ResultNotFound, tr("Папки %1 нет.").arg(QDir::toNativeSeparators(file.path())),
                tr("Проверьте путь и подключён ли диск, на котором лежит хранилище.")};
    }
    if (!file.exists()) {
        return {ResultNotFound, tr("Файла хранилища %1 нет.").arg(address.toText()),
                tr("Проверьте путь и подключён ли диск, на котором лежит хранилище.")};
    }
    if (file.isDir())
        return {ResultInvalidData, tr("%1 – папка, а не файл хранилища.").arg(address.toText()), tr("Укажите файл.")};
    if (!file.isReadable()) {
        return {ResultStorageError, tr("Файл хранилища %1 нельзя прочитать.").arg(address.toText()),
                tr("Проверьте права на файл и на его папку.")};
    }
    return {};
}

Outcome SqliteDriver::connectTo(const StoreAddress &address, Access access)
{
    Outcome outcome = connectToFile(address, access);
    return outcome.ok() ? checkIsStore() : outcome;
}

Outcome SqliteDriver::connectToFile(const StoreAddress &address, Access access)
{
    close();
    m_path = address.filePath();
    if (Outcome checked = checkFile(address); !checked.ok())
        return checked;
    // Checked before the engine creates its log, which would have the permissions of the file.
    const bool isReadOnly = !isWritable(m_path);
    if (isReadOnly && access == Access::Write) {
        const QSqlError readOnly({}, {}, QSqlError::ConnectionError, QString::number(SqliteReadOnly));
        return SqliteErrors::cannotOpen(m_path, readOnly);
    }
    m_file.setPath(m_path);
    m_login = loginOfProcess();
    return openDatabase(isReadOnly);
}

Outcome SqliteDriver::openDatabase(bool isReadOnly)
{
    m_connectionName = QStringLiteral("store-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connectionName);
    m_database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1").arg(BusyTimeout));
    m_realPath = QFileInfo(m_path).canonicalFilePath();
    const bool hasLog = QFileInfo(m_realPath + LogSuffix).size() > 0;
    // "rw": opening must not create a file that has been removed meanwhile.
    m_database.setDatabaseName(QString::fromLatin1(QUrl::fromLocalFile(m_path).toEncoded())
                               + (isReadOnly && !hasLog ? QStringLiteral("?immutable=1") : QStringLiteral("?mode=rw")));
    if (!m_database.open())
        return SqliteErrors::cannotOpen(m_path, m_database.lastError());
    // Checked before the first statement, which would apply the log to the file.
    if (hasLog && hasForeignLog())
        return SqliteErrors::foreignLog(m_realPath);
    QSqlError error = setBusyTimeout(BusyTimeout);
    for (const char *pragma : {"PRAGMA foreign_keys = ON", "PRAGMA synchronous = FULL"}) {
        if (!error.isValid())
            error = run(QLatin1String(pragma));
    }
    return error.isValid() ? SqliteErrors::cannotOpen(m_path, error) : Outcome();
}

bool SqliteDriver::hasForeignLog() const
{
    constexpr quint32 MaximumMissing = 1U << 24; // a larger difference means another file
    OpenFile::Header header;
    if (!m_file.readHeader(header))
        return false;
    if (!header.usesLog)
        return true;
    const auto first = OpenFile::firstGenerationInLog(m_realPath + LogSuffix);
    OpenFile::Header again;
    // Another program may have emptied the log and begun a new one meanwhile.
    if (header.generation == 0 || !first || !m_file.readHeader(again) || again.generation != header.generation)
        return false;
    const quint32 missing = *first - 1 - header.generation;
    return missing != 0 && missing < MaximumMissing;
}

Outcome SqliteDriver::checkIsStore()
{
    int id = 0;
    if (const QSqlError error = readNumber(QStringLiteral("PRAGMA application_id"), id); error.isValid())
        return SqliteErrors::cannotOpen(m_path, error);
    return id == ApplicationId ? Outcome() : SqliteErrors::notAStore(m_path);
}

Outcome SqliteDriver::readSchema(int &version)
{
    const QSqlError error = readNumber(statement("schema_version"), version);
    return error.isValid() ? SqliteErrors::cannotOpen(m_path, error) : Outcome();
}

Outcome SqliteDriver::checkIsWritable()
{
    // Assigned before the file has a log, which begins with the next generation.
    QSqlError error = assignGeneration();
    if (error.isValid() && SqliteErrors::code(error) != SqliteBusy)
        return SqliteErrors::cannotOpen(m_path, error);
    if (Outcome switched = switchToWal(); !switched.ok())
        return switched;
    error = setBusyTimeout(0);
    if (!error.isValid()) {
        error = probeWritable();
        // A file that another program is writing is writable; opening does not wait for the other program.
        if (SqliteErrors::code(error) == SqliteBusy)
            error = {};
    }
    if (!error.isValid())
        error = setBusyTimeout(BusyTimeout);
    return error.isValid() ? SqliteErrors::cannotOpen(m_path, error) : Outcome();
}

QSqlError SqliteDriver::probeWritable()
{
    QSqlError error = begin(Transaction::Write);
    // On a file that cannot be written, BEGIN alone succeeds as a reading transaction.
    if (!error.isValid())
        error = run(statement("schema_version_touch"));
    rollback();
    return error;
}

/// A copy has the generation of its original until it is opened for writing.
QSqlError SqliteDriver::assignGeneration()
{
    OpenFile::Header header;
    int generation = 0;
    const auto isMissing = [&] { return m_file.readHeader(header) && (generation == 0 || !header.usesLog); };
    QSqlError error = readNumber(Generation, generation);
    if (error.isValid() || !isMissing())
        return error;
    error = begin(Transaction::Write);
    // Another program may have assigned one before this one had the lock.
    if (!error.isValid())
        error = readNumber(Generation, generation);
    if (!error.isValid() && isMissing()) {
        generation = QRandomGenerator::global()->bounded(1, std::numeric_limits<int>::max());
        error = run(Generation + QStringLiteral(" = %1").arg(generation));
        if (!error.isValid())
            error = commit();
    }
    rollback();
    return error;
}

void SqliteDriver::rememberHeader()
{
    OpenFile::Header header;
    m_watchesHeader = m_file.readHeader(header);
    m_generationInFile = header.generation;
}

Outcome SqliteDriver::switchToWal()
{
    QVariant mode;
    if (const QSqlError error = readValue(QStringLiteral("PRAGMA journal_mode = WAL"), mode); error.isValid())
        return SqliteErrors::cannotOpen(m_path, error);
    if (mode.toString() == QLatin1String("wal"))
        return {};
    // Without shared memory the engine keeps the old mode and reports no error.
    return SqliteErrors::unsuitableDisk(m_path);
}

/// A copied file may be accessible to all users, and the engine creates its logs with the same permissions.
void SqliteDriver::restrictPermissions() const
{
    for (const QString &suffix : {QString(), QString(LogSuffix), QString(SharedMemorySuffix)}) {
        const QByteArray path = QFile::encodeName(m_realPath + suffix);
        struct stat status = {};
        constexpr mode_t others = S_IRWXG | S_IRWXO;
        if (stat(path.constData(), &status) != 0 || status.st_uid != geteuid() || (status.st_mode & others) == 0)
            continue;
        if (chmod(path.constData(), status.st_mode & S_IRWXU) == 0)
            qCInfo(storeLog) << "access to a file of the store is now restricted to its owner:" << path;
        else
            qCWarning(storeLog) << "access to a file of the store cannot be restricted to its owner:" << path;
    }
}

QSqlError SqliteDriver::setBusyTimeout(int milliseconds)
{
    return run(QStringLiteral("PRAGMA busy_timeout = %1").arg(milliseconds));
}

QSqlError SqliteDriver::readNumber(const QString &sql, int &value) const
{
    QVariant number;
    QSqlError error = readValue(sql, number);
    if (!error.isValid())
        value = number.toInt();
    return error;
}

QSqlError SqliteDriver::readValue(const QString &sql, QVariant &value) const
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (query.exec(sql) && query.next()) {
        value = query.value(0);
        return {};
    }
    if (query.lastError().isValid())
        return query.lastError();
    // Every store has this row.
    return QSqlError(QString(), QString(), QSqlError::StatementError, QString::number(SqliteCorrupt));
}

} // namespace store
