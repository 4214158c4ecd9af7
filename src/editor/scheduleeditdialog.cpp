#include "scheduleeditdialog.h"

#include "calendardaysloader.h"
#include "scheduletypes.h"
#include "scheduleutil.h"
#include "ui_scheduleeditdialog.h"
#include "windowsize.h"
#include "workmodeeditor.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

namespace {

/// Length of a working day in seconds; if it finishes before it starts, it ends on the next day.
int spanOf(const QTime &start, const QTime &finish)
{
    const int span = ScheduleUtil::secondsOf(finish) - ScheduleUtil::secondsOf(start);
    return span < 0 ? span + ScheduleUtil::SecondsPerDay : span;
}

} // namespace

ScheduleEditDialog::ScheduleEditDialog(const orvex::SCHEDULE_DATA &schedule, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::ScheduleEditDialog>())
    , m_schedule(schedule)
{
    m_ui->setupUi(this);
    m_calendarDays = new CalendarDaysLoader(m_schedule.id, m_ui->calendarWidget);
    initTypes();
    initScalars();
    initWorkMode();
    connectControls();
    applyMode();
    initFreeLimits();
    connect(m_ui->nameWidget, &ScheduleNameWidget::colorChanged, m_ui->calendarWidget, &CalendarYearWidget::setColor);
    updateButtonsEnabled();
    initToolButtons();
    setStartSize();
    m_ui->nameWidget->setFocus();
}

ScheduleEditDialog::~ScheduleEditDialog() = default;

orvex::SCHEDULE_DATA ScheduleEditDialog::schedule() const
{
    return m_schedule;
}

int ScheduleEditDialog::calendarYear() const
{
    return m_ui->calendarWidget->year();
}

QList<orvex::SCHEDULE_CALENDAR_DAY> ScheduleEditDialog::calendarDays() const
{
    return m_ui->calendarWidget->days();
}

void ScheduleEditDialog::initTypes()
{
    auto *types = m_ui->cbScheduleType;
    for (const int type : {orvex::ScheduleFixed, orvex::ScheduleShift, orvex::ScheduleCalendar, orvex::ScheduleFree})
        types->addItem(scheduleview::scheduleTypeName(type), type);
    types->setCurrentIndex(types->findData(int(m_schedule.type)));
    connect(types, qOverload<int>(&QComboBox::currentIndexChanged), this, &ScheduleEditDialog::slotTypeChanged);
    types->setEnabled(false);
}

void ScheduleEditDialog::initScalars()
{
    m_ui->dateWidget->setVisible(m_schedule.type == orvex::ScheduleShift);
    connect(m_ui->rbCalendar, &QRadioButton::toggled, m_ui->deStartDate, &QWidget::setEnabled);
    const bool byCalendar = m_schedule.startDate.isValid();
    m_ui->deStartDate->setDate(byCalendar ? m_schedule.startDate : QDate::currentDate());
    (byCalendar ? m_ui->rbCalendar : m_ui->rbEmployee)->setChecked(true);

    m_ui->nameWidget->setName(m_schedule.name);
    m_ui->nameWidget->setColorName(m_schedule.color);
    m_ui->cbUseHolidays->setChecked(m_schedule.useHolidays == 1);
}

