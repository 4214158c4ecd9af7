#include "scheduleview.h"

#include "authdata.h"
#include "calendarwizardpage.h"
#include "colorselectdelegate.h"
#include "finishwizardpage.h"
#include "listselectionmodel.h"
#include "localstorage.h"
#include "newschedules.h"
#include "panelinfowidget.h"
#include "personalcalendarwizardspage.h"
#include "personalemployeewizardpage.h"
#include "personalscheduleeditdialog.h"
#include "personalschedules.h"
#include "personalschedulewizard.h"
#include "rolecontainer.h"
#include "scheduleeditdialog.h"
#include "schedulemodedelegate.h"
#include "schedulemodel.h"
#include "scheduleproxymodel.h"
#include "scheduleutil.h"
#include "schedulewizard.h"
#include "searchwidget.h"
#include "shiftwizardpage.h"
#include "svc.h"
#include "tq5sdkdata.h"
#include "tqactionsinserthelper.h"
#include "tqdatastream.h"
#include "tqglobals.h"
#include "tqstackedtoolbars.h"
#include "ui_scheduleview.h"

#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QToolTip>

#include <algorithm>

using orvex::LocalStorage;
using scheduleview::RoleContainer;

namespace {

// Widths in average letters of the font.
constexpr int ListLetters = 56;
constexpr int SearchLetters = 16;

enum ViewMode
{
    CommonMode,
    PersonalMode
};

/// First and last of the dates whose \a days are stored with a schedule; null for a type that has none. A record
/// without a start date takes the period of its first day.
QPair<QDate, QDate> calendarPeriod(const orvex::SCHEDULE_DATA &schedule,
                                   const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    const QDate date = schedule.startDate.isValid() ? schedule.startDate : days.value(0).date;
    switch (schedule.type) {
    case orvex::ScheduleCalendar:
        return {QDate(date.year(), 1, 1), QDate(date.year(), 12, 31)};
    case orvex::SchedulePersonal:
        return {QDate(date.year(), date.month(), 1), ScheduleUtil::lastOfMonth(date)};
    default:
        return {};
    }
}

/// Shows a text that its cell cuts off as a tool tip.
class ListDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override
    {
        if (event->type() != QEvent::ToolTip)
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        const bool isCut = sizeHint(option, index).width() > option.rect.width();
        const QString text = QStringLiteral("<p>%1</p>").arg(index.data().toString().toHtmlEscaped());
        QToolTip::showText(event->globalPos(), isCut ? text : QString(), view);
        return true;
    }
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
    m_ui->scheduleView->installEventFilter(this);
}

