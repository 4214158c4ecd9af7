#pragma once

#include <QApplication>
#include <QWidget>

class QDate;
class QTabBar;

/// Works in the active window with the mouse or with the keyboard, never with both.
class Operator
{
public:
    explicit Operator(bool mouse)
        : m_mouse(mouse)
    {
    }

    /// The rows of a test that runs with either device.
    static void addDevices();

    /// The visible widget with an object name; ends the program when there is none.
    template <class T = QWidget> [[nodiscard]] T *widget(const char *name) const
    {
        for (auto *widget : QApplication::activeWindow()->findChildren<T *>(QLatin1String(name))) {
            if (widget->isVisible())
                return widget;
        }
        qFatal("There is no visible %s", name);
    }

    /// Clicks the widget, or moves the focus to it by Tab.
    void focus(QWidget *widget) const;
    void press(QWidget *button) const;
    void press(const char *button) const { press(widget(button)); }
    /// Triggers an action of the list by its tool button or its key.
    void trigger(const char *action, Qt::Key key) const;
    void selectTab(QTabBar *tabs, int index) const;

    /// Replaces the text of a field.
    void enterText(const char *name, const QString &text) const;
    /// Replaces hours and minutes.
    void enterTime(const char *name, const QString &digits) const;

    /// Continues to the next page of the wizard, or finishes it.
    void continueWizard() const;
    /// Accepts the dialog; fails the test when it stays open.
    void acceptDialog() const;

    void selectCell(const char *table, int row, int column) const;
    /// Double-clicks a cell, or presses \a key in it.
    void openCell(const char *table, int row, int column, Qt::Key key = Qt::Key_F2) const;
    /// Toggles the check box of a cell.
    void toggleCell(const char *table, int row, int column) const;
    /// Selects \a count days of one row of the calendar and chooses an entry of their menu.
    void chooseForDays(const QDate &first, int count, const QString &submenu, const QString &entry) const;

private:
    bool m_mouse;
};