void ScheduleEditDialog::initWorkMode()
{
    auto *days = m_ui->tvMode;
    auto *shifts = m_ui->tvShift;
    auto *times = m_ui->tvTime;
    m_workMode = std::make_unique<WorkModeEditor>(&m_schedule, WorkModeEditor::Views{days, shifts, times}, this);
    for (QTableView *view : {days, shifts, times}) {
        view->verticalHeader()->setDefaultSectionSize(m_ui->cbScheduleType->sizeHint().height());
        view->installEventFilter(this);
        // A view reports the new current row before the old one is removed.
        connect(view->model(), &QAbstractItemModel::rowsRemoved, this, &ScheduleEditDialog::updateButtonsEnabled);
    }
    const auto rowChanged = &QItemSelectionModel::currentRowChanged;
    connect(days->selectionModel(), rowChanged, this, &ScheduleEditDialog::slotDayDataChanged);
    connect(shifts->selectionModel(), rowChanged, this, &ScheduleEditDialog::slotShiftCurrentChanged);
    connect(times->selectionModel(), rowChanged, this, &ScheduleEditDialog::slotTimeCurrentChangedf);
    connect(times->model(), &QAbstractItemModel::modelReset, this, &ScheduleEditDialog::updateButtonsEnabled);
    showPeriod();
    if (!m_schedule.shifts.isEmpty())
        shifts->setCurrentIndex(shifts->model()->index(0, 0));
}

void ScheduleEditDialog::connectControls()
{
    connect(m_ui->tbMoveUp, &QToolButton::clicked, this, &ScheduleEditDialog::moveTimeUp);
    connect(m_ui->tbMoveDown, &QToolButton::clicked, this, &ScheduleEditDialog::moveTimeDown);
    connect(m_ui->tvMode, &QWidget::customContextMenuRequested, this,
            &ScheduleEditDialog::slotModeContextMenuRequested);
    connect(m_ui->deStartDate, &QDateEdit::dateChanged, this, &ScheduleEditDialog::startDateChanged);
    connect(m_ui->rbCalendar, &QRadioButton::clicked, this, &ScheduleEditDialog::startDateChanged);
    connect(m_ui->rbEmployee, &QRadioButton::clicked, this, &ScheduleEditDialog::startDateChanged);
    connect(m_ui->calendarWidget, &CalendarYearWidget::yearChanged, this, &ScheduleEditDialog::slotCalendarYearChanged);
    connect(m_ui->calendarWidget, &CalendarYearWidget::showShiftGuides, this, &ScheduleEditDialog::showShiftGuides);
    connect(m_calendarDays, &CalendarDaysLoader::daysRequest, this, &ScheduleEditDialog::calendarDaysRequest);
}

void ScheduleEditDialog::initFreeLimits()
{
    auto *limits = m_ui->freeLimits;
    connect(limits, &FreeLimitsWidget::spanChanged, this, &ScheduleEditDialog::updateFreeNorm);
    connect(limits, &FreeLimitsWidget::normSwitchedOn, this, &ScheduleEditDialog::updateFreeNorm);
    connect(limits, &FreeLimitsWidget::normChanged, this, &ScheduleEditDialog::updateFreeBreak);
    connect(limits, &FreeLimitsWidget::breakSwitchedOn, this, &ScheduleEditDialog::updateFreeBreak);
    limits->setLimits(m_schedule.freeStart, m_schedule.freeFinish, m_schedule.freeNorm, m_schedule.freeBreak);
}

void ScheduleEditDialog::initToolButtons()
{
    // The icons grow with the font.
    const int side = qMax(16, fontMetrics().height());
    for (QToolButton *button : {m_ui->tbAddDay, m_ui->tbDelDay, m_ui->tbAddShift, m_ui->tbDelShift, m_ui->tbAddTime,
                                m_ui->tbDelTime, m_ui->tbMoveUp, m_ui->tbMoveDown})
        button->setIconSize(QSize(side, side));
}

void ScheduleEditDialog::setStartSize()
{
    const bool calendar = m_schedule.type == orvex::ScheduleCalendar;
    resize(scheduleview::windowSize(*this, calendar ? QSize(200, 45) : QSize(84, 34)));
}

void ScheduleEditDialog::slotTypeChanged(int index)
{
    if (index < 0)
        return;
    m_schedule.type = orvex::ScheduleMode(m_ui->cbScheduleType->itemData(index).toInt());
    applyMode();
    updateButtonsEnabled();
}

