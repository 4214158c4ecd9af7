#include "sqlitedriver.h"

#include "backupnames.h"
#include "log.h"
#include "newfile.h"
#include "sqlfiles.h"
#include "sqliteerrors.h"
#include "storeaddress.h"

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
const QLatin1String FileNumber("PRAGMA user_version"); // see OpenFile::Header

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
    NewFile file(address.filePath());
    Outcome outcome = file.create();
    if (outcome.ok())
        outcome = connectTo(StoreAddress::file(file.partialPath()), Access::Write);
    if (outcome.ok())
        outcome = applySteps(0);
    if (outcome.ok())
        outcome = checkIsWritable();
    close();
    return outcome.ok() ? file.commit() : outcome;
}

Outcome SqliteDriver::backUp(const StoreAddress &address, const QString &target)
{
    Outcome outcome = connectTo(address, Access::Read);
    if (outcome.ok())
        outcome = checkIsStore();
    if (outcome.ok())
        outcome = copyTo(target);
    close();
    return outcome;
}

Outcome SqliteDriver::copyTo(const QString &target)
{
    NewFile file(target);
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

Outcome SqliteDriver::upgrade(const StoreAddress &address, const Clock &clock, Upgrade &done)
{
    Outcome outcome = connectTo(address, Access::Write);
    if (outcome.ok())
        outcome = checkIsStore();
    if (outcome.ok())
        outcome = readSchema(done.from);
    done.to = done.from;
    const bool isOlder = outcome.ok() && done.from < sqlfiles::schemaVersion(engine());
    if (isOlder) {
        const QString copy = backups::nameBeforeUpgrade(address, done.from, clock());
        outcome = makeFolder(backups::folder(address));
        if (outcome.ok())
            outcome = copyTo(copy);
        if (outcome.ok())
            done.copy = copy;
        if (outcome.ok())
            outcome = applySteps(done.from);
    }
    if (outcome.ok())
        outcome = checkIsNewest();
    if (outcome.ok())
        done.to = sqlfiles::schemaVersion(engine());
    close();
    return outcome;
}

Outcome SqliteDriver::open(const StoreAddress &address, Access access)
{
    Outcome outcome = connectTo(address, access);
    // Nothing is written before the file has proved to be ours.
    if (outcome.ok())
        outcome = checkIsStore();
    if (outcome.ok())
        outcome = checkIsNewest();
    if (outcome.ok() && access == Access::Write) {
        keepFromOthers();
        outcome = checkIsWritable();
        watchFile();
    }
    if (!outcome.ok()) {
        close();
        return outcome;
    }
    m_dataVersion = std::make_unique<QSqlQuery>(m_database);
    m_dataVersion->setForwardOnly(true);
    if (!m_dataVersion->prepare(QStringLiteral("PRAGMA data_version")))
        outcome = SqliteErrors::cannotOpen(m_path, m_dataVersion->lastError());
    (void)somethingChanged();
    return outcome;
}

void SqliteDriver::close()
{
    m_dataVersion.reset();
    if (m_connectionName.isEmpty())
        return;
    if (m_database.isOpen())
        keepLogFromOtherFile();
    m_keepsLog = false;
    m_database = {};
    QSqlDatabase::removeDatabase(m_connectionName);
    m_connectionName.clear();
}

/// The engine finds the log by the path alone: it would play this one into whatever file lies there.
void SqliteDriver::keepLogFromOtherFile()
{
    if (isOverwritten()) {
        // What it belonged to is gone. Without it the engine has nothing to write into the file when it closes.
        if (truncate(QFile::encodeName(m_realPath + LogSuffix).constData(), 0) != 0)
            qCWarning(storeLog) << "the log of an overwritten file is left behind:" << m_realPath;
    } else if (!m_file.isInPlace()) {
        // Emptied into its own file, which is whole then wherever it has been moved.
        int isBusy = 0;
        const QSqlError error = readNumber(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"), isBusy);
        if (error.isValid() || isBusy != 0)
            qCWarning(storeLog) << "the log of a file that was taken away is left behind:" << error.databaseText();
    }
}

bool SqliteDriver::isAlive() const
{
    return m_database.isOpen() && m_file.isInPlace() && !isOverwritten();
}

bool SqliteDriver::isOverwritten() const
{
    OpenFile::Header header;
    if (!m_keepsLog || !m_file.readHeader(header))
        return false;
    if (!header.keepsLog)
        return true;
    if (header.number == m_numberInFile)
        return false;
    int seen = 0;
    if (readNumber(FileNumber, seen).isValid())
        return false;
    // The engine carries the log into the file: that grows, up to what the engine sees. The differences wrap around.
    if (header.number - m_numberInFile > quint32(seen) - m_numberInFile) {
        // Looked at twice: the engine may just have been writing these bytes.
        OpenFile::Header again;
        return m_file.readHeader(again) && again.number == header.number;
    }
    m_numberInFile = header.number;
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
    const QSqlError error = m_writes ? countWriting() : QSqlError();
    return error.isValid() ? error : run(QStringLiteral("COMMIT"));
}

/// An older copy that is put in the file's place is known by its smaller number.
QSqlError SqliteDriver::countWriting()
{
    int number = 0;
    const QSqlError error = readNumber(FileNumber, number);
    if (error.isValid() || number == 0)
        return error;
    return run(FileNumber + QStringLiteral(" = %1").arg(int(quint32(number) + 1)));
}

void SqliteDriver::rollback()
{
    // After some failures the engine has rolled back by itself and refuses this one, which is as good.
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
    // A failure counts as a change: the query that follows says what is wrong.
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
    close();
    m_path = address.filePath();
    if (Outcome checked = checkFile(address); !checked.ok())
        return checked;
    // Before the engine leaves its log beside the file, as unwritable as the file itself.
    const bool isFixed = !isWritable(m_path);
    if (isFixed && access == Access::Write) {
        const QSqlError readOnly({}, {}, QSqlError::ConnectionError, QString::number(SqliteReadOnly));
        return SqliteErrors::cannotOpen(m_path, readOnly);
    }

    m_file.setPath(m_path);
    m_login = loginOfProcess();
    m_connectionName = QStringLiteral("store-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connectionName);
    // Opening must not create a file that has just been taken away.
    m_database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1").arg(BusyTimeout));
    m_realPath = QFileInfo(m_path).canonicalFilePath();
    const bool hasLog = QFileInfo(m_realPath + LogSuffix).size() > 0;
    m_database.setDatabaseName(QString::fromLatin1(QUrl::fromLocalFile(m_path).toEncoded())
                               + (isFixed && !hasLog ? QStringLiteral("?immutable=1") : QStringLiteral("?mode=rw")));
    if (!m_database.open())
        return SqliteErrors::cannotOpen(m_path, m_database.lastError());
    // Before the first statement, which would play the log into the file.
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
    constexpr quint32 ManyWritings = 1U << 24;
    OpenFile::Header header;
    if (!m_file.readHeader(header))
        return false;
    if (!header.keepsLog)
        return true;
    const auto first = OpenFile::firstNumberInLog(m_realPath + LogSuffix);
    OpenFile::Header again;
    // A program that is at work may have emptied the log and begun a new one meanwhile.
    if (header.number == 0 || !first || !m_file.readHeader(again) || again.number != header.number)
        return false;
    const quint32 missing = *first - 1 - header.number;
    return missing != 0 && missing < ManyWritings;
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

Outcome SqliteDriver::checkIsNewest()
{
    int version = 0;
    if (Outcome read = readSchema(version); !read.ok())
        return read;
    const int newest = sqlfiles::schemaVersion(engine());
    if (version > newest) {
        return {ResultInvalidData,
                tr("Хранилище %1 создано более новой версией программы: его схема %2, а эта программа знает схему %3.")
                    .arg(QDir::toNativeSeparators(m_path))
                    .arg(version)
                    .arg(newest),
                tr("Обновите программу.")};
    }
    if (version < newest) {
        return {ResultInvalidData,
                tr("Хранилище %1 создано более старой версией программы: его схема %2, а нужна схема %3.")
                    .arg(QDir::toNativeSeparators(m_path))
                    .arg(version)
                    .arg(newest),
                tr("Выполните команду orvexctl upgrade: она сохранит копию и обновит хранилище.")};
    }
    return {};
}

Outcome SqliteDriver::checkIsWritable()
{
    // Before it keeps a log, whose first number follows that in the file.
    QSqlError error = numberFile();
    if (error.isValid() && SqliteErrors::code(error) != SqliteBusy)
        return SqliteErrors::cannotOpen(m_path, error);
    if (Outcome switched = switchToWal(); !switched.ok())
        return switched;
    error = setBusyTimeout(0);
    if (!error.isValid()) {
        error = writeOnTrial();
        // Where another program writes just now, it can be written; opening does not wait for its end.
        if (SqliteErrors::code(error) == SqliteBusy)
            error = {};
    }
    if (!error.isValid())
        error = setBusyTimeout(BusyTimeout);
    return error.isValid() ? SqliteErrors::cannotOpen(m_path, error) : Outcome();
}

QSqlError SqliteDriver::writeOnTrial()
{
    QSqlError error = begin(Transaction::Write);
    // The begin alone is a reading one, without a word, where nothing can be written.
    if (!error.isValid())
        error = run(statement("schema_version_touch"));
    rollback();
    return error;
}

/// A copy has the number of its original until it becomes a store of its own.
QSqlError SqliteDriver::numberFile()
{
    OpenFile::Header header;
    int number = 0;
    const auto needsNumber = [&] { return m_file.readHeader(header) && (number == 0 || !header.keepsLog); };
    QSqlError error = readNumber(FileNumber, number);
    if (error.isValid() || !needsNumber())
        return error;
    error = begin(Transaction::Write);
    // Another program may have given it one before the lock was had.
    if (!error.isValid())
        error = readNumber(FileNumber, number);
    if (!error.isValid() && needsNumber()) {
        number = QRandomGenerator::global()->bounded(1, std::numeric_limits<int>::max());
        error = run(FileNumber + QStringLiteral(" = %1").arg(number));
        if (!error.isValid())
            error = commit();
    }
    rollback();
    return error;
}

void SqliteDriver::watchFile()
{
    OpenFile::Header header;
    m_keepsLog = m_file.readHeader(header);
    m_numberInFile = header.number;
}

Outcome SqliteDriver::switchToWal()
{
    QVariant mode;
    if (const QSqlError error = readValue(QStringLiteral("PRAGMA journal_mode = WAL"), mode); error.isValid())
        return SqliteErrors::cannotOpen(m_path, error);
    if (mode.toString() == QLatin1String("wal"))
        return {};
    // The engine keeps the old mode without an error where its system knows no shared memory.
    return SqliteErrors::unfitDisk(m_path);
}

/// A file that came from elsewhere may be open to everybody, and the engine makes its logs like it.
void SqliteDriver::keepFromOthers() const
{
    for (const char *suffix : {"", "-wal", "-shm"}) {
        const QByteArray path = QFile::encodeName(m_realPath) + suffix;
        struct stat status = {};
        constexpr mode_t others = S_IRWXG | S_IRWXO;
        if (stat(path.constData(), &status) != 0 || status.st_uid != geteuid() || (status.st_mode & others) == 0)
            continue;
        if (chmod(path.constData(), status.st_mode & S_IRWXU) == 0)
            qCInfo(storeLog) << "others could use the store's file, now its owner alone can:" << path;
        else
            qCWarning(storeLog) << "others can use the store's file:" << path;
    }
}

Outcome SqliteDriver::applySteps(int from)
{
    for (int version = from + 1; version <= sqlfiles::schemaVersion(engine()); ++version) {
        QSqlError error = begin(Transaction::Write);
        for (const QString &statement : sqlfiles::schemaStep(engine(), version)) {
            if (!error.isValid())
                error = run(statement);
        }
        if (!error.isValid())
            error = writeSchema(version);
        if (!error.isValid())
            error = commit();
        if (!error.isValid())
            continue;
        rollback();
        return {classify(error).code,
                tr("Не удалось привести хранилище %1 к схеме %2: %3.")
                    .arg(QDir::toNativeSeparators(m_path))
                    .arg(version)
                    .arg(error.databaseText()),
                tr("Хранилище осталось при схеме %1.").arg(version - 1)};
    }
    return {};
}

QSqlError SqliteDriver::run(const QString &sql)
{
    QSqlQuery query(m_database);
    return query.exec(sql) ? QSqlError() : query.lastError();
}

QString SqliteDriver::statement(const char *name) const
{
    return sqlfiles::statement(engine(), QLatin1String(name));
}

QSqlError SqliteDriver::setBusyTimeout(int milliseconds)
{
    return run(QStringLiteral("PRAGMA busy_timeout = %1").arg(milliseconds));
}

QSqlError SqliteDriver::writeSchema(int version)
{
    QSqlQuery query(m_database);
    if (!query.prepare(statement("schema_version_set")))
        return query.lastError();
    query.bindValue(QStringLiteral(":version"), version);
    return query.exec() ? QSqlError() : query.lastError();
}

QSqlError SqliteDriver::readNumber(const QString &sql, int &value) const
{
    QVariant number;
    const QSqlError error = readValue(sql, number);
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
    // A store without the row that every store has.
    return QSqlError(QString(), QString(), QSqlError::StatementError, QString::number(SqliteCorrupt));
}

} // namespace store
