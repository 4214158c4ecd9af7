#include "client.h"

#include "authdata.h"
#include "database.h"
#include "hostcommands.h"
#include "localstorage.h"
#include "settings.h"
#include "tqdatastream.h"
#include "tqplugininterface.h"

#include <QDir>
#include <QLoggingCategory>
#include <QThread>
#include <QUuid>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(log, "gui.client")

const QLatin1String StoreKey("client/store");

store::StoreAddress initialStore(const Options &options)
{
    if (!options.store.isEmpty())
        return options.store;
    const QString remembered = Settings::instance()->value(StoreKey).toString();
    return remembered.isEmpty() ? Options::defaultStore() : store::StoreAddress::file(remembered);
}

} // namespace

Client::Client(const Options &options)
    : m_options(options)
    , m_sessionId(QUuid::createUuid().toString(QUuid::WithoutBraces))
{
    if (options.theme)
        m_window.setTheme(*options.theme);
    connectLink();
    connect(&m_server, &TQServerInterface::aboutToDeliverReply, m_window.popups(), &PopupStack::beginReply);
    connect(&m_server, &TQServerInterface::requestFailed, this, &Client::requestFailed);
    connect(&m_server, &TQServerInterface::commandArrived, this, [this](const QString &name) {
        if (name.startsWith(hostcommand::ShowPrefix))
            m_window.showPage(name.mid(hostcommand::ShowPrefix.size()));
    });
    connect(&m_window, &MainWindow::createRequested, this, &Client::createStore);
    connect(&m_window, &MainWindow::openRequested, this, &Client::openStore);
}

Client::~Client()
{
    if (m_creation)
        m_creation->wait();
    // The window is closed and need not follow the sign-out.
    disconnect(AuthData::instance(), nullptr, &m_window, nullptr);
    // A plug-in ends before those that it requires.
    while (!m_plugins.isEmpty())
        m_plugins.takeLast().object->uninit();
    AuthData::signOut();
}

void Client::start()
{
    m_window.show();
    openStore(initialStore(m_options));
}

void Client::connectLink()
{
    using store::StoreLink;
    m_server.setTransport([this](const Command &request) { m_link.submit(request); });
    connect(&m_link, &StoreLink::opened, this, &Client::storeOpened);
    connect(&m_link, &StoreLink::connectedChanged, this, &Client::connectionChanged);
    connect(&m_link, &StoreLink::connectionLost, this, &Client::connectionLost);
    connect(&m_link, &StoreLink::failed, this, [this](const QString &text) {
        qCWarning(log) << "the store cannot be opened:" << text;
        m_window.showFailure(m_address, text);
        emit openingFailed(text);
    });
    connect(&m_link, &StoreLink::replied, &m_server, &TQServerInterface::deliver);
    connect(&m_link, &StoreLink::changed, this,
            [](const orvex::StorageChange &change) { orvex::LocalStorage::instance()->apply(change); });
    connect(orvex::LocalStorage::instance(), &orvex::LocalStorage::settled, this, &Client::storageSettled);
    connect(&m_link, &StoreLink::backupFailed, this, [this](const QString &text) { m_window.popups()->add(text, 0); });
    connect(&m_link, &StoreLink::rolesChanged, this, &AuthData::setRoles);
    connect(AuthData::instance(), &AuthData::rolesChanged, &m_window, &MainWindow::updatePageVisibility);
}

void Client::openStore(const store::StoreAddress &address)
{
    m_address = address;
    m_opening = true;
    m_pagesPending = false;
    m_server.setConnected(false);
    m_window.showOpening(address);
    m_link.open(address);
}

void Client::createStore(const store::StoreAddress &address)
{
    if (m_creation)
        m_creation->wait();
    m_address = address;
    m_window.showOpening(address);
    const auto outcome = std::make_shared<store::Outcome>();
    m_creation.reset(QThread::create([address, outcome] { *outcome = store::Database::create(address); }));
    connect(m_creation.get(), &QThread::finished, this, [this, address, outcome] {
        if (!(m_address == address))
            return; // another store has been chosen in the meantime
        if (outcome->ok())
            openStore(address);
        else
            m_window.showFailure(address, outcome->message());
    });
    m_creation->start();
}

void Client::storeOpened(const orvex::StorageChange &snapshot, const QString &login, const QStringList &roles)
{
    if (m_options.store.isEmpty())
        Settings::instance()->setValue(StoreKey, m_address.filePath());
    m_opening = false;
    AuthData::signIn(login, m_sessionId);
    AuthData::setRoles(roles);
    orvex::LocalStorage::instance()->apply(snapshot);
    m_window.setLogin(login);
    // The pages must not work on the contents of the previous store.
    m_pagesPending = true;
    m_connected = true;
    if (orvex::LocalStorage::instance()->isSettled())
        storageSettled();
}