QList<CommandType> ScheduleView::init(TQServerInterface *server, const QString &name)
{
    auto types = TQPluginInterface::init(server, name);
    const CommandType type{HostCommandKind, QStringLiteral("show:%1").arg(pluginName())};
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
        handleKey(static_cast<QKeyEvent *>(event)->key());
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
        if (common)
            editSchedule();
        else
            editPersonalSchedule();
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

QString ScheduleView::newScheduleName() const
{
    constexpr int MatchesAtMost = 32;
    const QString base = tr("Новый график работы");
    const auto matches = m_model->match(m_model->index(0, ScheduleModel::NameColumn), Qt::DisplayRole, base,
                                        MatchesAtMost, Qt::MatchStartsWith | Qt::MatchWrap);
    qint64 highest = 0;
    for (const auto &match : matches) {
        QString rest = match.data().toString();
        highest = qMax<qint64>(highest, rest.remove(base).toInt());
    }
    return QStringLiteral("%1 %2").arg(base, QString::number(highest + 1));
}

void ScheduleView::appendSchedule()
{
    if (!RoleContainer::canCreate()) {
        qCWarning(svc()) << "the user has no rights";
        return;
    }
    const auto wizard = new ScheduleWizard(this);
    wizard->setScheduleName(newScheduleName());
    connect(wizard, &ScheduleWizard::showShiftGuides, this, &ScheduleView::showShiftGuides);
    connect(wizard, &ScheduleWizard::createFixedSchedule, this, &ScheduleView::createFixedSchedule);
    connect(wizard, &ScheduleWizard::createShiftSchedule, this, &ScheduleView::createShiftSchedule);
    connect(wizard, &ScheduleWizard::createUnregulSchedule, this, &ScheduleView::createUnregulSchedule);
    connect(wizard, &ScheduleWizard::createCalendarSchedule, this, &ScheduleView::createCalendarSchedule);
    openWizard(wizard);
}

template <class Wizard> void ScheduleView::openWizard(Wizard *wizard)
{
    wizard->setAttribute(Qt::WA_DeleteOnClose);
    wizard->setWindowModality(Qt::WindowModal);
    wizard->setModal(true);
    connect(this, &ScheduleView::createScheduleFinished, wizard, [this, wizard](bool ok, const QString &message) {
        if (m_answered != wizard)
            return;
        // Queued: the wizard has shown its last page before it hears of the outcome.
        const auto tell = [wizard, ok, message] { emit wizard->createScheduleFinished(ok, message); };
        QMetaObject::invokeMethod(wizard, tell, Qt::QueuedConnection);
    });
    wizard->show();
}

void ScheduleView::createFixedSchedule()
{
    if (const auto wizard = qobject_cast<ScheduleWizard *>(sender()))
        sendNewSchedule({scheduleview::fixedSchedule(*wizard->fixedPage(), QDate::currentDate()), {}, wizard});
}

void ScheduleView::createShiftSchedule()
{
    if (const auto wizard = qobject_cast<ScheduleWizard *>(sender()))
        sendNewSchedule({scheduleview::shiftSchedule(*wizard->shiftPage()), {}, wizard});
}

void ScheduleView::createUnregulSchedule()
{
    if (const auto wizard = qobject_cast<ScheduleWizard *>(sender())) {
        const QDate startDate = wizard->shiftPage()->dateStart();
        sendNewSchedule({scheduleview::freeSchedule(*wizard->freePage(), startDate), {}, wizard});
    }
}

void ScheduleView::createCalendarSchedule()
{
    if (const auto wizard = qobject_cast<ScheduleWizard *>(sender())) {
        const auto page = wizard->calendarPage();
        sendNewSchedule({scheduleview::calendarSchedule(*page), page->days(), wizard});
    }
}

void ScheduleView::appendPersonalSchedule()
{
    if (!RoleContainer::canCreate()) {
        qCWarning(svc()) << "the user has no rights";
        return;
    }
    const auto wizard = new PersonalScheduleWizard(this);
    connect(wizard, &PersonalScheduleWizard::showShiftGuides, this, &ScheduleView::showShiftGuides);
    connect(wizard, &PersonalScheduleWizard::createPersonalSchedule, this, &ScheduleView::createPersonalSchedule);
    connect(wizard, &PersonalScheduleWizard::photoRequest, this, &ScheduleView::requestPhoto);
    openWizard(wizard);
}

void ScheduleView::createPersonalSchedule()
{
    const auto wizard = qobject_cast<PersonalScheduleWizard *>(sender());
    if (!wizard)
        return;
    const quint32 workerId = wizard->employeePage()->employeeId();
    const auto worker = LocalStorage::instance()->constObject(workerId, orvex::SUBJECT_DATANAME);
    const auto page = wizard->calendarPage();
    const NewSchedule schedule{scheduleview::personalSchedule(worker, page->date(), page->color()), page->days(),
                               wizard};
    if (worker.isNull()) {
        qCWarning(svc()) << "employee of personal schedule not found" << workerId;
        reportCreation(schedule, false, tr("Сотрудник удалён, индивидуальный график не создан"));
    } else if (scheduleview::hasPersonalSchedule(workerId, page->date())) {
        qCWarning(svc()) << "found double for personal schedule" << workerId << page->date();
        const QString month = QLocale().toString(page->date(), QStringLiteral("MMMM yyyy"));
        reportCreation(
            schedule, false,
            tr("Индивидуальный график для %1 за %2 уже существует").arg(TQGlobals::objectName(worker), month));
    } else {
        sendNewSchedule(schedule);
    }
}

void ScheduleView::sendNewSchedule(const NewSchedule &schedule)
{
    m_sdk->addSchedule(schedule.record,
                       [this, schedule](Command &command) { scheduleInsertResult(command, schedule); });
}

void ScheduleView::reportCreation(const NewSchedule &schedule, bool ok, const QString &message)
{
    m_answered = schedule.wizard;
    emit createScheduleFinished(ok, message);
    m_answered.clear();
}

void ScheduleView::reportMissingDays(const NewSchedule &schedule)
{
    constexpr int NameAtMost = 80;
    QString name = schedule.record.name.simplified();
    if (name.size() > NameAtMost)
        name = name.left(NameAtMost) + QStringLiteral("…");
    const QString text =
        tr("График работ «%1» создан, но его дни не сохранены. Откройте график и задайте дни ещё раз.").arg(name);
    const auto page = schedule.wizard ? schedule.wizard->findChild<FinishWizardPage *>() : nullptr;
    if (page)
        page->setDetails(text);
    else
        showPopupCriticalMessage(text, 0);
}

void ScheduleView::editSchedule(qint32 id)
{
    if (!RoleContainer::canUpdate()) {
        qCWarning(svc()) << "the user has no rights";
        return;
    }
    const auto record = editedRecord(id);
    if (record.id == 0) {
        qCWarning(svc()) << "schedule not found" << id;
        return;
    }
    runEditor(new ScheduleEditDialog(record, this));
}

void ScheduleView::editPersonalSchedule()
{
    if (!RoleContainer::canUpdate()) {
        qCWarning(svc()) << "the user has no rights";
        return;
    }
    const auto record = editedRecord(0);
    if (record.id == 0) {
        qCWarning(svc()) << "schedule not found" << record.id;
        return;
    }
    const auto dialog = new PersonalScheduleEditDialog(record, this);
    connect(dialog, &PersonalScheduleEditDialog::photoRequest, this, &ScheduleView::requestPhoto);
    runEditor(dialog);
}

template <class Dialog> void ScheduleView::runEditor(Dialog *editor)
{
    // The page may go while the dialog is open, and takes the dialog with it.
    const QPointer<Dialog> dialog = editor;
    connect(dialog, &Dialog::calendarDaysRequest, this, &ScheduleView::sendGetCalandarDays);
    connect(this, &ScheduleView::calandarDaysReceived, dialog, &Dialog::setCalendarDays);
    connect(dialog, &Dialog::showShiftGuides, this, &ScheduleView::showShiftGuides);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    if (accepted) {
        // Kept with the request: the operator may have edited another schedule before its answer comes.
        const auto edited = dialog->schedule();
        const auto days = dialog->calendarDays();
        m_sdk->updateSchedule(edited,
                              [this, edited, days](Command &command) { scheduleUpdateResult(command, edited, days); });
    }
    dialog->deleteLater();
}

orvex::SCHEDULE_DATA ScheduleView::editedRecord(qint32 id) const
{
    if (!m_model)
        return {};
    const int row = id == 0 ? m_proxy->mapToSource(m_ui->scheduleView->currentIndex()).row() : m_model->row(id);
    return row < 0 ? orvex::SCHEDULE_DATA() : m_model->record(row);
}

void ScheduleView::deleteSchedule()
{
    if (!RoleContainer::canDelete()) {
        qCWarning(svc()) << "the user has no rights";
        return;
    }
    const auto rows = selectedRows();
    if (rows.isEmpty())
        return;
    QList<unsigned int> ids;
    for (const int row : rows)
        ids.append(unsigned(recordOf(row).id));

    // The page may go while the question is open, and takes it along.
    const QPointer<QMessageBox> box = new QMessageBox(QMessageBox::Question, tr("Удаление"), deleteQuestion(rows),
                                                      QMessageBox::Ok | QMessageBox::Cancel, this);
    box->setDefaultButton(QMessageBox::Cancel);
    // A name is what it is, even if it looks like markup.
    box->setTextFormat(Qt::PlainText);
    const bool confirmed = box->exec() == QMessageBox::Ok;
    if (!box)
        return;
    if (confirmed)
        m_sdk->removeSchedules(ids, [this](Command &command) { scheduleRemoveResult(command); });
    box->deleteLater();
}

void ScheduleView::deletePersonalSchedule()
{
    if (RoleContainer::canDelete())
        deleteSchedule();
    else
        qCWarning(svc()) << "the user has no rights";
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
        const auto index = m_proxy->mapFromSource(m_model->index(m_model->row(stored.lastAppended), 0));
        m_ui->scheduleView->setCurrentIndex(index);
        m_ui->scheduleView->selectionModel()->select(index,
                                                     QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        m_awaitedId = 0;
    }
    sortAgain();
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
    m_proxy->setFilterFixedString(m_search ? m_search->text() : QString());
}

void ScheduleView::scheduleSelectionChanged()
{
    updateActionsEnabled();
    const int count = selectedRows().size();
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
    const auto rows = selectedRows();
    if (rows.isEmpty()) {
        m_infoPanel->clear();
        return;
    }
    if (rows.size() > 1) {
        m_infoPanel->updateInfo(rows.size());
        return;
    }
    const auto record = recordOf(rows.first());
    m_infoPanel->updateInfo(record);
    if (record.type == orvex::ScheduleCalendar) {
        sendGetCalandarDays(record.id, QDate::currentDate().year());
    } else if (record.type == orvex::SchedulePersonal) {
        sendGetCalandarDays(record.id, record.startDate.year());
        requestPhoto(record.workerId);
    }
}

void ScheduleView::sendGetCalandarDays(qint32 id, int year)
{
    const QDate first(year, 1, 1);
    const QDate last(year, 12, 31);
    qCDebug(svc()) << "get calendar days" << id << first << last;
    m_sdk->getScheduleCalendar({id}, first, last, [this](Command &command) { calendarDaysReadResult(command); });
}

void ScheduleView::showShiftGuides()
{
    auto command = newCommand();
    command.setName(QStringLiteral("show:guidesview"));
    command.setPayload(writePayload(QString(orvex::SCHEDULE_SHIFT_DATANAME)));
    sendQuery(command, [this](Command &reply) { showGuidesResult(reply); });
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
    // The list is what the page is for: in a narrow window the panel gives way.
    m_ui->scheduleWidget->setMinimumWidth(ListLetters * fontMetrics().averageCharWidth());
    connect(this, &ScheduleView::calandarDaysReceived, m_infoPanel, &PanelInfoWidget::setCalendarDays);

    m_model = new ScheduleModel(this);
    m_proxy = new ScheduleProxyModel(this);
    m_proxy->setSourceModel(m_model);
    initTable();
}

void ScheduleView::initTable()
{
    const auto table = m_ui->scheduleView;
    table->addActions({m_ui->actionAddSchedule, m_ui->actionEditSchedule, m_ui->actionDelSchedule,
                       m_ui->actionAddPersonalSchedule, m_ui->actionEditPersonalSchedule,
                       m_ui->actionDelPersonalSchedule});
    table->setContextMenuPolicy(Qt::ActionsContextMenu);
    table->setModel(m_proxy);
    const auto firstSelections = table->findChildren<QItemSelectionModel *>();
    table->setSelectionModel(new scheduleview::ListSelectionModel(m_proxy, table));
    for (auto *selection : firstSelections)
        selection->deleteLater(); // a view leaves the one it had alive, and listening
    table->setItemDelegate(new ListDelegate(table));
    table->setItemDelegateForColumn(ScheduleModel::ColorColumn, new ColorSelectDelegate(table));
    table->setItemDelegateForColumn(ScheduleModel::TypeColumn, new ScheduleModeDelegate(table));

    const auto header = table->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Stretch);
    header->setSectionResizeMode(ScheduleModel::ColorColumn, QHeaderView::ResizeToContents);
    header->setSortIndicator(ScheduleModel::NameColumn, Qt::AscendingOrder);
    header->setTextElideMode(Qt::ElideRight);
    // All samples are of one size: no need to measure a thousand of them at every change.
    header->setResizeContentsPrecision(0);

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
    sortAgain();
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
    // It takes what the actions leave: none of them may go into the overflow menu for its sake.
    m_search->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_search->setMinimumWidth(SearchLetters * fontMetrics().averageCharWidth());
    m_search->setPlaceholderText(tr("Фильтр по наименованию графика работ"));
    m_search->setAdvancedButtonVisible(false);
    connect(m_search, &SearchWidget::startSearch, this, &ScheduleView::applyFilter);
    layout->addWidget(m_search);
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
    for (const int section : {ScheduleModel::WorkerColumn, ScheduleModel::NumberColumn, ScheduleModel::PeriodColumn})
        table->setColumnHidden(section, common);
    table->sortByColumn(column, Qt::SortOrder(order));
    if (switched)
        table->scrollToTop();
    showEditAction(common);
}

