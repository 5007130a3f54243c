#include "screens/support/NativeSupportTimeModel.h"

#include "screens/support/SupportLabels.h"

#include <QDate>
#include <QLocale>

using Row = TarnSupportTimeEntry;

NativeSupportTimeModel::NativeSupportTimeModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "entryId", [](const Row &r) { return r.id; } },
            { "taskId", [](const Row &r) { return r.task_id; } },
            { "task", [](const Row &r) { return r.task_title; } },
            { "person", [](const Row &r) { return r.person_name; } },
            { "duration", [](const Row &r) { return SupportLabels::minutes(r.minutes); } },
            { "day",
                [](const Row &r) {
                    return QLocale(QLocale::English)
                        .toString(QDate::fromString(r.day, Qt::ISODate), QStringLiteral("ddd d MMM"));
                } },
            { "note", [](const Row &r) { return r.note; } },
        },
        parent)
{
}