void Client::storageSettled()
{
    if (m_opening)
        return;
    updateConnection(m_connected);
    if (!std::exchange(m_pagesPending, false))
        return;
    if (!m_pluginsLoaded)
        loadPlugins();
    m_window.updatePageVisibility();
    m_window.showPages(noPagesText());
    showRequestedPage();
    emit ready();
}

void Client::connectionChanged(bool connected)
{
    // This is the connection to the previous store, which has been closed.
    if (m_opening)
        return;
    m_connected = connected;
    if (!connected || orvex::LocalStorage::instance()->isSettled())
        updateConnection(connected);
}

void Client::updateConnection(bool connected)
{
    if (connected) {
        m_lossReported = false;
        m_window.popups()->remove(m_lossPopup);
    }
    m_server.setConnected(connected);
    m_window.setConnection(connected ? MainWindow::Connection::Connected : MainWindow::Connection::Lost, m_address);
}

void Client::connectionLost(const QString &reason)
{
    if (m_opening)
        return;
    m_window.setConnection(MainWindow::Connection::Lost, m_address, reason);
    if (!std::exchange(m_lossReported, true))
        m_lossPopup = m_window.popups()->add(reason, 0);
}

void Client::loadPlugins()
{
    m_pluginsLoaded = true;
    PluginLoader loader;
    loader.load(m_options.plugins);
    for (const auto &failure : loader.failures())
        reportPluginFailure(failure);
    for (const auto &plugin : loader.plugins()) {
        const QString reason = initPlugin(plugin);
        if (reason.isEmpty()) {
            m_plugins.append(plugin);
            continue;
        }
        // The library stays loaded: queued calls may still run its code.
        m_window.removePage(plugin.name);
        m_server.removeHandlers(plugin.object->object());
        reportPluginFailure({plugin.file, reason});
    }
}

bool Client::isInitialized(const QString &plugin) const
{
    return std::any_of(m_plugins.cbegin(), m_plugins.cend(),
                       [&plugin](const auto &other) { return other.name == plugin; });
}

QString Client::initPlugin(const PluginLoader::Plugin &plugin)
{
    for (const QString &required : plugin.required) {
        if (!isInitialized(required))
            return tr("Модуль «%1», который он требует, не запустился.").arg(required);
    }
    return PluginLoader::failureOf([this, &plugin] {
        plugin.object->init(&m_server, plugin.name);
        if (auto *page = plugin.object->widget()) {
            m_window.insertPage(plugin.name, page);
            if (auto *pluginPage = qobject_cast<PluginWidget *>(page))
                pluginPage->insertedToInterface();
            m_window.listPage(plugin.name);
        }
        plugin.object->initOnExchangeReady();
    });
}

void Client::reportPluginFailure(const PluginLoader::Failure &failure)
{
    qCWarning(log).noquote() << "plug-in not loaded:" << failure.file << failure.reason;
    m_window.addNotice(tr("Модуль «%1» не загружен. %2").arg(failure.file, failure.reason));
}

QString Client::noPagesText() const
{
    if (m_plugins.isEmpty())
        return tr("В папке «%1» нет модулей, которые можно показать.").arg(QDir::toNativeSeparators(m_options.plugins));
    return tr("Для пользователя «%1» нет доступных страниц. Права назначает администратор хранилища.")
        .arg(AuthData::login());
}

void Client::showRequestedPage()
{
    const QString name = std::exchange(m_options.showName, {});
    if (name.isEmpty())
        return;
    if (!m_options.showId) {
        if (!m_window.showPage(name))
            m_window.popups()->add(tr("Страницы «%1» нет, или нет прав на её просмотр.").arg(name), 0);
        return;
    }
    Command command({HostCommandKind, hostcommand::ShowPrefix + name});
    command.setPayload(writePayload(*m_options.showId));
    m_server.sendQuery(command, this, [this, name](const Command &reply) {
        QString text;
        const bool hasText = readPayload(reply.payload(), text);
        if (!reply.isSuccess() && hasText)
            m_window.popups()->add(text, 0);
        else if (hasText && text == hostcommand::NoRights)
            m_window.popups()->add(tr("Недостаточно прав для страницы «%1».").arg(name), 0);
    });
}

void Client::requestFailed(const Command &reply)
{
    const QString reason = failureReason(reply);
    qCWarning(log).noquote() << "request failed:" << reply.name() << reply.result() << reason;
    m_window.popups()->addReason(reason);
    m_window.popups()->beginReply();
}
