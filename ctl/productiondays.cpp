#include "productiondays.h"

#include <KHolidays/Holiday>
#include <KHolidays/HolidayRegion>

#include <QCoreApplication>
#include <QDate>
#include <QMap>

namespace {

using store::ProductionDay;

/// A weekend day that a government decree moves within its year.
struct MovedDay
{
    int year;
    int fromMonth;
    int fromDay;
    int toMonth;
    int toDay;
};

// One entry for each move in the yearly decrees "О переносе выходных дней" (art. 112, part 5).
constexpr MovedDay movedDays[] = {
    // No. 1335 of 04.10.2024
    {2025, 1, 4, 5, 2},
    {2025, 1, 5, 12, 31},
    {2025, 2, 23, 5, 8},
    {2025, 3, 8, 6, 13},
    {2025, 11, 1, 11, 3},
    // No. 1466 of 24.09.2025
    {2026, 1, 3, 1, 9},
    {2026, 1, 4, 12, 31},
};

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ProductionDays)
};

bool isWeekend(const QDate &date)
{
    return date.dayOfWeek() > Qt::Friday;
}

/// Builds the calendar of one year.
class ProductionYear
{
public:
    explicit ProductionYear(int year);

    [[nodiscard]] QList<ProductionDay> days() const { return m_days.values(); }

private:
    void moveByDecree();
    void moveByLaw();
    void moveWeekend(const QDate &from, const QDate &to);
    void shortenDays();
    [[nodiscard]] bool isHoliday(const QDate &date) const { return m_holidays.contains(date); }
    [[nodiscard]] bool isWorked(const QDate &date) const { return !m_days.contains(date) && !isWeekend(date); }

    const int m_year;
    QMap<QDate, QString> m_holidays; ///< of the year and 1 January of the next
    QMap<QDate, QDate> m_moved; ///< from the weekend to the day off that replaces it
    QMap<QDate, ProductionDay> m_days;
};

ProductionYear::ProductionYear(int year)
    : m_year(year)
{
    const KHolidays::HolidayRegion russia(QStringLiteral("ru_ru"));
    const auto holidays = russia.rawHolidays(QDate(year, 1, 1), QDate(year + 1, 1, 1), QStringLiteral("public"));
    for (const auto &holiday : holidays) {
        if (holiday.dayType() != KHolidays::Holiday::NonWorkday)
            continue;
        for (QDate date = holiday.observedStartDate(); date <= holiday.observedEndDate(); date = date.addDays(1))
            m_holidays.insert(date, holiday.name());
    }
    for (auto it = m_holidays.cbegin(); it != m_holidays.cend(); ++it) {
        if (it.key().year() == year)
            m_days.insert(it.key(), {it.key(), orvex::DayHoliday, it.value()});
    }
    moveByDecree();
    moveByLaw();
    shortenDays();
}

void ProductionYear::moveByDecree()
{
    for (const MovedDay &moved : movedDays) {
        if (moved.year == m_year)
            moveWeekend(QDate(m_year, moved.fromMonth, moved.fromDay), QDate(m_year, moved.toMonth, moved.toDay));
    }
}

/// Art. 112, part 2. Weekends of the January holidays are moved by decree only.
void ProductionYear::moveByLaw()
{
    for (auto it = m_holidays.cbegin(); it != m_holidays.cend(); ++it) {
        const QDate holiday = it.key();
        if (holiday.month() == 1 || !isWeekend(holiday) || m_moved.contains(holiday))
            continue;
        QDate to = holiday.addDays(1);
        while (!isWorked(to))
            to = to.addDays(1);
        moveWeekend(holiday, to);
    }
}

void ProductionYear::moveWeekend(const QDate &from, const QDate &to)
{
    const QString format = QStringLiteral("dd.MM.yyyy");
    m_moved.insert(from, to);
    m_days.insert(to, {to, orvex::DayOff, Texts::tr("Выходной день, перенесённый с %1").arg(from.toString(format))});
    if (isHoliday(from))
        return;
    // It has the length of the working day that it replaces.
    const auto mode = isHoliday(to.addDays(1)) ? orvex::DayPreHoliday : orvex::DayByShift;
    m_days.insert(from, {from, mode, Texts::tr("Рабочий день, выходной перенесён на %1").arg(to.toString(format))});
}

void ProductionYear::shortenDays()
{
    const QString note = Texts::tr("Предпраздничный день");
    for (auto it = m_holidays.cbegin(); it != m_holidays.cend(); ++it) {
        const QDate eve = it.key().addDays(-1);
        if (eve.year() == m_year && isWorked(eve))
            m_days.insert(eve, {eve, orvex::DayPreHoliday, note});
    }
}

} // namespace

QList<store::ProductionDay> productionDays(int year)
{
    return ProductionYear(year).days();
}
