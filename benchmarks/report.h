#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QVector>

namespace bench {

enum class Goal
{
    AtMost,
    AtLeast,
    None, ///< for information
};

/// One measured figure: a ratio unless it has a unit.
struct Row
{
    QString name;
    double value = 0;
    Goal goal = Goal::None;
    double bound = 0;
    QString unit;

    [[nodiscard]] bool isMet() const;
};

/// The results of one run.
class Report
{
public:
    void atMost(const QString &name, double value, double bound, const QString &unit = {});
    void atLeast(const QString &name, double value, double bound, const QString &unit = {});
    /// Adds a row without a goal.
    void add(const QString &name, double value, const QString &unit = {});

    [[nodiscard]] QString table() const;
    /// Writes the rows as JSON; false when the file cannot be written.
    [[nodiscard]] bool save(const QString &fileName) const;

private:
    QVector<Row> m_rows;
};

[[nodiscard]] double median(QVector<double> values);

/// The time below which the fastest tenth of \a times are: close to the time on an idle machine.
[[nodiscard]] double tenthPercentile(QVector<double> times);

/// The duration of \a operation in milliseconds.
template <class Operation> [[nodiscard]] double milliseconds(Operation operation)
{
    QElapsedTimer timer;
    timer.start();
    operation();
    return double(timer.nsecsElapsed()) / 1e6;
}

/// A set of measurements. A failure ends the program by `qFatal`.
using Measurement = void (*)(Report &report);

} // namespace bench
