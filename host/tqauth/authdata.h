#pragma once

#include "tqauth_export.h"

#include <QObject>
#include <QString>
#include <QStringList>

/// The signed-in user and what the store grants right now. Only the client writes it. GUI thread only.
class TQAUTH_EXPORT AuthData final : public QObject
{
    Q_OBJECT

public:
    /// The sender of the signals; it exists until the program ends.
    static AuthData *instance();

    /// The roles that the store granted when it was last asked: on connect, on reconnect and every 30 seconds.
    [[nodiscard]] static QStringList roles();
    /// The identifier of this client's session; empty before sign-in.
    [[nodiscard]] static QString sessionId();
    /// The name under which the store knows this client; empty before sign-in.
    [[nodiscard]] static QString login();

    /// Begins a session: \a login as the store knows it, \a sessionId as the client chooses it. Keeps the roles.
    static void signIn(const QString &login, const QString &sessionId);
    /// Replaces the granted roles; names such as "RL_SCHEDULE_SHOW".
    static void setRoles(const QStringList &roles);
    /// Clears login, session and roles.
    static void signOut();

signals:
    /// A role was granted or revoked. A different order of the names is not a change.
    void rolesChanged();

private:
    AuthData() = default;

    QString m_login;
    QString m_sessionId;
    QStringList m_roles;
};
