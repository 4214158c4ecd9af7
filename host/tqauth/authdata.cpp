#include "authdata.h"

namespace {

struct Session
{
    QString login;
    QString id;
    QStringList roles;
};

Session &session()
{
    static Session current;
    return current;
}

} // namespace

QStringList AuthData::roles()
{
    return session().roles;
}

QString AuthData::sessionId()
{
    return session().id;
}

QString AuthData::login()
{
    return session().login;
}

void AuthData::signIn(const QString &login, const QString &sessionId)
{
    session().login = login;
    session().id = sessionId;
}

void AuthData::setRoles(const QStringList &roles)
{
    session().roles = roles;
}

void AuthData::signOut()
{
    session() = {};
}
