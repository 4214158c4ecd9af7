#include "storecheck.h"

#include "connection.h"
#include "records.h"
#include "validation.h"

#include <QCryptographicHash>
#include <QJsonDocument>

namespace store {

namespace {

// Per kind: more of them usually have one cause and would hide faults of other kinds.
constexpr int MaximumFaults = 20;
// Of schedules_all.
constexpr int ScheduleDateColumn = 5;
constexpr int ScheduleModeColumn = 14;

/// Collects the faults of one kind.
class Collector
{
    Q_DECLARE_TR_FUNCTIONS(store::StoreCheck)

public:
    Collector(QList<Fault> &faults, QString remedy)
        : m_faults(faults)
        , m_remedy(std::move(remedy))
    {
    }
    ~Collector()
    {
        if (m_count > MaximumFaults)
            m_faults.append({tr("И ещё ошибок того же рода: %1.").arg(m_count - MaximumFaults), m_remedy});
    }
    Q_DISABLE_COPY(Collector)

    void add(const QString &text)
    {
        if (++m_count <= MaximumFaults)
            m_faults.append({text, m_remedy});
    }

private:
    QList<Fault> &m_faults;
    QString m_remedy;
    int m_count = 0;
};

/// Calls \a check with each row of the statement \a name. The connection keeps a failure.
template <class Check> void forEachRow(Connection &connection, const QByteArray &name, Check check)
{
    Query select = connection.query(name);
    if (!select.exec())
        return;
    while (select.next())
        check(select);
}

/// Whether the stored text equals the one written for the record that was read from it.
bool isReadCompletely(const QString &stored, const QString &written)
{
    const auto document = QJsonDocument::fromJson(stored.toUtf8());
    return !document.isNull() && document == QJsonDocument::fromJson(written.toUtf8());
}

} // namespace

StoreCheck::StoreCheck(Connection &connection)
    : m_connection(connection)
{
}

const QList<StoreCheck::Step> &StoreCheck::steps()
{
    static const QList<Step> all{&StoreCheck::checkReferences, &StoreCheck::checkSchedules,
                                 &StoreCheck::checkCalendarDays, &StoreCheck::checkBlobs,
                                 &StoreCheck::checkProductionDays};
    return all;
}

Outcome StoreCheck::checkAll(QList<Fault> &faults)
{
    const QString restore = tr("Восстановите хранилище из резервной копии (папка backups рядом с ним).");
    QStringList damage;
    if (Outcome read = m_connection.driver().findDamage(damage); !read.ok())
        return read;
    {
        Collector damaged(faults, restore);
        for (const QString &text : qAsConst(damage))
            damaged.add(tr("Файл повреждён: %1.").arg(text));
    }
    QStringList failures;
    for (const Step step : steps()) {
        const Outcome outcome = m_connection.transact(Transaction::Read, [this, step, &faults]() -> Outcome {
            (this->*step)(faults);
            return m_connection.failure();
        });
        if (outcome.ok() || failures.contains(outcome.text))
            continue;
        failures.append(outcome.text);
        faults.append({outcome.text, outcome.advice.isEmpty() ? restore : outcome.advice});
    }
    return {};
}

Outcome StoreCheck::checkRecords(QList<Fault> &faults)
{
    for (const Step step : steps()) {
        (this->*step)(faults);
        if (m_connection.failed())
            return m_connection.failure();
    }
    return {};
}

void StoreCheck::checkReferences(QList<Fault> &faults)
{
    static const QHash<QString, const char *> sentences{
        {QStringLiteral("subject.object"), QT_TR_NOOP("Работник %1 не занесён в перечень объектов.")},
        {QStringLiteral("subject.unit"), QT_TR_NOOP("Работник %1 числится в подразделении %2, которого нет.")},
        {QStringLiteral("subject.schedule"), QT_TR_NOOP("Основного графика %2 работника %1 нет.")},
        {QStringLiteral("unit.object"), QT_TR_NOOP("Подразделение %1 не занесено в перечень объектов.")},
        {QStringLiteral("unit.parent"), QT_TR_NOOP("Подразделение %1 входит в подразделение %2, которого нет.")},
        {QStringLiteral("unit.cycle"), QT_TR_NOOP("Подразделение %1 входит само в себя.")},
        {QStringLiteral("schedule.worker"), QT_TR_NOOP("Работника %2, которому принадлежит график %1, нет.")},
        {QStringLiteral("schedule.twice"),
         QT_TR_NOOP("У работника %1 несколько индивидуальных графиков, которые начинаются %2.")},
        {QStringLiteral("interval.shift"), QT_TR_NOOP("Смены %2, которой принадлежит интервал %1, нет.")},
        {QStringLiteral("day.schedule"), QT_TR_NOOP("Календарные дни есть у графика %1, которого нет.")},
        {QStringLiteral("day.shift"), QT_TR_NOOP("В календаре графика %1 стоит смена %2, которой нет.")},
        {QStringLiteral("blob.object"), QT_TR_NOOP("Объекта %1, которому принадлежат данные %2, нет.")},
        {QStringLiteral("service.rows"), QT_TR_NOOP("В служебной таблице %2 записей: %1, а нужна одна.")},
        {QStringLiteral("service.cut"), QT_TR_NOOP("Журнал изменений кончается записью %1, а обрезан по запись %2.")},
    };
    Collector collector(faults,
                        tr("Выгрузите хранилище командой orvexctl dump, исправьте или удалите эту запись в выгрузке и "
                           "загрузите её в новый файл командой orvexctl load; или восстановите хранилище из резервной "
                           "копии без этой ошибки."));
    forEachRow(m_connection, "check_references", [&](const Query &row) {
        const QString sentence = tr(sentences.value(row.text(0), QT_TR_NOOP("Запись %1 нарушает связи данных.")));
        collector.add(sentence.contains(QLatin1String("%2")) ? sentence.arg(row.text(1), row.text(2))
                                                             : sentence.arg(row.text(1)));
    });
}

void StoreCheck::checkSchedules(QList<Fault> &faults)
{
    Collector collector(faults,
                        tr("Откройте график в программе, исправьте его и сохраните; если он не открывается, "
                           "удалите его и создайте заново."));
    TextPool pool;
    forEachRow(m_connection, "schedules_all", [&](const Query &row) {
        const auto schedule = records::schedule(row, pool);
        if (const QString fault = scheduleFault(row, schedule); !fault.isEmpty())
            collector.add(tr("График %1 «%2»: %3").arg(schedule.id).arg(schedule.name, fault));
    });
}

QString StoreCheck::scheduleFault(const Query &row, const orvex::SCHEDULE_DATA &schedule)
{
    const QString mode = row.text(ScheduleModeColumn);
    if (!mode.isEmpty() && !isReadCompletely(mode, records::modeText(schedule)))
        return tr("Режим работы записан неверно.");
    if (!row.text(ScheduleDateColumn).isEmpty() && !schedule.startDate.isValid())
        return tr("Дата начала %1 записана неверно.").arg(row.text(ScheduleDateColumn));
    if (QString fault = Validation::fault(schedule); !fault.isEmpty())
        return fault;
    if (!(records::withIdentifiers(schedule) == schedule))
        return tr("Номера дней, смен или интервалов повторяются или не заданы.");
    return {};
}

void StoreCheck::checkCalendarDays(QList<Fault> &faults)
{
    Collector collector(faults, tr("Откройте календарь графика в программе, исправьте этот день и сохраните."));
    forEachRow(m_connection, "calendar_days_all", [&](const Query &row) {
        auto day = records::calendarDay(row);
        day.storedMode = day.dayMode;
        const QString intervals = row.text(3);
        QString fault = Validation::fault(day);
        if (fault.isEmpty() && !intervals.isEmpty()
            && !isReadCompletely(intervals, records::intervalsText(day.intervals)))
            fault = tr("Интервалы записаны неверно.");
        if (!fault.isEmpty())
            collector.add(tr("График %1, день %2: %3").arg(row.text(5), row.text(0), fault));
    });
}

void StoreCheck::checkBlobs(QList<Fault> &faults)
{
    Collector collector(faults, tr("Запишите эти данные (фотографию) заново."));
    forEachRow(m_connection, "blobs_all", [&](const Query &row) {
        if (QCryptographicHash::hash(row.bytes(3), QCryptographicHash::Md5) != row.bytes(2))
            collector.add(tr("Контрольная сумма данных %2 объекта %1 не сходится.").arg(row.text(0), row.text(1)));
    });
}

void StoreCheck::checkProductionDays(QList<Fault> &faults)
{
    Collector collector(faults, tr("Исправьте производственный календарь."));
    forEachRow(m_connection, "production_days_all", [&](const Query &row) {
        if (!row.date(0).isValid())
            collector.add(tr("В производственном календаре есть день с неверной датой %1.").arg(row.text(0)));
    });
}

} // namespace store
