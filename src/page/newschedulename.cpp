#include "newschedulename.h"

#include "schedulemodel.h"

#include <QCoreApplication>

namespace scheduleview {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(NewScheduleName)
};

} // namespace

QString newScheduleName(const ScheduleModel &model)
{
    constexpr int MaximumMatches = 32;
    const QString base = Texts::tr("Новый график работы");
    const auto matches = model.match(model.index(0, ScheduleModel::NameColumn), Qt::DisplayRole, base, MaximumMatches,
                                     Qt::MatchStartsWith | Qt::MatchWrap);
    qint64 highest = 0;
    for (const auto &match : matches) {
        QString rest = match.data().toString();
        highest = qMax<qint64>(highest, rest.remove(base).toInt());
    }
    return QStringLiteral("%1 %2").arg(base, QString::number(highest + 1));
}

} // namespace scheduleview
