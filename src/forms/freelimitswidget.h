#pragma once

#include <QTime>
#include <QWidget>

#include <memory>

namespace Ui {
class FreeLimitsWidget;
}

/// The optional limits of a free schedule's working day. Durations are in seconds; norm and break are shown in whole
/// minutes.
class FreeLimitsWidget final : public QWidget
{
    Q_OBJECT

public:
    explicit FreeLimitsWidget(QWidget *parent = nullptr);
    ~FreeLimitsWidget() override;

    [[nodiscard]] bool usesStart() const;
    [[nodiscard]] bool usesFinish() const;
    [[nodiscard]] bool usesNorm() const;
    [[nodiscard]] bool usesBreak() const;

    /// The displayed times, whether used or not.
    [[nodiscard]] QTime startTime() const;
    [[nodiscard]] QTime finishTime() const;

    // The record's values; 0 for a limit that is not used.
    [[nodiscard]] int freeStart() const;
    [[nodiscard]] int freeFinish() const;
    [[nodiscard]] int freeNorm() const;
    [[nodiscard]] int freeBreak() const;

    /// Shows a record's limits and emits the signals of those that change.
    void setLimits(int start, int finish, int norm, int breakTime);
    // No signal is emitted. A value out of range is replaced by the nearest one in range.
    void proposeNorm(int seconds);
    void proposeBreak(int seconds);

signals:
    /// Start, finish or break has changed.
    void spanChanged();
    void normChanged();
    // The operator has checked the limit's box.
    void normSwitchedOn();
    void breakSwitchedOn();

private:
    std::unique_ptr<Ui::FreeLimitsWidget> m_ui;
};
