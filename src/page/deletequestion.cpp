#include "deletequestion.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPointer>

namespace scheduleview {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(DeleteQuestion)
};

QString question(const QStringList &names)
{
    if (names.size() == 1)
        return Texts::tr("Удалить") + QStringLiteral(" %1 \"%2\"?").arg(Texts::tr("график работы"), names.first());
    return Texts::tr("Удалить")
        + QStringLiteral(" %1 %2?").arg(QString::number(names.size()), Texts::tr("графиков(а) работ"));
}

} // namespace

bool confirmDeletion(QWidget *page, const QStringList &names)
{
    // The page may be destroyed while the question is open, and the box with it.
    const QPointer<QMessageBox> box = new QMessageBox(QMessageBox::Question, Texts::tr("Удаление"), question(names),
                                                      QMessageBox::Ok | QMessageBox::Cancel, page);
    box->setDefaultButton(QMessageBox::Cancel);
    // A name may contain markup.
    box->setTextFormat(Qt::PlainText);
    const bool confirmed = box->exec() == QMessageBox::Ok;
    if (!box)
        return false;
    box->deleteLater();
    return confirmed;
}

} // namespace scheduleview
