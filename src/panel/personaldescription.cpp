#include "personaldescription.h"

#include "calendardaylist.h"
#include "calendarmonthmodel.h"
#include "cellcolors.h"
#include "descriptionwriter.h"
#include "employeeschedules.h"
#include "localstorage.h"
#include "propertypanelhelper.h"
#include "schedules.h"
#include "tqstyles.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QLocale>
#include <QPalette>
#include <QTextTable>

namespace {

constexpr int DayNumberPointSize = 6;

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(PersonalDescription)
};

QImage numberBadge(const QString &number)
{
    if (number.isEmpty())
        return {};
    return PropertyPanelHelper::createColoredText(number, tqstyles::orange(), Qt::black,
                                                  PropertyPanelHelper::textformat().font());
}

/// Returns the background of a day's cell; an invalid colour for the background of the panel.
QColor cellColor(const QModelIndex &index, const QDate &date, const QColor &base)
{
    const QVariant background = index.data(Qt::BackgroundRole);
    if (!background.isValid())
        return {};
    const QColor color = background.value<QBrush>().color();
    return date.isValid() ? color : cellcolors::undated(color, base);
}

void writeDay(const DescriptionWriter &writer, const QModelIndex &index, QTextTableCell cell)
{
    const QColor base = QGuiApplication::palette().color(QPalette::Active, QPalette::Base);
    const QDate date = index.data(CalendarDaysModel::DateRole).toDate();
    const QColor color = cellColor(index, date, base);
    QTextCharFormat text = writer.valueFormat();
    if (color.isValid()) {
        text.setForeground(cellcolors::readableOn(color, base));
        QTextCharFormat format = cell.format();
        format.setBackground(color);
        cell.setFormat(format);
    }
    if (!date.isValid())
        return;
    QTextCharFormat number = text;
    number.setFontPointSize(DayNumberPointSize);
    QTextCursor cursor = cell.firstCursorPosition();
    cursor.insertText(QString::number(date.day()), number);
    cursor.insertBlock(cursor.blockFormat(), text);
    cursor.insertText(index.data().toString(), text);
}

void writeMonth(DescriptionWriter &writer, const orvex::SCHEDULE_DATA &schedule, const CalendarDayList &days)
{
    CalendarMonthModel model;
    model.setColor(schedule.color);
    model.setCalendarDays(schedule.startDate, days.days());
    QTextTable *table = writer.addTable(model.rowCount() + 1, {23, 11, 11, 11, 11, 11, 11, 11});
    QStringList headers;
    for (int column = 0; column < CalendarMonthModel::ColumnCount; ++column)
        headers.append(model.headerData(column, Qt::Horizontal).toString());
    writer.setHeader(table, headers);
    for (int row = 0; row < model.rowCount(); ++row) {
        const QModelIndex total = model.index(row, CalendarMonthModel::TotalColumn);
        writer.setCell(table, row + 1, total.column(), total.data().toString(), DescriptionWriter::Cell::Param);
        for (int column = CalendarMonthModel::MondayColumn; column < CalendarMonthModel::ColumnCount; ++column)
            writeDay(writer, model.index(row, column), table->cellAt(row + 1, column));
    }
}

} // namespace

void writePersonalDescription(DescriptionWriter &writer, const orvex::SCHEDULE_DATA &schedule,
                              const CalendarDayList &days)
{
    const auto storage = orvex::LocalStorage::instance();
    const auto employee = storage->constObject(schedule.workerId, orvex::SUBJECT_DATANAME);
    const QByteArray photo = storage->blob(schedule.workerId, db::param::PHOTO);
    const QString number = employee.parameter(db::param::WORKERNUM);
    writer.addTitle(PropertyPanelHelper::pixmapByPhotoType(photo, QStringLiteral("PT_PHOTO_PREVIEW")).toImage(),
                    schedule.name);
    writer.addItem(Texts::tr("Табельный номер"), numberBadge(number), number);
    writer.addItem(Texts::tr("Основной график"), scheduleview::mainScheduleName(employee));
    writer.addItem(Texts::tr("Период"), QLocale().toString(schedule.startDate, QStringLiteral("MMMM yyyy")));
    writer.addItem(Texts::tr("Учитывать праздничные дни"), schedule.useHolidays != 0);
    writer.addCaption(Texts::tr("Расписание"));
    writeMonth(writer, schedule, days);
}
