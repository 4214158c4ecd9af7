#include "storelink.h"

#include "backups.h"
#include "database.h"
#include "log.h"

#include <QTimer>

namespace store {

namespace {

constexpr int PollInterval = 50; // ms
constexpr int RolesInterval = 30000; // ms
constexpr int RetryInterval = 1000; // ms

} // namespace

/// Everything but the construction happens on the worker thread.
class StoreLink::Worker : public QObject
{
    Q_OBJECT

public:
    Worker(std::shared_ptr<std::atomic_bool> stop, const LinkTiming &timing);
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
    /// What is read on connecting.
    struct State
    {
        orvex::StorageChange snapshot;
        QStringList roles;
    };
    [[nodiscard]] Outcome connectToStore(State &state);
    void repeatRequest(const Command &request, const Command &failure);
    void publish(const State &state);
    void cutLogs();
    void poll();
    void readFeed();
    void refreshRoles();
    void setRoles(const QStringList &roles);
    void handleLoss(const QString &reason);
    void reportConnectionFailure(const Outcome &reason);
    void retry();
    void startBackup();
    void finishBackup(const Outcome &outcome);

    std::shared_ptr<std::atomic_bool> m_stop;
    LinkTiming m_timing;
    StoreAddress m_address;
    Database m_database;
    QStringList m_roles;
    bool m_connected = false;
    QTimer m_poll;
    QTimer m_rolesTimer;
    QTimer m_retry;
    QTimer m_backupTimer;
    bool m_isBackingUp = false;
    QString m_reportedFailure; ///< of connecting, the last one
    QString m_reportedBackupFailure; ///< the last one
};

StoreLink::Worker::Worker(std::shared_ptr<std::atomic_bool> stop, const LinkTiming &timing)
    : m_stop(std::move(stop))
    , m_timing(timing)
    , m_database(timing.clock, m_stop)
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
    State state;
    if (const Outcome outcome = connectToStore(state); !outcome.ok()) {
        emit failed(outcome.message());
        return;
    }
    m_roles = state.roles;
    emit opened(state.snapshot, m_database.login(), m_roles);
    emit connectedChanged(true);
    cutLogs();
    m_backupTimer.start(m_timing.firstBackup);
}

void StoreLink::Worker::run(const Command &request)
{
    if (*m_stop)
        return;
    if (m_connected && !m_database.isOpen())
        handleLoss(QStringLiteral("the file was removed or replaced"));
    const Command reply = m_database.execute(request);
    if (m_connected && !m_database.isOpen())
        repeatRequest(request, reply);
    else
        emit replied(reply);
    if (m_connected)
        readFeed();
}

/// It is not known whether the interrupted request was done. With the same identifier it cannot be done twice.
void StoreLink::Worker::repeatRequest(const Command &request, const Command &failure)
{
    qCWarning(storeLog) << "a request was cut off";
    State state;
    if (const Outcome outcome = connectToStore(state); !outcome.ok()) {
        handleLoss(outcome.text);
        emit replied(failure);
        return;
    }
    const Command reply = m_database.execute(request);
    if (!m_database.isOpen())
        handleLoss(QStringLiteral("the request was cut off again"));
    emit replied(reply);
    if (m_connected)
        publish(state);
}

Outcome StoreLink::Worker::connectToStore(State &state)
{
    Outcome outcome = m_database.open(m_address);
    if (outcome.ok())
        outcome = m_database.snapshot(state.snapshot);
    if (outcome.ok())
        outcome = m_database.roles(state.roles);
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
        handleLoss(QStringLiteral("the file was removed or replaced"));
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
        handleLoss(outcome.text);
    else if (!change.isEmpty())
        emit changed(change);
}

void StoreLink::Worker::refreshRoles()
{
    if (!m_connected)
        return;
    QStringList roles;
    if (const Outcome outcome = m_database.roles(roles); !outcome.ok()) {
        handleLoss(outcome.text);
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

void StoreLink::Worker::handleLoss(const QString &reason)
{
    qCWarning(storeLog) << "connection lost:" << reason;
    m_connected = false;
    m_poll.stop();
    m_rolesTimer.stop();
    m_database.close();
    emit connectedChanged(false);
    m_reportedFailure.clear();
    m_retry.start();
}

void StoreLink::Worker::reportConnectionFailure(const Outcome &reason)
{
    const QString text = reason.message();
    if (text == m_reportedFailure)
        return;
    qCWarning(storeLog) << "still no connection:" << reason.text;
    m_reportedFailure = text;
    emit connectionLost(text);
}

void StoreLink::Worker::retry()
{
    if (*m_stop)
        return;
    State state;
    if (const Outcome outcome = connectToStore(state); !outcome.ok()) {
        reportConnectionFailure(outcome);
        return;
    }
    publish(state);
    emit connectedChanged(true);
    cutLogs();
}

void StoreLink::Worker::publish(const State &state)
{
    // The store may have been replaced meanwhile: only a full change is certain to be right.
    emit changed(state.snapshot);
    setRoles(state.roles);
}

void StoreLink::Worker::startBackup()
{
    if (*m_stop || m_isBackingUp)
        return;
    if (!m_connected) {
        m_backupTimer.start(m_timing.nextBackup);
        return;
    }
    // On a separate thread: copying a large store must not delay requests.
    m_isBackingUp = true;
    backups::startDaily(m_address, m_timing.clock(), this, [this](const Outcome &outcome) { finishBackup(outcome); });
}

void StoreLink::Worker::finishBackup(const Outcome &outcome)
{
    m_isBackingUp = false;
    m_backupTimer.start(m_timing.nextBackup);
    const QString failure = outcome.message();
    if (!outcome.ok() && failure != m_reportedBackupFailure) {
        qCWarning(storeLog) << "no backup was made:" << outcome.text;
        emit backupFailed(tr("Резервная копия хранилища не сделана. %1").arg(failure));
    }
    m_reportedBackupFailure = failure;
}

StoreLink::StoreLink(QObject *parent, LinkTiming timing)
    : QObject(parent)
    , m_timing(std::move(timing))
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
    m_worker = new Worker(m_stop, m_timing);
    m_worker->moveToThread(m_thread.get());
    connect(m_thread.get(), &QThread::finished, m_worker, &QObject::deleteLater);

    // Destroying the relay discards queued signals of a closed worker.
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
