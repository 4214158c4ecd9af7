#pragma once

#include <QColor>
#include <QIcon>
#include <QWidget>

#include <memory>

namespace Ui {
class ScheduleNameWidget;
}

/// Name and colour of a schedule; an empty name is highlighted.
class ScheduleNameWidget final : public QWidget
{
    Q_OBJECT

public:
    explicit ScheduleNameWidget(QWidget *parent = nullptr);
    ~ScheduleNameWidget() override;

    void setName(const QString &name);
    [[nodiscard]] QString name() const;
    void setEnabledName(bool enabled);
    /// Selects the name, so that typing replaces it.
    void selectName();
    [[nodiscard]] QColor color() const;
    /// The record's value: `QColor::name()`, empty for an invalid colour.
    [[nodiscard]] QString colorName() const;
    void setColor(const QColor &color);
    /// Sets a record's value; an unknown name gives an invalid colour.
    void setColorName(const QString &name);
    /// A framed square of the colour; an invalid one is shown as the palette's base.
    [[nodiscard]] QIcon iconByColor(const QColor &color) const;

signals:
    void nameChanged(const QString &name);
    /// The operator has chosen a colour; \a color is its `QColor::name()`.
    void colorChanged(const QString &color);

public slots:
    void slotSelectColor();

private:
    void updateIcon();

    std::unique_ptr<Ui::ScheduleNameWidget> m_ui;
    QColor m_color;
};
