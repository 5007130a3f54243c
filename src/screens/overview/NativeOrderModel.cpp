#include "screens/overview/NativeOrderModel.h"

#include "screens/overview/OverviewRules.h"

using namespace Qt::StringLiterals;
using Row = TarnOrder;

NativeOrderModel::NativeOrderModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "orderId", [](const Row &r) { return r.id; } },
            { "client", [](const Row &r) { return r.client_name; } },
            { "summary", [](const Row &r) { return r.summary; } },
            { "status", [](const Row &r) { return r.status; } },
            { "statusLabel", [](const Row &r) { return OverviewRules::statusLabel(r.status); } },
            { "shipping",
                [](const Row &r) {
                    return r.carrier ? QString(*r.carrier + u' ' + r.tracking.value_or(QString())).trimmed()
                                     : QString();
                } },
            { "eta", [](const Row &r) { return OverviewRules::etaLabel(r, QDate::currentDate()); } },
            { "late", [](const Row &r) { return OverviewRules::late(r, QDate::currentDate()); } },
            { "advance",
                [](const Row &r) {
                    const QString next = OverviewRules::nextStatus(r.status);
                    return next.isEmpty() ? QString() : u"Mark "_s + next;
                } },
        },
        parent)
{
}
