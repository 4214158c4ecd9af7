#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QVector>

namespace bench {

enum class Goal
{
    AtMost,
    AtLeast,
    None, ///< told for the reader, judged by nobody
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

/// What was measured in one run.
class Report
{
public:
    void atMost(const QString &name, double value, double bound, const QString &unit = {});
    void atLeast(const QString &name, double value, double bound, const QString &unit = {});
    void tell(const QString &name, double value, const QString &unit = {});

    [[nodiscard]] QString table() const;
    /// Writes the rows as JSON; false when the file cannot be written.
    [[nodiscard]] bool save(const QString &fileName) const;

private:
    QVector<Row> m_rows;
};

[[nodiscard]] double median(QVector<double> values);

/// What a work takes when nothing else wants the processor: the fastest tenth of its measurements begins there.
[[nodiscard]] double undisturbed(QVector<double> times);

/// Milliseconds that \a work takes.
template <class Work> [[nodiscard]] double milliseconds(Work work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

/// A set of measurements; throws nothing, tells its failures by `qFatal`.
using Measurement = void (*)(Report &report);

} // namespace bench
