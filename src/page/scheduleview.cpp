#include "scheduleview.h"

#include "authdata.h"
#include "datanames.h"
#include "emptylisthint.h"
#include "hostcommands.h"
#include "localstorage.h"
#include "panelinfowidget.h"
#include "rolecontainer.h"
#include "schedulemodel.h"
#include "scheduleproxymodel.h"
#include "searchwidget.h"
#include "svc.h"
#include "tq5sdkdata.h"
#include "tqactionsinserthelper.h"
#include "tqserverinterface.h"
#include "tqstackedtoolbars.h"
#include "ui_scheduleview.h"

#include <QKeyEvent>
#include <QLoggingCategory>
#include <QTimer>

using orvex::LocalStorage;
using scheduleview::RoleContainer;

namespace {

// What the list keeps while the panel gives way, in average letters of the font.
constexpr int ListLetters = 56;

enum ViewMode
{
    CommonMode,
    PersonalMode
};

} // namespace

ScheduleView::ScheduleView(QWidget *parent)
    : PluginWidget(parent)
    , m_ui(std::make_unique<Ui::ScheduleView>())
    , m_infoTimer(new QTimer(this))
{
    setWindowTitle(tr("Графики"));
    setWindowIcon(QIcon::fromTheme(QStringLiteral("plugin-schedule")));
    m_infoTimer->setInterval(200);
    m_infoTimer->setSingleShot(true);
    connect(m_infoTimer, &QTimer::timeout, this, &ScheduleView::updateInfoPanel);
}

ScheduleView::~ScheduleView() = default;

bool ScheduleView::canShow() const
{
    return RoleContainer::canShow();
}

void ScheduleView::onTabActivated(int index)
{
    if (m_toolBars)
        m_toolBars->setCurrentIndex(index);
    updateViewMode();
}

QList<PLUGIN_TAB> ScheduleView::tabList() const
{
    const int current = m_toolBars ? m_toolBars->currentIndex() : CommonMode;
    return {{tr("Графики"), QIcon::fromTheme(QStringLiteral("plugin-schedule")), CommonMode, current == CommonMode},
            {tr("Индивидуальные графики"), QIcon::fromTheme(QStringLiteral("object-OT_WORKER")), PersonalMode,
             current == PersonalMode}};
}

void ScheduleView::insertedToInterface()
{
    qCDebug(svc()) << "inserted";
    m_sdk = new tq5sdk::Data(this, AuthData::sessionId());
    initWidgetContents();
    initScheduleModel();
    initPluginActions();
    updateViewMode();
    const auto storage = LocalStorage::instance();
    connect(storage, &LocalStorage::scheduleChanged, this, &ScheduleView::scheduleRead);
    connect(storage, &LocalStorage::scheduleRemoved, this, &ScheduleView::scheduleRemoved);
    connect(server(), &TQServerInterface::connectedChanged, this, [this](bool connected) {
        if (connected)
            emit connectionRestored();
    });
    connect(this, &ScheduleView::connectionRestored, this, &ScheduleView::updateInfoPanelDelayed);
    m_ui->scheduleView->installEventFilter(this);
}

QList<CommandType> ScheduleView::init(TQServerInterface *server, const QString &name)
{
    auto types = TQPluginInterface::init(server, name);
    const CommandType type{HostCommandKind, hostcommand::ShowPrefix + pluginName()};
    types.append(type);
    registerCommandHandler(type, [this](Command &command) { showDialog(command); });
    return types;
}

QString ScheduleView::pluginName() const
{
    return QStringLiteral("scheduleview");
}

quint32 ScheduleView::pluginVersion() const
{
    return 1;
}

QString ScheduleView::pluginBuild() const
{
    return QStringLiteral("%1.%2").arg(pluginVersion() >> 16).arg(QStringLiteral("1757310294"));
}

QWidget *ScheduleView::widget()
{
    return this;
}

bool ScheduleView::eventFilter(QObject *watched, QEvent *event)
{
    const bool layOut = event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest;
    if (layOut && m_model && watched == m_ui->splitter)
        fitList();
    if (m_toolBars && watched == m_ui->scheduleView && event->type() == QEvent::KeyPress) {
        const QPointer<ScheduleView> page = this;
        // A key that is held down opens one window, and not the next when it has closed that one.
        if (const auto *pressed = static_cast<QKeyEvent *>(event); !pressed->isAutoRepeat())
            handleKey(pressed->key());
        // What the key opened may have outlived the page, and with it the table that waits for the key.
        if (!page)
            return true;
    }
    return PluginWidget::eventFilter(watched, event);
}

void ScheduleView::handleKey(int key)
{
    const bool common = m_toolBars->currentIndex() == CommonMode;
    switch (key) {
    case Qt::Key_Insert:
        if (common)
            appendSchedule();
        else
            appendPersonalSchedule();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        scheduleDoubleClicked();
        break;
    case Qt::Key_Delete:
        if (common)
            deleteSchedule();
        else
            deletePersonalSchedule();
        break;
    default:
        break;
    }
}