void ScheduleView::sortAgain()
{
    const auto header = m_ui->scheduleView->horizontalHeader();
    m_ui->scheduleView->sortByColumn(header->sortIndicatorSection(), header->sortIndicatorOrder());
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
    const int count = selectedRows().size();
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

QList<int> ScheduleView::selectedRows() const
{
    QList<int> rows;
    for (const auto &range : m_ui->scheduleView->selectionModel()->selection()) {
        for (int row = range.top(); range.isValid() && row <= range.bottom(); ++row)
            rows.append(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

orvex::SCHEDULE_DATA ScheduleView::recordOf(int proxyRow) const
{
    return m_model->record(m_proxy->mapToSource(m_proxy->index(proxyRow, 0)).row());
}

QString ScheduleView::deleteQuestion(const QList<int> &rows) const
{
    if (rows.size() == 1)
        return tr("Удалить") + QStringLiteral(" %1 \"%2\"?").arg(tr("график работы"), recordOf(rows.first()).name);
    return tr("Удалить") + QStringLiteral(" %1 %2?").arg(QString::number(rows.size()), tr("графиков(а) работ"));
}

void ScheduleView::requestPhoto(quint32 workerId)
{
    const QString name = db::param::PHOTO;
    const auto md5 = LocalStorage::instance()->blobMd5(workerId, name);
    m_sdk->getBlobDataChange({{workerId, name, md5}}, [this](Command &command) { blobDataRead(command); });
}

void ScheduleView::showDialog(Command &command)
{
    qint32 id = 0;
    const bool read = readPayload(command.payload(), id);
    qCDebug(svc()) << "show dialog" << id;
    if (!RoleContainer::canShow() || !RoleContainer::canUpdate()) {
        qCWarning(svc()) << "no rights to show dialog";
        command.setPayload(writePayload(QStringLiteral("norights")));
        sendReply(command);
        return;
    }
    if (read && m_model && m_model->row(id) >= 0)
        emit showEditDialog(id);
    else
        qCWarning(svc()) << "schedule not found" << id;
}

void ScheduleView::scheduleInsertResult(Command &command, const NewSchedule &schedule)
{
    const QString error = tr("Ошибка добавления графика работ");
    if (reportFailure(command, "create schedule error", error)) {
        reportCreation(schedule, false, error);
        return;
    }
    qint32 id = 0;
    if (!readPayload(command.payload(), id)) {
        qCWarning(svc()) << "broken create schedule reply";
        showPopupCriticalMessage(error, 0);
        reportCreation(schedule, false, error);
        return;
    }
    m_awaitedId = quint32(id);
    const auto period = calendarPeriod(schedule.record, schedule.days);
    if (period.first.isNull()) {
        reportCreation(schedule, true, {});
        return;
    }
    m_sdk->updateScheduleCalendar(id, period.first, period.second, schedule.days,
                                  [this, schedule](Command &reply) { calendarDaysInsertResult(reply, schedule); });
}

void ScheduleView::calendarDaysInsertResult(Command &command, const NewSchedule &schedule)
{
    reportCreation(schedule, command.isSuccess(), {});
    if (reportFailure(command, "create schedule days error", tr("Ошибка добавления графика работ")))
        reportMissingDays(schedule);
}

void ScheduleView::scheduleUpdateResult(Command &command, const orvex::SCHEDULE_DATA &record,
                                        const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    if (reportFailure(command, "update schedule error", tr("Ошибка обновления графика работ")))
        return;
    const auto period = calendarPeriod(record, days);
    if (period.first.isNull())
        return;
    m_sdk->updateScheduleCalendar(record.id, period.first, period.second, days,
                                  [this](Command &reply) { calendarDaysUpdateResult(reply); });
}

void ScheduleView::calendarDaysUpdateResult(Command &command)
{
    reportFailure(command, "update schedule days error", tr("Ошибка обновления графика работ"));
}

void ScheduleView::scheduleRemoveResult(Command &command)
{
    reportFailure(command, "delete schedule error", tr("Ошибка удаления графика работ"));
}

void ScheduleView::calendarDaysReadResult(Command &command)
{
    if (reportFailure(command, "read calendar days error", tr("Ошибка чтения расписания графика работ")))
        return;
    QList<int> ids;
    QDate first;
    QDate last;
    QHash<int, QList<orvex::SCHEDULE_CALENDAR_DAY>> days;
    if (!readPayload(command.payload(), ids, first, last, days))
        qCWarning(svc()) << "broken calendar days reply";
    else if (!ids.isEmpty())
        emit calandarDaysReceived(ids.first(), days.value(ids.first()));
}

void ScheduleView::blobDataRead(Command &command)
{
    if (reportFailure(command, "blob data read error", {}))
        return;
    QHash<quint32, QHash<QString, QByteArray>> blobs;
    if (!readPayload(command.payload(), blobs)) {
        qCWarning(svc()) << "broken blob data reply";
        return;
    }
    for (auto it = blobs.cbegin(); it != blobs.cend(); ++it) {
        qCDebug(svc()) << "read blob" << it.key() << it->keys();
        const auto photo = it->constFind(db::param::PHOTO);
        if (photo != it->constEnd())
            LocalStorage::instance()->setBlob(it.key(), photo.key(), *photo);
    }
    if (!blobs.isEmpty())
        updateInfoPanelDelayed();
}

void ScheduleView::showGuidesResult(Command &command)
{
    if (command.isSuccess())
        return;
    QString text;
    if (!readPayload(command.payload(), text))
        text = QStringLiteral("without a text");
    qCWarning(svc()).noquote() << "show guides error" << command.result() << text;
}

bool ScheduleView::reportFailure(const Command &command, const char *key, const QString &popup)
{
    if (command.isSuccess())
        return false;
    qCWarning(svc()) << key << command.result();
    if (!popup.isEmpty())
        showPopupCriticalMessage(popup, 0);
    return true;
}
