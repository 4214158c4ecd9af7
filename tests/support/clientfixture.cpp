#include "clientfixture.h"

#include "dialoghandler.h"
#include "hands.h"
#include "tqstyles.h"

#include <QSettings>
#include <QtTest>

ClientFixture::ClientFixture()
{
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
    QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
    tqstyles::install();
    Options options;
    options.store = store.address();
    options.plugins = QStringLiteral(PLUGIN_FOLDER);
    m_client = std::make_unique<Client>(options);
    QSignalSpy ready(m_client.get(), &Client::ready);
    m_client->start();
    if (!ready.wait() || !QTest::qWaitForWindowActive(&window()))
        qFatal("The client does not start");
    window().resize(1280, 720);
}

void ClientFixture::edit(const Operator &person, const std::function<void(QDialog &)> &steps, int row) const
{
    const support::DialogHandler handler(QDialogButtonBox::NoButton, steps);
    support::activateWindow(&window());
    person.openCell("scheduleView", row, 0, Qt::Key_Return);
    QTRY_VERIFY(handler.hasOpened());
}
