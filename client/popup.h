#pragma once

#include <QFrame>
#include <QString>

class IconLabel;
class QLabel;
class QScrollArea;

/// One pop-up: an error icon, a wrapped text, a close button. It does not take the focus when it appears.
class Popup final : public QFrame
{
    Q_OBJECT

public:
    Popup(const QString &text, QWidget *parent);

    [[nodiscard]] QString text() const;
    /// Adds \a advice as a separate paragraph.
    void addParagraph(const QString &advice);
    /// Takes \a width and the height that the text needs, up to \a maximumHeight; a longer text scrolls.
    void fit(int width, int maximumHeight);

signals:
    void dismissed();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    IconLabel *m_icon = nullptr;
    QLabel *m_label = nullptr;
    QScrollArea *m_area = nullptr;
};
