#include "screens/people/NativeHRRecordModel.h"

#include "screens/people/HRRules.h"

#include <QDate>
#include <QLocale>

using namespace Qt::StringLiterals;
using Row = TarnHRRecord;

NativeHRRecordModel::NativeHRRecordModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "personId", [](const Row &r) { return r.id; } },
            { "name", [](const Row &r) { return r.name; } },
            { "email", [](const Row &r) { return r.email; } },
            { "jobTitle", [](const Row &r) { return r.job_title; } },
            { "employment", [](const Row &r) { return r.employment; } },
            { "employmentLabel", [](const Row &r) { return HRRules::employmentLabel(r.employment); } },
            { "startedOn", [](const Row &r) { return r.started_on; } },
            { "since",
                [](const Row &r) {
                    const QDate day = QDate::fromString(r.started_on, Qt::ISODate);
                    return day.isValid() ? u"Since %1"_s.arg(QLocale().toString(day, u"d MMM yyyy"_s)) : QString();
                } },
            { "phone", [](const Row &r) { return r.phone.value_or(QString()); } },
            { "emergencyContact", [](const Row &r) { return r.emergency_contact.value_or(QString()); } },
            { "clockedIn", [](const Row &r) { return r.clocked_in; } },
        },
        parent)
{
}

QVariantMap NativeHRRecordModel::recordOf(const QString &id) const
{
    QVariantMap out;
    const auto at = std::find_if(rows().cbegin(), rows().cend(), [&](const Row &r) { return r.id == id; });
    if (at == rows().cend())
        return out;
    const QModelIndex row = index(static_cast<int>(at - rows().cbegin()));
    const QHash<int, QByteArray> names = roleNames();
    for (auto name = names.cbegin(); name != names.cend(); ++name)
        out.insert(QString::fromUtf8(name.value()), data(row, name.key()));
    return out;
}
