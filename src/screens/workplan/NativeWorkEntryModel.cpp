#include "screens/workplan/NativeWorkEntryModel.h"

#include "screens/workplan/WorkPlanRules.h"

#include <QHash>
#include <QStringList>

using namespace Qt::StringLiterals;
using Row = WorkPlanRow;

namespace {

// What the entry is, for whom and when, as its second line says it.
QString summary(const Row &r)
{
    static const QHash<QString, QString> kinds { { u"customer"_s, u"Customer work"_s }, { u"support"_s, u"Support"_s },
        { u"call"_s, u"Call"_s }, { u"admin"_s, u"Admin task"_s }, { u"reminder"_s, u"Reminder"_s } };
    QStringList parts { kinds.value(r.entry.kind, r.entry.kind), r.entry.client_name.value_or(QString()),
        r.entry.time.value_or(QString()), r.entry.notes };
    parts.removeAll(QString());
    return parts.join(u" · "_s);
}

} // namespace

NativeWorkEntryModel::NativeWorkEntryModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "entryId", [](const Row &r) { return r.id; } },
            { "personId", [](const Row &r) { return r.entry.person_id; } },
            { "personName", [](const Row &r) { return r.person_name; } },
            { "kind", [](const Row &r) { return r.entry.kind; } },
            { "title", [](const Row &r) { return r.entry.title; } },
            { "day", [](const Row &r) { return WorkPlanRules::dayLabel(r.entry.day); } },
            { "isoDay", [](const Row &r) { return r.entry.day; } },
            { "notes", [](const Row &r) { return r.entry.notes; } },
            { "summary", [](const Row &r) { return summary(r); } },
            { "done", [](const Row &r) { return r.entry.done; } },
            { "doneBy", [](const Row &r) { return r.entry.done_by_name.value_or(QString()); } },
        },
        parent)
{
}
