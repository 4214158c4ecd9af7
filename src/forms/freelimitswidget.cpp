#include "freelimitswidget.h"

#include "scheduleutil.h"
#include "ui_freelimitswidget.h"

#include <QSignalBlocker>

FreeLimitsWidget::FreeLimitsWidget(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::FreeLimitsWidget>())
{
    m_ui->setupUi(this);
    const auto valueChanged = qOverload<int>(&QSpinBox::valueChanged);
    connect(m_ui->freeStartEdit, &QTimeEdit::timeChanged, this, &FreeLimitsWidget::spanChanged);
    connect(m_ui->freeFinishEdit, &QTimeEdit::timeChanged, this, &FreeLimitsWidget::spanChanged);
    connect(m_ui->freeBreakEdit, valueChanged, this, &FreeLimitsWidget::spanChanged);
    connect(m_ui->freeNormHEdit, valueChanged, this, &FreeLimitsWidget::normChanged);
    connect(m_ui->freeNormMEdit, valueChanged, this, &FreeLimitsWidget::normChanged);
    connect(m_ui->cbFreeUseNorm, &QCheckBox::clicked, this, [this](bool checked) {
        if (checked)
            emit normSwitchedOn();
    });
    connect(m_ui->cbFreeUseBreak, &QCheckBox::clicked, this, [this](bool checked) {
        if (checked)
            emit breakSwitchedOn();
    });
}

FreeLimitsWidget::~FreeLimitsWidget() = default;

bool FreeLimitsWidget::usesStart() const
{
    return m_ui->cbFreeUseStart->isChecked();
}

bool FreeLimitsWidget::usesFinish() const
{
    return m_ui->cbFreeUseFinish->isChecked();
}

bool FreeLimitsWidget::usesNorm() const
{
    return m_ui->cbFreeUseNorm->isChecked();
}

bool FreeLimitsWidget::usesBreak() const
{
    return m_ui->cbFreeUseBreak->isChecked();
}

QTime FreeLimitsWidget::startTime() const
{
    return m_ui->freeStartEdit->time();
}

QTime FreeLimitsWidget::finishTime() const
{
    return m_ui->freeFinishEdit->time();
}

int FreeLimitsWidget::freeStart() const
{
    return usesStart() ? ScheduleUtil::secondsOf(startTime()) : 0;
}

int FreeLimitsWidget::freeFinish() const
{
    return usesFinish() ? ScheduleUtil::secondsOf(finishTime()) : 0;
}

int FreeLimitsWidget::freeNorm() const
{
    if (!usesNorm())
        return 0;
    return m_ui->freeNormHEdit->value() * ScheduleUtil::SecondsPerHour
        + m_ui->freeNormMEdit->value() * ScheduleUtil::SecondsPerMinute;
}

int FreeLimitsWidget::freeBreak() const
{
    return usesBreak() ? m_ui->freeBreakEdit->value() * ScheduleUtil::SecondsPerMinute : 0;
}

void FreeLimitsWidget::setLimits(int start, int finish, int norm, int breakTime)
{
    // The boxes first: handlers of the value signals read them.
    m_ui->cbFreeUseStart->setChecked(start != 0);
    m_ui->cbFreeUseFinish->setChecked(finish != 0);
    m_ui->cbFreeUseNorm->setChecked(norm != 0);
    m_ui->cbFreeUseBreak->setChecked(breakTime != 0);
    m_ui->freeStartEdit->setTime(ScheduleUtil::timeOf(start));
    m_ui->freeFinishEdit->setTime(ScheduleUtil::timeOf(finish));
    m_ui->freeNormHEdit->setValue(norm / ScheduleUtil::SecondsPerHour);
    m_ui->freeNormMEdit->setValue(norm % ScheduleUtil::SecondsPerHour / ScheduleUtil::SecondsPerMinute);
    m_ui->freeBreakEdit->setValue(breakTime / ScheduleUtil::SecondsPerMinute);
}

void FreeLimitsWidget::proposeNorm(int seconds)
{
    const QSignalBlocker hours(m_ui->freeNormHEdit);
    const QSignalBlocker minutes(m_ui->freeNormMEdit);
    m_ui->freeNormHEdit->setValue(seconds / ScheduleUtil::SecondsPerHour);
    m_ui->freeNormMEdit->setValue(seconds % ScheduleUtil::SecondsPerHour / ScheduleUtil::SecondsPerMinute);
}

void FreeLimitsWidget::proposeBreak(int seconds)
{
    const QSignalBlocker blocker(m_ui->freeBreakEdit);
    m_ui->freeBreakEdit->setValue(seconds / ScheduleUtil::SecondsPerMinute);
}
