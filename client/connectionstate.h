#pragma once

#include "storeaddress.h"

#include <QWidget>

class IconLabel;
class QLabel;

/// The state of the connection in the status bar; its tool tip is the full path of the store's file.
class ConnectionState final : public QWidget
{
    Q_OBJECT

public:
    enum class Connection
    {
        Opening,
        Connected,
        Lost,
        Closed
    };

    explicit ConnectionState(QWidget *parent = nullptr);

    /// \a reason: why there is no connection; empty if unknown.
    void setConnection(Connection connection, const store::StoreAddress &address, const QString &reason);

private:
    IconLabel *m_icon = nullptr;
    QLabel *m_text = nullptr;
};
