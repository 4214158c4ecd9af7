#include "scheduleview.h"

#include "authdata.h"
#include "calendarwizardpage.h"
#include "datanames.h"
#include "deletequestion.h"
#include "emptylisthint.h"
#include "hostcommands.h"
#include "listwidth.h"
#include "localstorage.h"
#include "newschedulename.h"
#include "panelinfowidget.h"
#include "personalscheduleeditdialog.h"
#include "personalschedulewizard.h"
#include "rolecontainer.h"
#include "schedulecreation.h"
#include "scheduleeditdialog.h"
#include "schedulefactory.h"
#include "schedulelistupdater.h"
#include "schedulemodel.h"
#include "scheduleproxymodel.h"
#include "schedulerequests.h"
#include "schedulewizard.h"
#include "searchwidget.h"
#include "shiftwizardpage.h"
#include "svc.h"
#include "tq5sdkdata.h"
#include "tqactionsinserthelper.h"
#include "tqdatastream.h"
#include "tqserverinterface.h"
#include "tqstackedtoolbars.h"
#include "ui_scheduleview.h"

#include <QKeyEvent>
#include <QLoggingCategory>
#include <QTimer>

using orvex::LocalStorage;
using scheduleview::RoleContainer;
using scheduleview::ScheduleCreation;
using scheduleview::ScheduleRequests;

namespace {

enum ViewMode
{
    CommonMode,
    PersonalMode
};

/// Returns \a granted and logs a missing right.
bool checkRight(bool granted)
{
    if (!granted)
        qCWarning(svc()) << "the user has no rights";
    return granted;
}

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
    initRequests();
    initWidgetContents();
    initScheduleModel();
    initPluginActions();
    updateViewMode();
    connectSignals();
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
    if (m_toolBars && watched == m_ui->scheduleView && event->type() == QEvent::KeyPress) {
        const QPointer<ScheduleView> page = this;
        // A key that is held down opens only one window.
        if (const auto *pressed = static_cast<QKeyEvent *>(event); !pressed->isAutoRepeat())
            handleKey(pressed->key());
        // The page and its table may be destroyed while the window that the key opened is open.
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
    if (m_list->read(ids))
        updateInfoPanelDelayed();
}

void ScheduleView::scheduleRemoved(const QList<quint32> &ids)
{
    if (m_list->remove(ids))
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
        m_requests->readPhoto(record.workerId);
    }
}

void ScheduleView::initRequests()
{
    const auto showFailure = [this](const QString &message) { showPopupCriticalMessage(message, 0); };
    m_requests = new ScheduleRequests(m_sdk, this, this);
    connect(m_requests, &ScheduleRequests::failed, this, showFailure);
    connect(m_requests, &ScheduleRequests::calendarDaysRead, this, &ScheduleView::reportCalendarDays);
    connect(m_requests, &ScheduleRequests::photosRead, this, &ScheduleView::updateInfoPanelDelayed);
    m_creation = new ScheduleCreation(m_requests, this);
    connect(m_creation, &ScheduleCreation::failed, this, showFailure);
    connect(m_creation, &ScheduleCreation::recordAdded, this, [this](quint32 id) { m_list->selectWhenRead(id); });
    connect(m_creation, &ScheduleCreation::finished, this, &ScheduleView::reportCreation);
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
    connect(this, &ScheduleView::calendarYearReceived, m_infoPanel, &PanelInfoWidget::setReplyYear);
    connect(this, &ScheduleView::calandarDaysReceived, m_infoPanel, &PanelInfoWidget::setCalendarDays);
    connect(m_infoPanel, &PanelInfoWidget::updateNeeded, this, &ScheduleView::updateInfoPanelDelayed);

    m_model = new ScheduleModel(this);
    m_proxy = new ScheduleProxyModel(this);
    m_proxy->setSourceModel(m_model);
    initTable();
    new scheduleview::ListWidth(m_ui->splitter);
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
    m_list = std::make_unique<scheduleview::ScheduleListUpdater>(m_model, m_ui->scheduleView);
    m_list->fill();
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
    // It takes the space that the actions leave, and shrinks before an action moves to the overflow menu.
    layout->addWidget(m_search, 1);
    setTabOrder(m_search, m_ui->scheduleView);
    m_ui->mainToolBar->addWidget(m_toolBarContainer);
}

