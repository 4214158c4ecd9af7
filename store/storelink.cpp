#include "storelink.h"

#include "backups.h"
#include "database.h"
#include "log.h"

#include <QCoreApplication>
#include <QTimer>

namespace store {

namespace {

constexpr int PollInterval = 50; // ms
constexpr int RolesInterval = 30000; // ms
constexpr int RetryInterval = 1000; // ms

} // namespace

/// The far side of the link. Everything but its construction happens on the worker thread.
class StoreLink::Worker : public QObject
{
    Q_OBJECT

public:
    Worker(std::shared_ptr<std::atomic_bool> stop, const LinkSchedule &schedule);
    void open(const StoreAddress &address);
    void run(const Command &request);

signals:
    void opened(const orvex::StorageChange &snapshot, const QString &login, const QStringList &roles);
    void failed(const QString &text);
    void replied(const Command &reply);
    void changed(const orvex::StorageChange &change);
    void rolesChanged(const QStringList &roles);
    void connectedChanged(bool connected);
    void connectionLost(const QString &text);
    void backupFailed(const QString &text);

private:
    /// What a new connection finds.
    struct Found
    {
        orvex::StorageChange snapshot;
        QStringList roles;
    };
    [[nodiscard]] Outcome connectNow(Found &found);
    void runAgain(const Command &request, const Command &cutOff);
    void publish(const Found &found);
    void cutLogs();
    void poll();
    void readFeed();
    void refreshRoles();
    void setRoles(const QStringList &roles);
    void lose(const QString &reason);
    void tellLoss(const Outcome &reason);
    void retry();
    void startBackup();
    void backupEnded(const Outcome &outcome);

