#include "screens/calls/NativeLeadModel.h"

#include "screens/calls/CallBookRules.h"

#include <QLocale>

using namespace Qt::StringLiterals;
using Row = TarnSalesLead;

NativeLeadModel::NativeLeadModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "leadId", [](const Row &r) { return r.id; } },
            { "name", [](const Row &r) { return r.name; } },
            { "phone", [](const Row &r) { return r.phone.value_or(QString()); } },
            { "status", [](const Row &r) { return r.status; } },
            { "statusLabel", [](const Row &r) { return CallBookRules::leadStatusLabel(r.status); } },
            { "interest", [](const Row &r) { return r.interest; } },
            { "source", [](const Row &r) { return r.source; } },
            { "owner", [](const Row &r) { return r.owner_name.value_or(QString()); } },
            { "estimate",
                [](const Row &r) {
                    return QLocale(QLocale::English).toCurrencyString(double(r.estimate) / 100, u"$"_s, 0);
                } },
            { "lastCall",
                [](const Row &r) {
                    return r.last_call_at ? CallBookRules::startedLabel(*r.last_call_at, QDateTime::currentDateTime())
                                          : QString();
                } },
            { "callCount", [](const Row &r) { return r.call_count; } },
        },
        parent)
{
}
