#pragma once

#include <QTime>
#include <QWidget>

#include <memory>

namespace Ui {
class FreeLimitsWidget;
}

/// The limits of a free schedule's working day, each used or not. Durations are in seconds; the minute is the finest
/// that a norm or a break shows.
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

    /// What the time fields show, used or not.
    [[nodiscard]] QTime startTime() const;
    [[nodiscard]] QTime finishTime() const;

    // As a record keeps them, times of day from midnight: 0 for a limit that is not used.
    [[nodiscard]] int freeStart() const;
    [[nodiscard]] int freeFinish() const;
    [[nodiscard]] int freeNorm() const;
    [[nodiscard]] int freeBreak() const;

    /// Shows the limits of a record; the signals of what changes by it are emitted.
    void setLimits(int start, int finish, int norm, int breakTime);
    // A proposal: nobody is told of the change. A value out of range becomes the nearest one in it.
    void proposeNorm(int seconds);
    void proposeBreak(int seconds);

signals:
    /// Start, finish or break have another value.
    void spanChanged();
    void normChanged();
    // The operator has begun to use it.
    void normSwitchedOn();
    void breakSwitchedOn();

private:
    std::unique_ptr<Ui::FreeLimitsWidget> m_ui;
};
