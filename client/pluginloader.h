#pragma once

#include <QCoreApplication>
#include <QList>
#include <QString>

#include <exception>

class TQPluginInterface;

/// Finds the plug-ins of a folder and creates their objects, sorted so that each follows those that it requires.
/// A library that fails is recorded with the reason and does not affect the others.
class PluginLoader
{
    Q_DECLARE_TR_FUNCTIONS(PluginLoader)

public:
    struct Plugin
    {
        QString file; ///< file name without the folder
        QString name; ///< `TQPluginInterface::pluginName`
        QStringList required; ///< names of the plug-ins that it needs
        TQPluginInterface *object = nullptr; ///< owned by the library, which is never unloaded
    };
    struct Failure
    {
        QString file;
        QString reason; ///< full sentences
    };

    /// Loads every library of \a folder. Libraries stay loaded until the program ends.
    void load(const QString &folder);

    [[nodiscard]] const QList<Plugin> &plugins() const { return m_plugins; }
    [[nodiscard]] const QList<Failure> &failures() const { return m_failures; }

    /// Runs \a call and returns the text of the exception that it throws; empty without an exception.
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
    void sortByRequirements();

    QList<Plugin> m_plugins;
    QList<Failure> m_failures;
};
