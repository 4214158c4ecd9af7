#pragma once

#include "calendardays.h"
#include "command.h"
#include "schedules.h"

#include <QList>
#include <QObject>
#include <QPointer>

class CreationWizard;
class PersonalScheduleWizard;

namespace scheduleview {

class ScheduleRequests;

/// A schedule that a wizard requested.
struct NewSchedule
{
    orvex::SCHEDULE_DATA record;
    QList<orvex::SCHEDULE_CALENDAR_DAY> days; ///< stored after the record
    QPointer<CreationWizard> wizard; ///< null once it is closed
};

/// Creates schedules: stores the record, then its calendar days, and reports the outcome.
class ScheduleCreation final : public QObject
{
    Q_OBJECT

public:
    ScheduleCreation(ScheduleRequests *requests, QObject *parent);

    void create(const NewSchedule &schedule);
    /// Creates the personal schedule of the wizard, unless its employee was removed or has one for this month.
    void createPersonal(PersonalScheduleWizard *wizard);

signals:
    /// \a message is for the operator.
    void failed(const QString &message);
    /// The record was stored as the schedule \a id.
    void recordAdded(quint32 id);
    /// The request of \a wizard has ended; null if it was closed. For an empty \a message the wizard shows a standard
    /// text.
    void finished(CreationWizard *wizard, bool ok, const QString &message);

private:
    // Each handler gets its own schedule: another request may be sent before the reply arrives.
    void scheduleInsertResult(const Command &command, const NewSchedule &schedule);
    void calendarDaysInsertResult(const Command &command, const NewSchedule &schedule);
    void reportMissingDays(const NewSchedule &schedule, const QString &reason);

    ScheduleRequests *const m_requests;
};

} // namespace scheduleview
