#include "panelinfowidget.h"

#include "localstorage.h"
#include "scheduledescription.h"
#include "shiftguide.h"
#include "svc.h"
#include "ui_panelinfowidget.h"

#include <QEvent>
#include <QLoggingCategory>
#include <QScrollBar>
#include <QTextCursor>

#include <utility>

using orvex::LocalStorage;

namespace {

/// Only these types print hours by the shift guide; the records of all others contain their shifts.
bool hasCalendarDays(const orvex::SCHEDULE_DATA &schedule)
{
    return schedule.type == orvex::ScheduleCalendar || schedule.type == orvex::SchedulePersonal;
}

/// The year of a schedule with calendar days.
int printedYear(const orvex::SCHEDULE_DATA &schedule)
{
    return schedule.type == orvex::SchedulePersonal ? schedule.startDate.year() : QDate::currentDate().year();
}

/// Fixes the visibility of the vertical scroll bar while the text grows: every change of it lays out the whole text
/// again.
class ScrollBarHold
{
    Q_DISABLE_COPY(ScrollBarHold)

public:
    ScrollBarHold(QTextEdit *edit, int expectedHeight)
        : m_edit(edit)
    {
        const bool fits = expectedHeight <= edit->viewport()->height();
        edit->setVerticalScrollBarPolicy(fits ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAlwaysOn);
    }
    ~ScrollBarHold() { m_edit->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded); }

private:
    QTextEdit *const m_edit;
};

} // namespace

PanelInfoWidget::PanelInfoWidget(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::PanelInfoWidget>())
{
    m_ui->setupUi(this);
    m_ui->textEdit->setUndoRedoEnabled(false);
    // A column is never narrower than its words.
    m_ui->textEdit->setWordWrapMode(QTextOption::WordWrap);
    const auto storage = LocalStorage::instance();
    connect(storage, &LocalStorage::objectChanged, this, &PanelInfoWidget::onObjectsChanged);
    connect(storage, &LocalStorage::objectRemoved, this, &PanelInfoWidget::onObjectsChanged);
    connect(storage, &LocalStorage::blobChanged, this, &PanelInfoWidget::onBlobChanged);
}

PanelInfoWidget::~PanelInfoWidget() = default;

void PanelInfoWidget::clear()
{
    m_schedule = {};
    m_printed.reset();
    m_ui->textEdit->clear();
}

void PanelInfoWidget::updateInfo(int count)
{
    clear();
    QTextCursor(m_ui->textEdit->document()).insertText(tr("Выбрано графиков работ: %1").arg(count), QTextCharFormat());
}

void PanelInfoWidget::updateInfo(const orvex::SCHEDULE_DATA &schedule)
{
    m_schedule = schedule;
    if (schedule.id != m_daysId)
        m_days.setDays({});
    printSchedule(schedule);
}

void PanelInfoWidget::setCalendarDays(qint32 scheduleId, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    const auto replyYear = std::exchange(m_replyYear, std::nullopt);
    if (scheduleId != m_schedule.id) {
        qCWarning(svc()) << "wrong schedule id" << m_schedule.id << scheduleId;
        return;
    }
    if (replyYear && hasCalendarDays(m_schedule) && *replyYear != printedYear(m_schedule))
        return;
    m_days.setDays(days);
    m_daysId = scheduleId;
    if (!hasCalendarDays(m_schedule))
        return;
    printSchedule(m_schedule);
    m_schedule = {};
}

void PanelInfoWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    const bool isLookChanged = event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange;
    // The text contains colours and fonts.
    if (isLookChanged && m_printed)
        printSchedule(*m_printed);
}

void PanelInfoWidget::onObjectsChanged(const QString &dataName, const QList<quint32> &ids)
{
    if (!m_printed)
        return;
    const bool shiftsChanged = shiftguide::isGuide(dataName) && hasCalendarDays(*m_printed);
    const bool employeeChanged = dataName == orvex::SUBJECT_DATANAME && m_printed->type == orvex::SchedulePersonal
        && ids.contains(m_printed->workerId);
    if (shiftsChanged || employeeChanged)
        emit updateNeeded();
}

void PanelInfoWidget::onBlobChanged(quint32 id, const QString &name)
{
    if (!m_printed || m_printed->type != orvex::SchedulePersonal)
        return;
    if (id == m_printed->workerId && name == db::param::PHOTO)
        emit updateNeeded();
}

void PanelInfoWidget::printSchedule(const orvex::SCHEDULE_DATA &schedule)
{
    QScrollBar *const bar = m_ui->textEdit->verticalScrollBar();
    const int position = m_printed && m_printed->id == schedule.id ? bar->value() : 0;
    m_printed = schedule;
    m_ui->textEdit->clear();
    {
        const ScrollBarHold hold(m_ui->textEdit, scheduledescription::expectedHeight(schedule));
        scheduledescription::write(m_ui->textEdit->document(), schedule, m_days);
    }
    bar->setValue(position);
}