    std::shared_ptr<std::atomic_bool> m_stop;
    LinkSchedule m_schedule;
    StoreAddress m_address;
    Database m_database;
    QStringList m_roles;
    bool m_connected = false;
    QTimer m_poll;
    QTimer m_rolesTimer;
    QTimer m_retry;
    QTimer m_backupTimer;
    bool m_backingUp = false;
    QString m_loss; ///< the last reason that was told
    QString m_backupFailure; ///< the last one that was told
};

StoreLink::Worker::Worker(std::shared_ptr<std::atomic_bool> stop, const LinkSchedule &schedule)
    : m_stop(std::move(stop))
    , m_schedule(schedule)
    , m_database(schedule.clock, m_stop)
    , m_poll(this)
    , m_rolesTimer(this)
    , m_retry(this)
    , m_backupTimer(this)
{
    m_poll.setTimerType(Qt::PreciseTimer);
    m_poll.setInterval(PollInterval);
    m_rolesTimer.setInterval(RolesInterval);
    m_retry.setInterval(RetryInterval);
    connect(&m_poll, &QTimer::timeout, this, &Worker::poll);
    connect(&m_rolesTimer, &QTimer::timeout, this, &Worker::refreshRoles);
    connect(&m_retry, &QTimer::timeout, this, &Worker::retry);
    m_backupTimer.setSingleShot(true);
    connect(&m_backupTimer, &QTimer::timeout, this, &Worker::startBackup);
}

void StoreLink::Worker::open(const StoreAddress &address)
{
    m_address = address;
    Found found;
    if (const Outcome outcome = connectNow(found); !outcome.ok()) {
        emit failed(outcome.message());
        return;
    }
    m_roles = found.roles;
    emit opened(found.snapshot, m_database.login(), m_roles);
    emit connectedChanged(true);
    cutLogs();
    m_backupTimer.start(m_schedule.firstBackup);
}

void StoreLink::Worker::run(const Command &request)
{
    if (*m_stop)
        return;
    if (m_connected && !m_database.isOpen())
        lose(QStringLiteral("the file is gone"));
    const Command reply = m_database.execute(request);
    if (m_connected && !m_database.isOpen())
        runAgain(request, reply);
    else
        emit replied(reply);
    if (m_connected)
        readFeed();
}

/// A request that was cut off: nobody knows whether it was done. Sent once more under the same identifier it is done
/// once.
void StoreLink::Worker::runAgain(const Command &request, const Command &cutOff)
{
    qCWarning(storeLog) << "a request was cut off";
    Found found;
    if (const Outcome outcome = connectNow(found); !outcome.ok()) {
        lose(outcome.text);
        emit replied(cutOff);
        return;
    }
    const Command reply = m_database.execute(request);
    if (!m_database.isOpen())
        lose(QStringLiteral("the request was cut off again"));
    emit replied(reply);
    if (m_connected)
        publish(found);
}

Outcome StoreLink::Worker::connectNow(Found &found)
{
    Outcome outcome = m_database.open(m_address);
    if (outcome.ok())
        outcome = m_database.snapshot(found.snapshot);
    if (outcome.ok())
        outcome = m_database.roles(found.roles);
    if (!outcome.ok()) {
        m_database.close();
        return outcome;
    }
    m_connected = true;
    m_retry.stop();
    m_poll.start();
    m_rolesTimer.start();
    return outcome;
}

void StoreLink::Worker::cutLogs()
{
    if (const Outcome cut = m_database.cutLogs(); !cut.ok())
        qCWarning(storeLog) << "the logs are not cut" << cut.code << cut.text;
}

void StoreLink::Worker::poll()
{
    if (*m_stop)
        return;
    if (!m_database.isOpen()) {
        lose(QStringLiteral("the file is gone"));
    } else if (m_database.somethingChanged()) {
        readFeed();
        refreshRoles();
    }
}

void StoreLink::Worker::readFeed()
{
    orvex::StorageChange change;
    const Outcome outcome = m_database.changes(change);
    if (!outcome.ok())
        lose(outcome.text);
    else if (!change.isEmpty())
        emit changed(change);
}

void StoreLink::Worker::refreshRoles()
{
    if (!m_connected)
        return;
    QStringList roles;
    if (const Outcome outcome = m_database.roles(roles); !outcome.ok()) {
        lose(outcome.text);
        return;
    }
    setRoles(roles);
}

void StoreLink::Worker::setRoles(const QStringList &roles)
{
    if (roles == m_roles)
        return;
    m_roles = roles;
    emit rolesChanged(roles);
}

void StoreLink::Worker::lose(const QString &reason)
{
    qCWarning(storeLog) << "connection lost:" << reason;
    m_connected = false;
    m_poll.stop();
    m_rolesTimer.stop();
    m_database.close();
    emit connectedChanged(false);
    m_loss.clear();
    m_retry.start();
}

void StoreLink::Worker::tellLoss(const Outcome &reason)
{
    const QString text = reason.message();
    if (text == m_loss)
        return;
    qCWarning(storeLog) << "still no connection:" << reason.text;
    m_loss = text;
    emit connectionLost(text);
}

void StoreLink::Worker::retry()
{
    if (*m_stop)
        return;
    Found found;
    if (const Outcome outcome = connectNow(found); !outcome.ok()) {
        tellLoss(outcome);
        return;
    }
    publish(found);
    emit connectedChanged(true);
    cutLogs();
}

void StoreLink::Worker::publish(const Found &found)
{
    // Whatever has happened meanwhile, even to another file in the same place: only the whole is certain.
    emit changed(found.snapshot);
    setRoles(found.roles);
}

void StoreLink::Worker::startBackup()
{
    if (*m_stop || m_backingUp)
        return;
    if (!m_connected) {
        m_backupTimer.start(m_schedule.nextBackup);
        return;
    }
    // A thread of its own: copying a large store must not hold up the requests.
    m_backingUp = true;
    backups::startDaily(m_address, m_schedule.clock(), this, [this](const Outcome &outcome) { backupEnded(outcome); });
}

void StoreLink::Worker::backupEnded(const Outcome &outcome)
{
    m_backingUp = false;
    m_backupTimer.start(m_schedule.nextBackup);
    const QString failure = outcome.message();
    if (!outcome.ok() && failure != m_backupFailure) {
        qCWarning(storeLog) << "no backup was made:" << outcome.text;
        emit backupFailed(tr("Резервная копия хранилища не сделана. %1").arg(failure));
    }
    m_backupFailure = failure;
}

StoreLink::StoreLink(QObject *parent, LinkSchedule schedule)
    : QObject(parent)
    , m_schedule(std::move(schedule))
{
    qRegisterMetaType<Command>();
    qRegisterMetaType<orvex::StorageChange>();
}

StoreLink::~StoreLink()
{
    close();
}

void StoreLink::open(const StoreAddress &address)
{
    close();
    m_stop = std::make_shared<std::atomic_bool>(false);
    m_thread = std::make_unique<QThread>();
    m_thread->setObjectName(QStringLiteral("store"));
    m_worker = new Worker(m_stop, m_schedule);
    m_worker->moveToThread(m_thread.get());
    connect(m_thread.get(), &QThread::finished, m_worker, &QObject::deleteLater);

    // What a closed worker has left in the queue goes with its relay.
    m_relay = std::make_unique<QObject>();
    connect(
        m_worker, &Worker::opened, m_relay.get(),
        [this](const auto &snapshot, const auto &login, const auto &roles) { emit opened(snapshot, login, roles); });
    connect(m_worker, &Worker::failed, m_relay.get(), [this](const auto &text) { emit failed(text); });
    connect(m_worker, &Worker::replied, m_relay.get(), [this](const auto &reply) { emit replied(reply); });
    connect(m_worker, &Worker::changed, m_relay.get(), [this](const auto &change) { emit changed(change); });
    connect(m_worker, &Worker::rolesChanged, m_relay.get(), [this](const auto &roles) { emit rolesChanged(roles); });
    connect(m_worker, &Worker::connectedChanged, m_relay.get(), [this](bool on) { emit connectedChanged(on); });
    connect(m_worker, &Worker::connectionLost, m_relay.get(), [this](const auto &text) { emit connectionLost(text); });
    connect(m_worker, &Worker::backupFailed, m_relay.get(), [this](const auto &text) { emit backupFailed(text); });

    m_thread->start();
    QMetaObject::invokeMethod(
        m_worker, [worker = m_worker, address] { worker->open(address); }, Qt::QueuedConnection);
}

void StoreLink::submit(const Command &request)
{
    if (m_worker) {
        QMetaObject::invokeMethod(
            m_worker, [worker = m_worker, request] { worker->run(request); }, Qt::QueuedConnection);
    }
}

void StoreLink::close()
{
    if (!m_thread)
        return;
    *m_stop = true;
    m_thread->quit();
    m_thread->wait();
    m_worker = nullptr;
    m_thread.reset();
    m_relay.reset();
}

} // namespace store

#include "storelink.moc"
