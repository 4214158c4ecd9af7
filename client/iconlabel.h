#pragma once

#include <QLabel>
#include <QString>

/// Shows an icon of the theme; it follows changes of theme and font.
class IconLabel final : public QLabel
{
    Q_OBJECT

public:
    explicit IconLabel(QWidget *parent = nullptr);

    /// \a name in the icon theme; the icon is \a lines times as high as a line of text.
    void setIcon(const QString &name, qreal lines);

protected:
    void changeEvent(QEvent *event) override;

private:
    void draw();

    QString m_name;
    qreal m_lines = 1;
};
