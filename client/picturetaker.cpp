#include "picturetaker.h"

#include "mainwindow.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QPixmap>

#include <cstdio>

namespace {

// Panels are filled a moment after a selection; a reply of the store comes within a few milliseconds.
constexpr int SettleTime = 400;

QString translated(const char *source)
{
    return QCoreApplication::translate("PictureTaker", source);
}

void letSettle()
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < SettleTime)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
}

} // namespace

PictureTaker::PictureTaker(MainWindow &window, const QString &folder)
    : m_window(window)
    , m_folder(folder)
{
}

QString PictureTaker::takeAll()
{
    if (!QDir().mkpath(m_folder))
        return translated("Папку «%1» нельзя создать.").arg(m_folder);
    const QStringList pages = m_window.shownPages();
    if (pages.isEmpty())
        return translated("Нет ни одной страницы, которую можно показать.");
    for (const bool dark : {false, true}) {
        m_window.setTheme(dark ? tqstyles::Theme::Dark : tqstyles::Theme::Light);
        for (const QString &page : pages) {
            m_window.showPage(page);
            QString failure = takeTabs(page, dark ? QStringLiteral("dark") : QStringLiteral("light"));
            if (!failure.isEmpty())
                return failure;
        }
    }
    return {};
}

QString PictureTaker::takeTabs(const QString &page, const QString &theme)
{
    const int tabs = qMax(1, m_window.tabCount());
    for (int tab = 0; tab < tabs; ++tab) {
        m_window.showTab(tab);
        QString failure = take(QStringLiteral("%1-%2-%3.png").arg(page).arg(tab + 1).arg(theme));
        if (!failure.isEmpty())
            return failure;
    }
    return {};
}

QString PictureTaker::take(const QString &name)
{
    letSettle();
    const QString path = QDir(m_folder).absoluteFilePath(name);
    if (!m_window.grab().save(path))
        return translated("Файл «%1» нельзя записать.").arg(path);
    std::printf("%s\n", qUtf8Printable(QDir::toNativeSeparators(path)));
    return {};
}
