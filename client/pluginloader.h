#pragma once

#include <QCoreApplication>
#include <QList>
#include <QString>

#include <exception>

class TQPluginInterface;

/// Finds the plug-ins of a folder and creates their objects, in an order in which each comes after those it requires.
/// A library that fails is named with its reason and does not touch the others.
class PluginLoader
{
    Q_DECLARE_TR_FUNCTIONS(PluginLoader)

public:
    struct Plugin
    {
        QString file; ///< file name without the folder
        QString name; ///< what the plug-in calls itself
        QStringList required; ///< names of the plug-ins before it
        TQPluginInterface *object = nullptr; ///< the library's own; lives as long as the library is loaded
    };
    struct Failure
    {
        QString file;
        QString reason; ///< whole sentences
    };

    /// Loads every library of \a folder. Libraries stay loaded to the end of the program.
    void load(const QString &folder);

    [[nodiscard]] const QList<Plugin> &plugins() const { return m_plugins; }
    [[nodiscard]] const QList<Failure> &failures() const { return m_failures; }

    /// Runs \a call; what it throws becomes a text. Empty: nothing was thrown.
    template <class Call> [[nodiscard]] static QString failureOf(Call call)
    {
        try {
            call();
            return {};
        } catch (const std::exception &exception) {
            return tr("Модуль сообщил об ошибке: %1.").arg(QString::fromLocal8Bit(exception.what()));
        } catch (...) {
            return tr("Модуль сообщил о неизвестной ошибке.");
        }
    }

private:
    void loadLibrary(const QString &path);
    void putInOrder();

    QList<Plugin> m_plugins;
    QList<Failure> m_failures;
};
