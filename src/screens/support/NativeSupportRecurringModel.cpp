#include "screens/support/NativeSupportRecurringModel.h"

#include "screens/support/SupportLabels.h"

#include <QDate>
#include <QLocale>

using Row = TarnSupportRecurring;

NativeSupportRecurringModel::NativeSupportRecurringModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "ruleId", [](const Row &r) { return r.id; } },
            { "title", [](const Row &r) { return r.title; } },
            { "client", [](const Row &r) { return r.client_name.value_or(QString()); } },
            { "assignee", [](const Row &r) { return r.assignee_name.value_or(QString()); } },
            { "every", [](const Row &r) { return SupportLabels::every(r.every); } },
            { "nextDue",
                [](const Row &r) {
                    return r.next_due ? QLocale(QLocale::English)
                                            .toString(QDate::fromString(*r.next_due, Qt::ISODate),
                                                QStringLiteral("ddd d MMM"))
                                      : QString();
                } },
            { "active", [](const Row &r) { return r.active; } },
        },
        parent)
{
}
