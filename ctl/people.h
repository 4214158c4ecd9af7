#pragma once

#include "avatar.h"

#include <QRandomGenerator>
#include <QSet>
#include <QString>
#include <QStringList>

/// Random full names. They do not repeat until most combinations are used.
class People
{
public:
    struct Person
    {
        QString name; ///< surname, first name, patronymic
        Sex sex = Sex::Male;
    };

    People();

    [[nodiscard]] Person next(QRandomGenerator &random);

private:
    QStringList m_surnames; ///< masculine forms
    QStringList m_maleNames;
    QStringList m_femaleNames;
    QStringList m_patronymics; ///< masculine forms
    QSet<QString> m_used;
};