void ScheduleView::scheduleDoubleClicked()
{
    if (!m_toolBars)
        return;
    if (m_toolBars->currentIndex() == CommonMode)
        editSchedule();
    else
        editPersonalSchedule();
}

void ScheduleView::scheduleRead(const QList<quint32> &ids)
{
    const auto schedules = LocalStorage::instance()->schedules();
    ScheduleModel::Records records;
    for (const quint32 id : ids) {
        const auto record = schedules.constFind(id);
        if (record != schedules.constEnd() && record->state == orvex::ScheduleStateActive)
            records.push_back(&*record);
    }
    const auto stored = m_model->storeRecords(records);
    if (stored.appended + stored.updated == 0)
        return;
    if (stored.appended > 0 && m_awaitedId != 0 && quint32(stored.lastAppended) == m_awaitedId) {
        m_ui->scheduleView->selectSchedule(stored.lastAppended);
        m_awaitedId = 0;
    }
    m_ui->scheduleView->sortAgain();
    updateInfoPanelDelayed();
}

void ScheduleView::scheduleRemoved(const QList<quint32> &ids)
{
    const auto schedules = LocalStorage::instance()->schedules();
    QList<quint32> active;
    for (const quint32 id : ids) {
        if (schedules.value(id).state == orvex::ScheduleStateActive)
            active.append(id);
    }
    if (m_model->removeRecords(active) > 0)
        updateInfoPanelDelayed();
}

void ScheduleView::applyFilter()
{
    const QString text = m_search ? m_search->text() : QString();
    m_hint->setText(text.isEmpty() ? QString() : tr("Ничего не найдено."));
    m_proxy->setFilterFixedString(text);
}

void ScheduleView::scheduleSelectionChanged()
{
    updateActionsEnabled();
    const int count = m_ui->scheduleView->selectedRows().size();
    if (count == 0)
        m_infoPanel->clear();
    else if (count == 1)
        updateInfoPanelDelayed();
    else
        m_infoPanel->updateInfo(count);
}

void ScheduleView::updateInfoPanelDelayed()
{
    m_infoTimer->start();
}

void ScheduleView::updateInfoPanel()
{
    const auto rows = m_ui->scheduleView->selectedRows();
    if (rows.isEmpty()) {
        m_infoPanel->clear();
        return;
    }
    if (rows.size() > 1) {
        m_infoPanel->updateInfo(rows.size());
        return;
    }
    const auto record = m_ui->scheduleView->recordOf(rows.first());
    m_infoPanel->updateInfo(record);
    if (record.type == orvex::ScheduleCalendar) {
        sendGetCalandarDays(record.id, QDate::currentDate().year());
    } else if (record.type == orvex::SchedulePersonal) {
        sendGetCalandarDays(record.id, record.startDate.year());
        requestPhoto(record.workerId);
    }
}

void ScheduleView::initWidgetContents()
{
    m_ui->setupUi(this);
    connect(m_ui->actionAddSchedule, &QAction::triggered, this, &ScheduleView::appendSchedule);
    connect(m_ui->actionEditSchedule, &QAction::triggered, this, [this] { editSchedule(); });
    connect(m_ui->actionDelSchedule, &QAction::triggered, this, &ScheduleView::deleteSchedule);
    connect(m_ui->actionAddPersonalSchedule, &QAction::triggered, this, &ScheduleView::appendPersonalSchedule);
    connect(m_ui->actionEditPersonalSchedule, &QAction::triggered, this, &ScheduleView::editPersonalSchedule);
    connect(m_ui->actionDelPersonalSchedule, &QAction::triggered, this, &ScheduleView::deletePersonalSchedule);

    m_infoPanel = new PanelInfoWidget(this);
    m_ui->panelInfo->setTitle(tr("Свойства"));
    m_ui->panelInfo->addWidget(m_infoPanel);
    m_ui->panelInfo->setTitleBarVisible(false);
    connect(this, &ScheduleView::calandarDaysReceived, m_infoPanel, &PanelInfoWidget::setCalendarDays);
    connect(m_infoPanel, &PanelInfoWidget::updateNeeded, this, &ScheduleView::updateInfoPanelDelayed);

    m_model = new ScheduleModel(this);
    m_proxy = new ScheduleProxyModel(this);
    m_proxy->setSourceModel(m_model);
    initTable();
    m_ui->splitter->installEventFilter(this);
}

void ScheduleView::fitList()
{
    // The list is what the page is for: in a narrow window the panel gives way, down to what it needs at the least.
    const int others = m_ui->frame->minimumSizeHint().width() + m_ui->splitter->handleWidth();
    const int wanted = ListLetters * fontMetrics().averageCharWidth();
    m_ui->scheduleWidget->setMinimumWidth(qBound(0, m_ui->splitter->width() - others, wanted));
}

