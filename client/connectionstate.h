#pragma once

#include "storeaddress.h"

#include <QWidget>

class IconLabel;
class QLabel;

/// Says in the status bar how the connection to the store stands; the file's whole path is its tool tip.
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

    /// \a reason: what hinders the connection, empty where that is not known.
    void setConnection(Connection connection, const store::StoreAddress &address, const QString &reason);

private:
    IconLabel *m_icon = nullptr;
    QLabel *m_text = nullptr;
};
