#include "report.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace bench {

namespace {

QString goalText(const Row &row)
{
    switch (row.goal) {
    case Goal::AtMost:
        return QStringLiteral("at most %1").arg(row.bound);
    case Goal::AtLeast:
        return QStringLiteral("at least %1").arg(row.bound);
    case Goal::None:
        break;
    }
    return {};
}

QString mark(const Row &row)
{
    if (row.goal == Goal::None)
        return {};
    return row.isMet() ? QStringLiteral("met") : QStringLiteral("MISSED");
}

} // namespace

bool Row::isMet() const
{
    switch (goal) {
    case Goal::AtMost:
        return value <= bound;
    case Goal::AtLeast:
        return value >= bound;
    case Goal::None:
        break;
    }
    return true;
}

void Report::atMost(const QString &name, double value, double bound, const QString &unit)
{
    m_rows.append({name, value, Goal::AtMost, bound, unit});
}

void Report::atLeast(const QString &name, double value, double bound, const QString &unit)
{
    m_rows.append({name, value, Goal::AtLeast, bound, unit});
}

void Report::add(const QString &name, double value, const QString &unit)
{
    m_rows.append({name, value, Goal::None, 0, unit});
}

QString Report::table() const
{
    int width = 0;
    for (const Row &row : m_rows)
        width = qMax(width, row.name.size());
    QString text;
    for (const Row &row : m_rows) {
        const QString value = QString::number(row.value, 'f', 2) + (row.unit.isEmpty() ? QString() : u' ' + row.unit);
        text += QStringLiteral("%1  %2  %3  %4\n")
                    .arg(row.name, -width)
                    .arg(value, 14)
                    .arg(goalText(row), -14)
                    .arg(mark(row));
    }
    return text;
}

bool Report::save(const QString &fileName) const
{
    QJsonArray rows;
    for (const Row &row : m_rows) {
        QJsonObject object{{QStringLiteral("name"), row.name},
                           {QStringLiteral("value"), row.value},
                           {QStringLiteral("unit"), row.unit.isEmpty() ? QStringLiteral("ratio") : row.unit}};
        if (row.goal != Goal::None) {
            object.insert(QStringLiteral("goal"), goalText(row));
            object.insert(QStringLiteral("met"), row.isMet());
        }
        rows.append(object);
    }
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(rows).toJson()) > 0;
}

double tenthPercentile(QVector<double> times)
{
    const auto tenth = times.begin() + times.size() / 10;
    std::nth_element(times.begin(), tenth, times.end());
    return *tenth;
}

double median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values.at(values.size() / 2);
}

} // namespace bench
