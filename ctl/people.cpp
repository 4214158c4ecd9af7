#include "people.h"

#include "jsonresource.h"

namespace {

QString pick(QRandomGenerator &random, const QStringList &list)
{
    return list.at(random.bounded(list.size()));
}

QString feminineSurname(const QString &surname)
{
    const QString adjective = QStringLiteral("ий");
    return surname.endsWith(adjective) ? surname.chopped(adjective.size()) + QStringLiteral("ая")
                                       : surname + QStringLiteral("а");
}

/// "Иванович" → "Ивановна", "Игоревич" → "Игоревна".
QString femininePatronymic(const QString &patronymic)
{
    return patronymic.chopped(2) + QStringLiteral("на");
}

} // namespace

People::People()
{
    using jsonresource::strings;
    const QJsonObject json = jsonresource::read(QStringLiteral("names.json"));
    m_surnames = strings(json[QLatin1String("surnames")]);
    m_maleNames = strings(json[QLatin1String("maleNames")]);
    m_femaleNames = strings(json[QLatin1String("femaleNames")]);
    m_patronymics = strings(json[QLatin1String("patronymics")]);
}

People::Person People::next(QRandomGenerator &random)
{
    constexpr int Attempts = 100;
    Person person;
    for (int attempt = 0; attempt < Attempts; ++attempt) {
        person.sex = random.bounded(2) == 0 ? Sex::Male : Sex::Female;
        const bool female = person.sex == Sex::Female;
        const QString surname = pick(random, m_surnames);
        const QString name = pick(random, female ? m_femaleNames : m_maleNames);
        const QString patronymic = pick(random, m_patronymics);
        person.name = QStringLiteral("%1 %2 %3")
                          .arg(female ? feminineSurname(surname) : surname, name,
                               female ? femininePatronymic(patronymic) : patronymic);
        if (!m_used.contains(person.name))
            break;
    }
    m_used.insert(person.name);
    return person;
}
