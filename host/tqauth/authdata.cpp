#include "authdata.h"

#include <QSet>

#include <utility>

namespace {

QSet<QString> setOf(const QStringList &names)
{
    return {names.cbegin(), names.cend()};
}

} // namespace

AuthData *AuthData::instance()
{
    static AuthData data;
    return &data;
}

QStringList AuthData::roles()
{
    return instance()->m_roles;
}

QString AuthData::sessionId()
{
    return instance()->m_sessionId;
}

QString AuthData::login()
{
    return instance()->m_login;
}

void AuthData::signIn(const QString &login, const QString &sessionId)
{
    instance()->m_login = login;
    instance()->m_sessionId = sessionId;
}

void AuthData::setRoles(const QStringList &roles)
{
    const QStringList old = std::exchange(instance()->m_roles, roles);
    if (setOf(old) != setOf(roles))
        emit instance()->rolesChanged();
}

void AuthData::signOut()
{
    signIn({}, {});
    setRoles({});
}
