// The source of all plug-ins of the client's test; they differ by preprocessor definitions.
#include "authdata.h"
#include "pluginwidget.h"
#include "tqdatastream.h"
#include "tqplugininterface.h"
#include "tqserverinterface.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QVariant>

#include <stdexcept>

#ifndef PLUGIN_ROLE
#define PLUGIN_ROLE "RL_SCHEDULE_SHOW"
#endif

namespace {

/// Adds a call to the list that the test reads from the application object.
void record(const QString &line)
{
    QStringList calls = qApp->property("calls").toStringList();
    calls.append(QStringLiteral(PLUGIN_NAME ".") + line);
    qApp->setProperty("calls", calls);
}

} // namespace

class TestPlugin : public PluginWidget, public TQPluginInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "testplugin")
    Q_INTERFACES(TQPluginInterface)

public:
    TestPlugin()
    {
#ifdef THROW_IN_CONSTRUCTOR
        throw std::runtime_error("no licence");
#endif
        setObjectName(QStringLiteral(PLUGIN_NAME "Page"));
        setWindowTitle(QStringLiteral("Страница " PLUGIN_NAME));
        setWindowIcon(QIcon::fromTheme(QStringLiteral("plugin-schedule")));
        setCentralWidget(new QLineEdit(this));
    }

    [[nodiscard]] QString pluginName() const override
    {
        return QStringLiteral(PLUGIN_NAME);
    }
    [[nodiscard]] quint32 pluginVersion() const override
    {
        return 1;
    }
    [[nodiscard]] QString pluginBuild() const override
    {
        return QStringLiteral("1");
    }
    QWidget *widget() override
    {
        return this;
    }
    QStringList requireList() override
    {
        return QStringLiteral(PLUGIN_REQUIRES).split(QLatin1Char(','), Qt::SkipEmptyParts);
    }

    QList<CommandType> init(TQServerInterface *server, const QString &name) override
    {
        record(QStringLiteral("init"));
        QList<CommandType> types = TQPluginInterface::init(server, name);
        types.append({HostCommandKind, QStringLiteral("show:") + name});
        registerCommandHandler(types.last(), [](const Command &command) {
            qint32 id = 0;
            if (readPayload(command.payload(), id))
                record(QStringLiteral("show %1").arg(id));
        });
        return types;
    }

    [[nodiscard]] bool canShow() const override
    {
        return AuthData::roles().contains(QStringLiteral(PLUGIN_ROLE));
    }
    void insertedToInterface() override
    {
#ifdef THROW_WHEN_INSERTED
        throw 1;
#endif
        record(window() == this ? QStringLiteral("inserted nowhere") : QStringLiteral("inserted"));
    }
    [[nodiscard]] QList<PLUGIN_TAB> tabList() const override
    {
        record(QStringLiteral("tabs"));
        const QIcon icon = QIcon::fromTheme(QStringLiteral("object-OT_WORKER"));
        return {{QStringLiteral("Первая"), icon, 0, false}, {QStringLiteral("Вторая"), icon, 1, true}};
    }
    void onTabActivated(int index) override
    {
        record(QStringLiteral("tab %1").arg(index));
    }
    void activated() override
    {
        record(QStringLiteral("activated"));
    }
    void initOnExchangeReady() override
    {
        record(QStringLiteral("ready"));
    }
    void uninit() override
    {
        record(QStringLiteral("uninit"));
    }
};

#include "testplugin.moc"
