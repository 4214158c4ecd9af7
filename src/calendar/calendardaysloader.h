#pragma once

#include "calendaredits.h"

#include <QObject>

class CalendarWidget;

/// Loads the days of a schedule into its calendar, a year at a time: the request, the matching answer, the retry after
/// a lost connection. The operator's edits survive every answer.
class CalendarDaysLoader final : public QObject
{
    Q_OBJECT

public:
    /// \a calendar becomes the parent.
    CalendarDaysLoader(int scheduleId, CalendarWidget *calendar);

    /// The year whose days were requested and have not arrived; 0: none.
    [[nodiscard]] int awaitedYear() const { return m_awaitedYear; }

    void request(int year);
    /// Requests from the event loop, so that a receiver can connect first.
    void requestLater(int year);
    /// Repeats the request for the awaited year, if there is one.
    void requestMissing();
    /// Shows the days that were read. False for another schedule's days: they are ignored, and the year stays awaited.
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
    int m_awaitedYear = 0;
};