void ScheduleEditDialog::applyMode()
{
    switch (m_schedule.type) {
    case orvex::ScheduleFixed:
        m_ui->stackedWidget->setCurrentWidget(m_ui->shiftPage);
        applyFixedMode();
        break;
    case orvex::ScheduleShift:
        m_ui->stackedWidget->setCurrentWidget(m_ui->shiftPage);
        setShiftsEnabled(true);
        startDateChanged();
        break;
    case orvex::ScheduleCalendar:
        m_ui->stackedWidget->setCurrentWidget(m_ui->calendarPage);
        applyCalendarMode();
        break;
    case orvex::ScheduleFree:
        m_ui->stackedWidget->setCurrentWidget(m_ui->freePage);
        m_workMode->removeAllDays();
        setShiftsEnabled(false);
        break;
    default:
        m_ui->stackedWidget->setCurrentWidget(m_ui->freePage);
        break;
    }
    showPeriod();
}

void ScheduleEditDialog::applyFixedMode()
{
    setShiftsEnabled(true);
    m_workMode->makeWeek();
    m_ui->deStartDate->setDate(ScheduleUtil::mondayOf(m_ui->deStartDate->date()));
    startDateChanged();
}

void ScheduleEditDialog::applyCalendarMode()
{
    m_workMode->removeAllDays();
    setShiftsEnabled(false);
    m_ui->calendarWidget->setColor(m_ui->nameWidget->colorName());
    m_ui->calendarWidget->setEnabled(false);
    m_calendarDays->requestLater(calendarYear());
}

void ScheduleEditDialog::setShiftsEnabled(bool enabled)
{
    m_ui->gbShifts->setEnabled(enabled);
    m_ui->gbTimes->setEnabled(enabled);
}

void ScheduleEditDialog::startDateChanged()
{
    m_workMode->setReferenceDate(m_ui->rbCalendar->isChecked() ? m_ui->deStartDate->date() : QDate());
}

void ScheduleEditDialog::showPeriod()
{
    const QString caption = m_ui->labelNumDay->text().section(QLatin1Char(':'), 0, 0);
    m_ui->labelNumDay->setText(QStringLiteral("%1: %2").arg(caption).arg(m_schedule.days.size()));
}

void ScheduleEditDialog::updateButtonsEnabled()
{
    const bool byCycle = m_schedule.type == orvex::ScheduleShift;
    const auto time = m_ui->tvTime->currentIndex();
    m_ui->tbAddDay->setEnabled(byCycle);
    m_ui->tbDelDay->setEnabled(byCycle && m_ui->tvMode->currentIndex().isValid());
    m_ui->tbAddShift->setEnabled(true);
    m_ui->tbAddTime->setEnabled(true);
    m_ui->tbDelShift->setEnabled(m_ui->tvShift->currentIndex().isValid());
    m_ui->tbDelTime->setEnabled(time.isValid());
    m_ui->tbMoveUp->setEnabled(time.isValid() && time.row() > 0);
    m_ui->tbMoveDown->setEnabled(time.isValid() && time.row() < m_ui->tvTime->model()->rowCount() - 1);
}

void ScheduleEditDialog::slotDayDataChanged()
{
    updateButtonsEnabled();
}

void ScheduleEditDialog::slotShiftCurrentChanged(const QModelIndex &current)
{
    m_workMode->setCurrentShift(current.row());
    updateButtonsEnabled();
}

void ScheduleEditDialog::slotTimeCurrentChangedf()
{
    updateButtonsEnabled();
}

void ScheduleEditDialog::moveTimeUp()
{
    m_workMode->moveTime(-1);
}

void ScheduleEditDialog::moveTimeDown()
{
    m_workMode->moveTime(1);
}

bool ScheduleEditDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && m_workMode->handleKey(watched, static_cast<QKeyEvent *>(event)->key()))
        return true;
    return QDialog::eventFilter(watched, event);
}

