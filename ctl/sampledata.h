#pragma once

#include "bulkwriter.h"
#include "schedules.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

/// A unit of the sample organisation and the data of its employees.
struct SampleUnit
{
    QString name;
    QString parent; ///< name of the parent unit; empty: the firm
    int weight = 1; ///< its share of the employees
    QStringList positions; ///< the first for the head of the unit, the others in turn
    QStringList schedules; ///< names of main schedules, distributed like the positions
};

/// A common schedule of the sample: the record, and the guide shifts of its cycle.
struct SampleSchedule
{
    orvex::SCHEDULE_DATA record;
    QList<int> cycle; ///< positions in `SampleData::shifts`, -1 for a day off; empty for a free schedule
};

/// The sample organisation for one year.
struct SampleData
{
    QString root;
    QString firm;
    QList<SampleUnit> units; ///< parents first
    QList<store::GuideShift> shifts;
    QList<SampleSchedule> schedules;
    QDate cycleStart; ///< the Monday on which every cycle begins

    /// Reads the resource `organisation.json`. \a year: of the calendar schedules and the cycle start.
    [[nodiscard]] static SampleData load(int year);
};

/// The days from \a first to \a last of a cycle that starts on \a start; \a shiftIds: the guide shift of each position
/// in \a cycle.
[[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> daysByCycle(const QList<int> &cycle, const QList<quint32> &shiftIds,
                                                              const QDate &start, const QDate &first,
                                                              const QDate &last);