void ScheduleView::initTable()
{
    const auto table = m_ui->scheduleView;
    table->setModels(m_model, m_proxy);
    table->addActions({m_ui->actionAddSchedule, m_ui->actionEditSchedule, m_ui->actionDelSchedule,
                       m_ui->actionAddPersonalSchedule, m_ui->actionEditPersonalSchedule,
                       m_ui->actionDelPersonalSchedule});
    m_hint = new scheduleview::EmptyListHint(table);
    connect(table, &QTableView::doubleClicked, this, &ScheduleView::scheduleDoubleClicked);
    connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ScheduleView::scheduleSelectionChanged);
    connect(this, &ScheduleView::showEditDialog, this, &ScheduleView::editSchedule, Qt::QueuedConnection);
}

void ScheduleView::initScheduleModel()
{
    const auto schedules = LocalStorage::instance()->schedules();
    ScheduleModel::Records records;
    records.reserve(std::size_t(schedules.size()));
    for (const auto &record : schedules) {
        if (record.state == orvex::ScheduleStateActive)
            records.push_back(&record);
    }
    m_model->storeRecords(records);
    m_ui->scheduleView->sortAgain();
    scheduleSelectionChanged();
}

void ScheduleView::initPluginActions()
{
    const QList<TQActionsInsertHelper::Page> pages{
        {{m_ui->actionAddSchedule}, {m_ui->actionEditSchedule, m_ui->actionDelSchedule}},
        {{m_ui->actionAddPersonalSchedule}, {m_ui->actionEditPersonalSchedule, m_ui->actionDelPersonalSchedule}}};
    m_toolBarContainer = new QWidget(this);
    const auto layout = new QHBoxLayout(m_toolBarContainer);
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);

    m_toolBars = new TQStackedToolBars(this);
    TQActionsInsertHelper::fillStackedWidget(m_toolBars, pages);
    layout->addWidget(m_toolBars);

    m_search = new SearchWidget(m_toolBarContainer);
    m_search->setMaximumWidth(400);
    m_search->setPlaceholderText(tr("Фильтр по наименованию графика работ"));
    m_search->setAdvancedButtonVisible(false);
    connect(m_search, &SearchWidget::startSearch, this, &ScheduleView::applyFilter);
    // It takes what the actions leave, and gives way before one of them goes into the overflow menu.
    layout->addWidget(m_search, 1);
    setTabOrder(m_search, m_ui->scheduleView);
    m_ui->mainToolBar->addWidget(m_toolBarContainer);
}

void ScheduleView::updateViewMode()
{
    const int mode = m_toolBars ? m_toolBars->currentIndex() : -1;
    if (mode != CommonMode && mode != PersonalMode)
        return;
    const bool common = mode == CommonMode;
    int &column = common ? m_scheduleSortColumn : m_personalSortColumn;
    int &order = common ? m_scheduleSortOrder : m_personalSortOrder;
    if (column < 0) {
        column = common ? ScheduleModel::NameColumn : ScheduleModel::PeriodColumn;
        order = common ? Qt::AscendingOrder : Qt::DescendingOrder;
    }
    static const QList<orvex::ScheduleMode> commonTypes{orvex::ScheduleFixed, orvex::ScheduleShift,
                                                        orvex::ScheduleCalendar, orvex::ScheduleFree};
    static const QList<orvex::ScheduleMode> personalTypes{orvex::SchedulePersonal};
    const auto &types = common ? commonTypes : personalTypes;
    const bool switched = m_proxy->mode() != types;
    m_proxy->setModeAndOrder(types, column, Qt::SortOrder(order));

    const auto table = m_ui->scheduleView;
    for (const int section : {ScheduleModel::NameColumn, ScheduleModel::TypeColumn})
        table->setColumnHidden(section, !common);
    for (const int section : {ScheduleModel::EmployeeColumn, ScheduleModel::NumberColumn, ScheduleModel::PeriodColumn})
        table->setColumnHidden(section, common);
    table->sortByColumn(column, Qt::SortOrder(order));
    if (switched)
        table->scrollToTop();
    showEditAction(common);
}

void ScheduleView::showEditAction(bool common)
{
    for (QAction *action : {m_ui->actionAddSchedule, m_ui->actionEditSchedule, m_ui->actionDelSchedule})
        action->setVisible(common);
    for (QAction *action :
         {m_ui->actionAddPersonalSchedule, m_ui->actionEditPersonalSchedule, m_ui->actionDelPersonalSchedule})
        action->setVisible(!common);
}

void ScheduleView::updateActionsEnabled()
{
    const int count = m_ui->scheduleView->selectedRows().size();
    const bool canCreate = RoleContainer::canCreate();
    const bool canEdit = count == 1 && RoleContainer::canUpdate();
    const bool canDelete = count >= 1 && RoleContainer::canDelete();
    m_ui->actionAddSchedule->setEnabled(canCreate);
    m_ui->actionAddPersonalSchedule->setEnabled(canCreate);
    m_ui->actionEditSchedule->setEnabled(canEdit);
    m_ui->actionEditPersonalSchedule->setEnabled(canEdit);
    m_ui->actionDelSchedule->setEnabled(canDelete);
    m_ui->actionDelPersonalSchedule->setEnabled(canDelete);
}
