#pragma once

#include <QLabel>
#include <QString>

/// Shows an icon of the theme, and its other drawing when the theme changes.
class IconLabel final : public QLabel
{
    Q_OBJECT

public:
    explicit IconLabel(QWidget *parent = nullptr);

    /// \a name in the icon theme, \a extent in device-independent pixels.
    void setIcon(const QString &name, int extent);

protected:
    void changeEvent(QEvent *event) override;

private:
    void draw();

    QString m_name;
    int m_extent = 16;
};
