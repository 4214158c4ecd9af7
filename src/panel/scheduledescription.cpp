#include "scheduledescription.h"

#include "calendardaylist.h"
#include "descriptionwriter.h"
#include "personaldescription.h"
#include "propertypanelhelper.h"
#include "schedules.h"
#include "scheduletypes.h"
#include "scheduleutil.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QLocale>

namespace {

using Cell = DescriptionWriter::Cell;

constexpr int RowFrame = 7; // padding and line of a table row

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ScheduleDescription)
};

void writeHead(DescriptionWriter &writer, const orvex::SCHEDULE_DATA &schedule)
{
    writer.addName(schedule.name);
    writer.addItem(Texts::tr("Тип графика"), scheduleview::scheduleTypeName(schedule.type));
}

void writeHolidays(DescriptionWriter &writer, const orvex::SCHEDULE_DATA &schedule)
{
    writer.addItem(Texts::tr("Учитывать праздничные дни"), schedule.useHolidays != 0);
}

QString shortDate(const QDate &date)
{
    return QLocale().toString(date, QLocale::ShortFormat);
}

QString dayName(const orvex::SCHEDULE_DATA &schedule, int day)
{
    const QDate date = schedule.startDate.addDays(day);
    if (schedule.type == orvex::ScheduleFixed)
        return QLocale().toString(date, QStringLiteral("ddd"));
    return date.isValid() ? shortDate(date) : QString::number(day + 1);
}

/// The cells of a day's row that describe its shift.
struct ShiftTexts
{
    QString start;
    QString finish;
    QString rest;
};

ShiftTexts textsOf(const orvex::SCHEDULE_SHIFT &shift)
{
    const auto timeText = [](qint32 seconds) {
        return ScheduleUtil::timeOf(seconds).toString(QStringLiteral("hh:mm"));
    };
    const qint32 rest = shift.break_time();
    return {timeText(shift.start()), timeText(shift.finish()),
            rest == 0 ? QString()
                      : Texts::tr("%1 %2").arg(rest / ScheduleUtil::SecondsPerMinute).arg(Texts::tr("мин."))};
}

void writeWorkMode(DescriptionWriter &writer, const orvex::SCHEDULE_DATA &schedule)
{
    QVector<ShiftTexts> shifts;
    for (const auto &shift : schedule.shifts)
        shifts.append(textsOf(shift));

    QTextTable *table = writer.addTable(schedule.days.size() + 1, {23, 26, 26, 25});
    writer.setHeader(table,
                     {Texts::tr("День"), Texts::tr("Начало\nсмены"), Texts::tr("Окончание\nсмены"), Texts::tr("Обед")});
    for (int i = 0; i < schedule.days.size(); ++i) {
        const auto &day = schedule.days.at(i);
        writer.setCell(table, i + 1, 0, dayName(schedule, i), Cell::Param);
        if (day.dayOff || day.shift < 0 || day.shift >= shifts.size())
            continue;
        const ShiftTexts &shift = shifts.at(day.shift);
        writer.setCell(table, i + 1, 1, shift.start, Cell::Value);
        writer.setCell(table, i + 1, 2, shift.finish, Cell::Value);
        writer.setCell(table, i + 1, 3, shift.rest, Cell::Value);
    }
}

void writeGeneral(DescriptionWriter &writer, const orvex::SCHEDULE_DATA &schedule)
{
    writeHead(writer, schedule);
    if (schedule.type == orvex::ScheduleShift) {
        const QDate start = schedule.startDate;
        writer.addItem(Texts::tr("Дата отсчета цикла смен"),
                       start.isValid() ? shortDate(start) : Texts::tr("По сотруднику"));
    }
    writeHolidays(writer, schedule);
    writer.addCaption(Texts::tr("Расписание"));
    writeWorkMode(writer, schedule);
}

void writeFree(DescriptionWriter &writer, const orvex::SCHEDULE_DATA &schedule)
{
    const auto timeText = [](qint32 seconds) {
        return QLocale().toString(ScheduleUtil::timeOf(seconds), QLocale::ShortFormat);
    };
    writeHead(writer, schedule);
    if (schedule.freeStart != 0)
        writer.addItem(Texts::tr("Начало рабочего дня"), timeText(schedule.freeStart));
    if (schedule.freeFinish != 0)
        writer.addItem(Texts::tr("Окончание рабочего дня"), timeText(schedule.freeFinish));
    if (schedule.freeNorm != 0) {
        const qint32 minutes = schedule.freeNorm % ScheduleUtil::SecondsPerHour / ScheduleUtil::SecondsPerMinute;
        writer.addItem(Texts::tr("Продолжительность рабочего дня"),
                       Texts::tr("%1 час. %2 мин.").arg(schedule.freeNorm / ScheduleUtil::SecondsPerHour).arg(minutes));
    }
    writer.addItem(Texts::tr("Обеденный перерыв"),
                   Texts::tr("%1 мин.").arg(schedule.freeBreak / ScheduleUtil::SecondsPerMinute));
}

void writeCalendar(DescriptionWriter &writer, const orvex::SCHEDULE_DATA &schedule, const CalendarDayList &days)
{
    const int year = QDate::currentDate().year();
    writeHead(writer, schedule);
    writer.addItem(Texts::tr("Год"), QString::number(year));
    writeHolidays(writer, schedule);
    writer.addCaption(Texts::tr("Количество рабочих часов"));
    QTextTable *table = writer.addTable(ScheduleUtil::MonthsPerYear + 1, {50, 50});
    writer.setHeader(table, {Texts::tr("Месяц"), Texts::tr("Часы")});
    for (int month = 1; month <= ScheduleUtil::MonthsPerYear; ++month) {
        const QDate first(year, month, 1);
        const quint32 total = days.normTotal(first, ScheduleUtil::lastOfMonth(first));
        writer.setCell(table, month, 0, QLocale().monthName(month), Cell::Param);
        writer.setCell(table, month, 1, QString::number(total / ScheduleUtil::SecondsPerHour), Cell::Value);
    }
}

} // namespace

void scheduledescription::write(QTextDocument *document, const orvex::SCHEDULE_DATA &schedule,
                                const CalendarDayList &days)
{
    DescriptionWriter writer(document);
    switch (schedule.type) {
    case orvex::ScheduleFixed:
    case orvex::ScheduleShift:
        writeGeneral(writer, schedule);
        break;
    case orvex::ScheduleFree:
        writeFree(writer, schedule);
        break;
    case orvex::ScheduleCalendar:
        writeCalendar(writer, schedule, days);
        break;
    case orvex::SchedulePersonal:
        writePersonalDescription(writer, schedule, days);
        break;
    }
}

int scheduledescription::expectedHeight(const orvex::SCHEDULE_DATA &schedule)
{
    constexpr int HeadLines = 13;
    constexpr int PersonalLines = 40;
    const int line = QFontMetrics(PropertyPanelHelper::textformat().font()).lineSpacing();
    const int row = QFontMetrics(PropertyPanelHelper::tableCellValueFormat().font()).lineSpacing() + RowFrame;
    switch (schedule.type) {
    case orvex::ScheduleFixed:
    case orvex::ScheduleShift:
        return HeadLines * line + (schedule.days.size() + 2) * row;
    case orvex::ScheduleCalendar:
        return HeadLines * line + (ScheduleUtil::MonthsPerYear + 1) * row;
    case orvex::SchedulePersonal:
        return PersonalLines * line;
    default:
        return 0;
    }
}
