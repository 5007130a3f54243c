#include "screens/support/NativeSupportRecurringModel.h"

#include "screens/support/SupportLabels.h"

#include <QDate>
#include <QLocale>
#include <QStringList>

using Row = TarnSupportRecurring;

NativeSupportRecurringModel::NativeSupportRecurringModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "ruleId", [](const Row &r) { return r.id; } },
            { "title", [](const Row &r) { return r.title; } },
            { "summary",
                [](const Row &r) {
                    QStringList parts { SupportLabels::every(r.every) };
                    if (r.client_name)
                        parts.append(*r.client_name);
                    if (r.assignee_name)
                        parts.append(*r.assignee_name);
                    return parts.join(QStringLiteral(" · "));
                } },
            { "nextDue",
                [](const Row &r) {
                    return r.next_due
                        ? QLocale(QLocale::English)
                              .toString(QDate::fromString(*r.next_due, Qt::ISODate), QStringLiteral("ddd d MMM"))
                        : QString();
                } },
            { "active", [](const Row &r) { return r.active; } },
        },
        parent)
{
}
