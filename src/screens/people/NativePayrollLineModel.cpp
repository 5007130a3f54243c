#include "screens/people/NativePayrollLineModel.h"

#include "money/TarnMoneyInput.h"
#include "screens/people/TimeClockRules.h"

#include <QVariantList>
#include <QVariantMap>

using namespace Qt::StringLiterals;
using Row = TarnPayrollLine;

NativePayrollLineModel::NativePayrollLineModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "personId", [](const Row &r) { return r.person_id; } },
            { "name", [](const Row &r) { return r.person_name; } },
            { "hours", [](const Row &r) { return TimeClockRules::hoursText(r.minutes * 60); } },
            { "rate", [](const Row &r) { return QString(TarnMoneyInput::dollars(r.rate) + u"/h"_s); } },
            { "regularPay", [](const Row &r) { return TarnMoneyInput::dollars(r.regular_pay); } },
            { "adjustments",
                [](const Row &r) {
                    QVariantList out;
                    for (const TarnPayrollAdjustment &a : r.adjustments)
                        out.append(QVariantMap { { u"id"_s, a.id }, { u"label"_s, a.label },
                            { u"amount"_s, TarnMoneyInput::dollars(a.amount) }, { u"by"_s, a.created_by_name } });
                    return out;
                } },
            { "total", [](const Row &r) { return TarnMoneyInput::dollars(r.total); } },
        },
        parent)
{
}
