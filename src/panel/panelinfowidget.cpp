#include "panelinfowidget.h"

#include "scheduledescription.h"
#include "svc.h"
#include "ui_panelinfowidget.h"

#include <QEvent>
#include <QLoggingCategory>
#include <QScrollBar>
#include <QTextCursor>

namespace {

/// Keeps the vertical scroll bar as the text will need it: one that comes or goes with every step of the text's growth
/// has the whole text laid out anew.
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
}

PanelInfoWidget::~PanelInfoWidget() = default;

void PanelInfoWidget::clear()
{
    m_schedule = {};
    m_printed = {};
    m_count = 0;
    m_ui->textEdit->clear();
}

void PanelInfoWidget::updateInfo(int count)
{
    clear();
    m_count = count;
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
    if (scheduleId != m_schedule.id) {
        qCWarning(svc()) << "wrong schedule id" << m_schedule.id << scheduleId;
        return;
    }
    m_days.setDays(days);
    m_daysId = scheduleId;
    if (m_schedule.type != orvex::ScheduleCalendar && m_schedule.type != orvex::SchedulePersonal)
        return;
    updateInfo(orvex::SCHEDULE_DATA(m_schedule));
    m_schedule = {};
}

void PanelInfoWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    const bool look = event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange;
    // Colours and fonts stand in the text.
    if (look && m_count == 0 && !m_ui->textEdit->document()->isEmpty())
        printSchedule(orvex::SCHEDULE_DATA(m_printed));
}

void PanelInfoWidget::printSchedule(const orvex::SCHEDULE_DATA &schedule)
{
    QScrollBar *const bar = m_ui->textEdit->verticalScrollBar();
    const int position = schedule.id == m_printed.id ? bar->value() : 0;
    m_printed = schedule;
    m_count = 0;
    m_ui->textEdit->clear();
    {
        const ScrollBarHold hold(m_ui->textEdit, scheduledescription::expectedHeight(schedule));
        scheduledescription::write(m_ui->textEdit->document(), schedule, m_days);
    }
    bar->setValue(position);
}
