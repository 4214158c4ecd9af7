#pragma once

#include "bulkwriter.h"
#include "schedules.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

/// A unit of the sample organisation and how it is staffed.
struct SampleUnit
{
    QString name;
    QString parent; ///< name of the unit above; empty: the firm
    int weight = 1; ///< its share of the employees
    QStringList positions; ///< the first is that of its head, the others come in turn
    QStringList schedules; ///< names of main schedules; the first is that of its head
};

/// A common schedule of the sample: the record, and the guide shifts of its cycle.
struct SampleSchedule
{
    orvex::SCHEDULE_DATA record;
    QList<int> cycle; ///< positions in `SampleData::shifts`, -1 for a day off; empty for a free schedule
};

/// What the sample organisation is made of, for one year.
struct SampleData
{
    QString root;
    QString firm;
    QList<SampleUnit> units; ///< every unit stands behind the one above it
    QList<store::GuideShift> shifts;
    QList<SampleSchedule> schedules;
    QDate cycleStart; ///< the Monday on which every cycle begins

    /// The program's own sample. Its schedules belong to \a year.
    [[nodiscard]] static SampleData load(int year);
};

/// The days from \a first to \a last by a cycle that began on \a start, each with its shift of the guide.
[[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> daysByCycle(const QList<int> &cycle, const QList<quint32> &shiftIds,
                                                              const QDate &start, const QDate &first,
                                                              const QDate &last);
