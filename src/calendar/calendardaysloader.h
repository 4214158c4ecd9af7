#pragma once

#include "calendaredits.h"

#include <QObject>

#include <optional>

class CalendarWidget;

/// Loads the days of a schedule into its calendar, one year at a time, and can repeat a request that a lost connection
/// left unanswered. An answer never overwrites the operator's edits.
class CalendarDaysLoader final : public QObject
{
    Q_OBJECT

public:
    /// \a calendar becomes the parent.
    CalendarDaysLoader(int scheduleId, CalendarWidget *calendar);

    void request(int year);
    /// Requests when control returns to the event loop, so that a receiver can connect first.
    void requestLater(int year);
    /// Repeats the last request if its days have not arrived.
    void requestMissing();
    /// The next days of `setDays` are those of \a year. Without this call they are taken for the requested ones.
    void setReplyYear(int year) { m_replyYear = year; }
    /// Shows \a days. False for another schedule or year: they are ignored.
    bool setDays(int scheduleId, const CalendarEdits::Days &days);

signals:
    void daysRequest(int scheduleId, int year);

private:
    const int m_scheduleId;
    CalendarWidget *const m_calendar;
    CalendarEdits m_edits;
    CalendarEdits::Days m_readDays; ///< shown, except where they are edited
    int m_readYear = 0; ///< the year shown with `m_readDays`; 0: none were read
    int m_requestedYear = 0;
    bool m_isWaiting = false; ///< for the days of `m_requestedYear`
    std::optional<int> m_replyYear;
};
