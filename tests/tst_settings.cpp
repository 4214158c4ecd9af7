#include "settings.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path()); }

    void shouldRemoveValuesThatCannotBeReadSafely()
    {
        auto *settings = Settings::instance();
        settings->setValue(QStringLiteral("client/page"), QStringLiteral("scheduleview"));
        QVERIFY(settings->sync());
        QFile file(m_folder.filePath(QStringLiteral("orvex/client.ini")));
        QVERIFY(file.open(QIODevice::Append));
        // A polygon with a count of two thousand million points and no data.
        file.write("geometry=@Variant(\\0\\0\\0G\\x7f\\xff\\xff\\xff)\nstore=a.db\n");
        file.close();

        QVERIFY(settings->sync());
        QCOMPARE(settings->value(QStringLiteral("client/geometry"), 7), QVariant(7));
        QCOMPARE(settings->value(QStringLiteral("client/page")), QVariant(QStringLiteral("scheduleview")));
        QCOMPARE(settings->value(QStringLiteral("client/store")), QVariant(QStringLiteral("a.db")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(!file.readAll().contains("geometry"));
    }

private:
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestSettings)

#include "tst_settings.moc"
