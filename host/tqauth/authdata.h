#pragma once

#include "tqauth_export.h"

#include <QString>
#include <QStringList>

/// Who is signed in and what the store grants right now. The client writes it, everybody else reads. GUI thread only.
class TQAUTH_EXPORT AuthData
{
public:
    /// The roles that the store granted when it was last asked: on connect, on reconnect and every 30 seconds.
    [[nodiscard]] static QStringList roles();
    /// The identifier of this client's session; empty before sign-in.
    [[nodiscard]] static QString sessionId();
    /// The name under which the store knows this client; empty before sign-in.
    [[nodiscard]] static QString login();

    /// Begins a session: \a login as the store knows it, \a sessionId of the client's choice. The roles stay as they
    /// are.
    static void signIn(const QString &login, const QString &sessionId);
    /// Replaces what the store grants; names such as "RL_SCHEDULE_SHOW".
    static void setRoles(const QStringList &roles);
    /// Forgets login, session and roles.
    static void signOut();
};
