#pragma once

#include <QColor>
#include <QIcon>
#include <QWidget>

#include <memory>

namespace Ui {
class ScheduleNameWidget;
}

/// The head of every schedule form: the name, marked while it is empty, and the colour.
class ScheduleNameWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ScheduleNameWidget(QWidget *parent = nullptr);
    ~ScheduleNameWidget() override;

    void setName(const QString &name);
    [[nodiscard]] QString name() const;
    void setEnabledName(bool enabled);
    [[nodiscard]] QColor color() const;
    /// The colour as a record keeps it: its `QColor::name()`, empty for an invalid one.
    [[nodiscard]] QString colorName() const;
    void setColor(const QColor &color);
    /// A framed square of the colour, of the palette's base for an invalid one.
    [[nodiscard]] QIcon iconByColor(const QColor &color) const;

signals:
    void nameChanged(const QString &name);
    /// The user has chosen a colour; \a color is its `QColor::name()`.
    void colorChanged(const QString &color);

public slots:
    void slotSelectColor();

private:
    void updateIcon();

    std::unique_ptr<Ui::ScheduleNameWidget> m_ui;
    QColor m_color;
};
