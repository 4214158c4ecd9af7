#pragma once

#include "tqwidgets_export.h"

#include <QString>
#include <QWidget>

class QLineEdit;
class QToolButton;

/// A search field: searches while the user types. Ctrl+F reaches it from anywhere in its window, Escape empties it.
class TQWIDGETS_EXPORT SearchWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY startSearch)

public:
    /// Empty. Its focus proxy is the line edit.
    explicit SearchWidget(QWidget *parent = nullptr);

    /// As it was typed, blanks included.
    [[nodiscard]] QString text() const;
    /// Empty at first.
    [[nodiscard]] QString placeholderText() const;
    /// The grey text of the empty field; also its tool tip, and what a screen reader calls it.
    void setPlaceholderText(const QString &text);
    /// The button for a page's own extended search; shown at first.
    [[nodiscard]] bool isAdvancedButtonVisible() const;
    /// Whether the button is there for a press to give `advancedClicked`.
    void setAdvancedButtonVisible(bool visible);

public slots:
    /// Like typing it: `startSearch` follows unless it is the same text.
    void setText(const QString &text);
    /// Empties the field.
    void clear();

signals:
    /// The text has become \a text, by typing, clearing or `setText`.
    void startSearch(const QString &text);
    /// The button for the extended search was pressed.
    void advancedClicked();

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void keepReadable();
    void takeFocus();

    QLineEdit *m_edit = nullptr;
    QToolButton *m_advanced = nullptr;
};