void ScheduleView::connectSignals()
{
    const auto storage = LocalStorage::instance();
    connect(storage, &LocalStorage::scheduleChanged, this, &ScheduleView::scheduleRead);
    connect(storage, &LocalStorage::scheduleRemoved, this, &ScheduleView::scheduleRemoved);
    connect(AuthData::instance(), &AuthData::rolesChanged, this, &ScheduleView::updateActionsEnabled);
    connect(server(), &TQServerInterface::connectedChanged, this, [this](bool connected) {
        if (connected)
            emit connectionRestored();
    });
    connect(this, &ScheduleView::connectionRestored, this, &ScheduleView::updateInfoPanelDelayed);
}

void ScheduleView::updateViewMode()
{
    const int mode = m_toolBars ? m_toolBars->currentIndex() : -1;
    if (mode != CommonMode && mode != PersonalMode)
        return;
    const bool common = mode == CommonMode;
    const int column = common ? ScheduleModel::NameColumn : ScheduleModel::PeriodColumn;
    const auto order = common ? Qt::AscendingOrder : Qt::DescendingOrder;
    static const QList<orvex::ScheduleMode> commonTypes{orvex::ScheduleFixed, orvex::ScheduleShift,
                                                        orvex::ScheduleCalendar, orvex::ScheduleFree};
    static const QList<orvex::ScheduleMode> personalTypes{orvex::SchedulePersonal};
    const auto &types = common ? commonTypes : personalTypes;
    const bool switched = m_proxy->mode() != types;
    m_proxy->setModeAndOrder(types, column, order);

    const auto table = m_ui->scheduleView;
    for (const int section : {ScheduleModel::NameColumn, ScheduleModel::TypeColumn})
        table->setColumnHidden(section, !common);
    for (const int section : {ScheduleModel::EmployeeColumn, ScheduleModel::NumberColumn, ScheduleModel::PeriodColumn})
        table->setColumnHidden(section, common);
    table->sortByColumn(column, order);
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

QString ScheduleView::newScheduleName() const
{
    return scheduleview::newScheduleName(*m_model);
}

void ScheduleView::appendSchedule()
{
    if (!checkRight(RoleContainer::canCreate()))
        return;
    const auto wizard = new ScheduleWizard(this);
    wizard->setScheduleName(newScheduleName());
    connect(wizard, &ScheduleWizard::showShiftGuides, this, &ScheduleView::showShiftGuides);
    connect(wizard, &ScheduleWizard::createFixedSchedule, this, &ScheduleView::createFixedSchedule);
    connect(wizard, &ScheduleWizard::createShiftSchedule, this, &ScheduleView::createShiftSchedule);
    connect(wizard, &ScheduleWizard::createUnregulSchedule, this, &ScheduleView::createUnregulSchedule);
    connect(wizard, &ScheduleWizard::createCalendarSchedule, this, &ScheduleView::createCalendarSchedule);
    openWizard(wizard);
}

void ScheduleView::appendPersonalSchedule()
{
    if (!checkRight(RoleContainer::canCreate()))
        return;
    const auto wizard = new PersonalScheduleWizard(this);
    connect(wizard, &PersonalScheduleWizard::showShiftGuides, this, &ScheduleView::showShiftGuides);
    connect(wizard, &PersonalScheduleWizard::createPersonalSchedule, this, &ScheduleView::createPersonalSchedule);
    connect(wizard, &PersonalScheduleWizard::photoRequest, m_requests, &ScheduleRequests::readPhoto);
    openWizard(wizard);
}

void ScheduleView::openWizard(CreationWizard *wizard)
{
    wizard->setAttribute(Qt::WA_DeleteOnClose);
    wizard->setWindowModality(Qt::WindowModal);
    wizard->setModal(true);
    wizard->show();
}

void ScheduleView::createFixedSchedule()
{
    if (const auto wizard = qobject_cast<ScheduleWizard *>(sender()))
        m_creation->create({scheduleview::fixedSchedule(*wizard->fixedPage(), QDate::currentDate()), {}, wizard});
}

void ScheduleView::createShiftSchedule()
{
    if (const auto wizard = qobject_cast<ScheduleWizard *>(sender()))
        m_creation->create({scheduleview::shiftSchedule(*wizard->shiftPage()), {}, wizard});
}

void ScheduleView::createUnregulSchedule()
{
    if (const auto wizard = qobject_cast<ScheduleWizard *>(sender())) {
        const QDate startDate = wizard->shiftPage()->dateStart();
        m_creation->create({scheduleview::freeSchedule(*wizard->freePage(), startDate), {}, wizard});
    }
}

void ScheduleView::createCalendarSchedule()
{
    if (const auto wizard = qobject_cast<ScheduleWizard *>(sender())) {
        const auto page = wizard->calendarPage();
        m_creation->create({scheduleview::calendarSchedule(*page), page->days(), wizard});
    }
}

void ScheduleView::createPersonalSchedule()
{
    if (const auto wizard = qobject_cast<PersonalScheduleWizard *>(sender()))
        m_creation->createPersonal(wizard);
}

void ScheduleView::reportCreation(CreationWizard *wizard, bool ok, const QString &message)
{
    QMetaObject::Connection toWizard;
    // Queued: the wizard shows its last page before the outcome arrives there.
    if (wizard)
        toWizard = connect(this, &ScheduleView::createScheduleFinished, wizard, &CreationWizard::reportOutcome,
                           Qt::QueuedConnection);
    emit createScheduleFinished(ok, message);
    disconnect(toWizard);
}

void ScheduleView::editSchedule(qint32 id)
{
    if (!checkRight(RoleContainer::canUpdate()))
        return;
    const auto record = editedRecord(id);
    if (record.id == 0) {
        qCWarning(svc()) << "schedule not found" << id;
        return;
    }
    if (record.type != orvex::SchedulePersonal) {
        runEditor(new ScheduleEditDialog(record, this));
        return;
    }
    const auto dialog = new PersonalScheduleEditDialog(record, this);
    connect(dialog, &PersonalScheduleEditDialog::photoRequest, m_requests, &ScheduleRequests::readPhoto);
    runEditor(dialog);
}

void ScheduleView::editPersonalSchedule()
{
    editSchedule();
}

orvex::SCHEDULE_DATA ScheduleView::editedRecord(qint32 id) const
{
    if (!m_model)
        return {};
    return id == 0 ? m_ui->scheduleView->recordOf(m_ui->scheduleView->currentIndex().row())
                   : m_model->record(m_model->row(id));
}

template <class Dialog> void ScheduleView::runEditor(Dialog *editor)
{
    // The page may be destroyed while the dialog is open, and the dialog with it.
    const QPointer<Dialog> dialog = editor;
    connect(dialog, &Dialog::calendarDaysRequest, this, &ScheduleView::sendGetCalandarDays);
    connect(this, &ScheduleView::calendarYearReceived, dialog, &Dialog::setReplyYear);
    connect(this, &ScheduleView::calandarDaysReceived, dialog, &Dialog::setCalendarDays);
    connect(dialog, &Dialog::showShiftGuides, this, &ScheduleView::showShiftGuides);
    connect(this, &ScheduleView::connectionRestored, dialog, &Dialog::requestMissingDays);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    if (accepted)
        m_requests->updateSchedule(dialog->schedule(), dialog->calendarDays());
    dialog->deleteLater();
}

void ScheduleView::deleteSchedule()
{
    if (!checkRight(RoleContainer::canDelete()))
        return;
    QList<unsigned int> ids;
    QStringList names;
    for (const int row : m_ui->scheduleView->selectedRows()) {
        const auto record = m_ui->scheduleView->recordOf(row);
        ids.append(unsigned(record.id));
        names.append(record.name);
    }
    if (!ids.isEmpty() && scheduleview::confirmDeletion(this, names))
        m_requests->removeSchedules(ids);
}

void ScheduleView::deletePersonalSchedule()
{
    deleteSchedule();
}

void ScheduleView::sendGetCalandarDays(qint32 id, int year)
{
    m_requests->readCalendarDays(id, year);
}

void ScheduleView::reportCalendarDays(int scheduleId, const QDate &first,
                                      const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    if (first.isValid())
        emit calendarYearReceived(first.year());
    emit calandarDaysReceived(scheduleId, days);
}

void ScheduleView::showShiftGuides()
{
    if (m_requests)
        m_requests->showGuide(orvex::SCHEDULE_SHIFT_DATANAME);
}

void ScheduleView::showDialog(Command &command)
{
    qint32 id = 0;
    const bool read = readPayload(command.payload(), id);
    qCDebug(svc()) << "show dialog" << id;
    if (!RoleContainer::canShow() || !RoleContainer::canUpdate()) {
        qCWarning(svc()) << "no rights to show dialog";
        command.setPayload(writePayload(QString(hostcommand::NoRights)));
        sendReply(command);
        return;
    }
    if (read && m_model && m_model->row(id) >= 0)
        emit showEditDialog(id);
    else
        qCWarning(svc()) << "schedule not found" << id;
}
