#include "connectionstate.h"

#include "iconlabel.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>

ConnectionState::ConnectionState(QWidget *parent)
    : QWidget(parent)
    , m_icon(new IconLabel(this))
    , m_text(new QLabel(this))
{
    setObjectName(QStringLiteral("connectionState"));
    m_text->setObjectName(QStringLiteral("connectionText"));
    m_text->setTextFormat(Qt::PlainText);
    // A long text must not widen the window.
    m_text->setMinimumWidth(1);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 1, 6, 1);
    layout->addWidget(m_icon);
    layout->addWidget(m_text);
}

void ConnectionState::setConnection(Connection connection, const store::StoreAddress &address, const QString &reason)
{
    const QString name = QFileInfo(address.filePath()).fileName();
    QString icon;
    QString text;
    switch (connection) {
    case Connection::Opening:
        icon = QStringLiteral("connection-wait");
        text = tr("Открывается хранилище «%1»").arg(name);
        break;
    case Connection::Connected:
        icon = QStringLiteral("connection-ok");
        text = tr("Хранилище «%1» подключено").arg(name);
        break;
    case Connection::Lost:
        icon = QStringLiteral("connection-lost");
        text = tr("Нет связи с хранилищем «%1», подключение повторяется").arg(name);
        break;
    case Connection::Closed:
        icon = QStringLiteral("connection-lost");
        text = tr("Хранилище «%1» не открыто").arg(name);
        break;
    }
    m_icon->setIcon(icon, 1.1);
    m_text->setText(text);
    setAccessibleName(text);
    setAccessibleDescription(reason);
    const QString path = QDir::toNativeSeparators(address.filePath());
    setToolTip(reason.isEmpty() ? path : path + QLatin1Char('\n') + reason);
}