void ScheduleEditDialog::slotModeContextMenuRequested(const QPoint &pos)
{
    auto *menu = m_workMode->createShiftMenu(this);
    connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
    connect(menu, &QMenu::triggered, this, &ScheduleEditDialog::slotModeShiftSelected);
    menu->popup(m_ui->tvMode->viewport()->mapToGlobal(pos));
}

void ScheduleEditDialog::slotModeShiftSelected(QAction *action)
{
    if (action)
        m_workMode->setSelectedDays(action->data().toInt());
}

void ScheduleEditDialog::on_tabWidget_currentChanged(int index)
{
    if (index == 0)
        m_ui->tvMode->viewport()->update();
}

void ScheduleEditDialog::on_tbAddDay_clicked()
{
    m_workMode->addDay();
    showPeriod();
}

void ScheduleEditDialog::on_tbDelDay_clicked()
{
    m_workMode->removeDay();
    showPeriod();
}

void ScheduleEditDialog::on_tbAddShift_clicked()
{
    m_workMode->addShift();
}

void ScheduleEditDialog::on_tbDelShift_clicked()
{
    m_workMode->removeShift();
}

void ScheduleEditDialog::on_tbAddTime_clicked()
{
    if (m_ui->tvShift->currentIndex().isValid())
        m_workMode->addTime();
}

void ScheduleEditDialog::on_tbDelTime_clicked()
{
    m_workMode->removeTime();
}

void ScheduleEditDialog::updateFreeNorm()
{
    auto *limits = m_ui->freeLimits;
    if (limits->usesStart() && limits->usesFinish() && limits->usesNorm())
        limits->proposeNorm(qMax(0, spanOf(limits->startTime(), limits->finishTime()) - limits->freeBreak()));
}

void ScheduleEditDialog::updateFreeBreak()
{
    auto *limits = m_ui->freeLimits;
    if (limits->usesStart() && limits->usesFinish() && limits->usesNorm() && limits->usesBreak())
        limits->proposeBreak(qMax(0, spanOf(limits->startTime(), limits->finishTime()) - limits->freeNorm()));
}

void ScheduleEditDialog::slotCalendarYearChanged(int year)
{
    QWidget *focus = QApplication::focusWidget();
    if (m_ui->calendarWidget->isAncestorOf(focus))
        m_calendarFocus = focus;
    m_ui->calendarWidget->setEnabled(false);
    m_calendarDays->request(year);
}

void ScheduleEditDialog::requestMissingDays()
{
    m_calendarDays->requestMissing();
}

void ScheduleEditDialog::setReplyYear(int year)
{
    m_calendarDays->setReplyYear(year);
}

void ScheduleEditDialog::setCalendarDays(qint32 scheduleId, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    if (!m_calendarDays->setDays(scheduleId, days))
        return;
    m_ui->calendarWidget->setEnabled(true);
    if (m_calendarFocus)
        m_calendarFocus->setFocus();
    m_calendarFocus.clear();
}

void ScheduleEditDialog::on_buttonBox_accepted()
{
    writeScalars();
    m_workMode->finish();
    accept();
}

void ScheduleEditDialog::on_buttonBox_rejected()
{
    reject();
}

void ScheduleEditDialog::writeScalars()
{
    const bool perEmployee = m_schedule.type == orvex::ScheduleShift && !m_ui->rbCalendar->isChecked();
    m_schedule.name = m_ui->nameWidget->name();
    m_schedule.color = m_ui->nameWidget->colorName();
    m_schedule.startDate = perEmployee ? QDate() : m_ui->deStartDate->date();
    m_schedule.useHolidays = m_ui->cbUseHolidays->isChecked() ? 1 : 0;
    m_schedule.freeStart = m_ui->freeLimits->freeStart();
    m_schedule.freeFinish = m_ui->freeLimits->freeFinish();
    m_schedule.freeNorm = m_ui->freeLimits->freeNorm();
    m_schedule.freeBreak = m_ui->freeLimits->freeBreak();
}
