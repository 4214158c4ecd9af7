#pragma once

#include "avatar.h"

#include <QRandomGenerator>
#include <QSet>
#include <QString>
#include <QStringList>

/// Full names of people who do not exist, none of them twice as long as the stock of names lasts.
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
    QStringList m_surnames; ///< as a man bears them
    QStringList m_maleNames;
    QStringList m_femaleNames;
    QStringList m_patronymics; ///< as a man bears them
    QSet<QString> m_given;
};
