#pragma once

#include "tqwidgets_export.h"

#include <QString>
#include <QWidget>

class QLineEdit;
class QToolButton;

/// A search field that searches with each typed letter. Ctrl+F moves the focus to it from anywhere in its window,
/// Escape clears it.
class TQWIDGETS_EXPORT SearchWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY startSearch)

public:
    /// Empty; the focus proxy is the line edit.
    explicit SearchWidget(QWidget *parent = nullptr);

    /// The text as typed, with blanks.
    [[nodiscard]] QString text() const;
    /// Empty at first.
    [[nodiscard]] QString placeholderText() const;
    /// Sets the text shown in the empty field; also the tool tip and the accessible name.
    void setPlaceholderText(const QString &text);
    /// Whether the button for the page's extended search is visible; true at first.
    [[nodiscard]] bool isAdvancedButtonVisible() const;
    void setAdvancedButtonVisible(bool visible);

signals:
    /// The text has changed to \a text, by typing, clearing or `setText`.
    void startSearch(const QString &text);
    /// The button for the extended search was pressed.
    void advancedClicked();

public slots:
    /// Same effect as typing: emits `startSearch` unless the text is the same.
    void setText(const QString &text);
    /// Clears the text.
    void clear();

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void updateMinimumWidth();
    void focusEdit();

    QLineEdit *m_edit = nullptr;
    QToolButton *m_advanced = nullptr;
};
