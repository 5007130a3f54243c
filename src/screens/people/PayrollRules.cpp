#include "screens/people/PayrollRules.h"

#include "money/TarnMoneyInput.h"

using namespace Qt::StringLiterals;

namespace PayrollRules {

namespace {

QString field(const QString &text)
{
    if (!text.contains(u',') && !text.contains(u'"') && !text.contains(u'\n') && !text.contains(u'\r'))
        return text;
    return u'"' + QString(text).replace(u"\""_s, u"\"\""_s) + u'"';
}

} // namespace

QDate periodStart(QDate day)
{
    const qint64 days = firstPeriodStart.daysTo(day);
    // Floor division, so days before the first period fall in the one before it.
    const qint64 periods = days >= 0 ? days / periodDays : -((-days + periodDays - 1) / periodDays);
    return firstPeriodStart.addDays(periods * periodDays);
}

bool allows(const QString &status, const QString &action)
{
    if (status == "open"_L1)
        return action == "approve"_L1 || action == "adjust"_L1;
    if (status == "approved"_L1)
        return action == "reopen"_L1 || action == "mark-paid"_L1;
    return false;
}

qint64 pay(qint64 minutes, qint64 rate)
{
    return (minutes * rate + 30) / 60;
}

QByteArray csv(QDate start, QDate end, const QList<TarnPayrollLine> &lines)
{
    if (lines.isEmpty())
        return {};
    QString out = u"Period,Person,Hours,Rate,Regular pay,Adjustments,Total\r\n"_s;
    const QString period = start.toString(Qt::ISODate) + u" to "_s + end.toString(Qt::ISODate);
    qint64 total = 0;
    for (const TarnPayrollLine &line : lines) {
        qint64 adjusted = 0;
        for (const TarnPayrollAdjustment &adjustment : line.adjustments)
            adjusted += adjustment.amount;
        total += line.total;
        out += QStringList { period, field(line.person_name), TarnMoneyInput::text(line.minutes * 100 / 60),
            TarnMoneyInput::text(line.rate), TarnMoneyInput::text(line.regular_pay), TarnMoneyInput::text(adjusted),
            TarnMoneyInput::text(line.total) }
                   .join(u',')
            + u"\r\n"_s;
    }
    out += QStringList { period, u"Total"_s, {}, {}, {}, {}, TarnMoneyInput::text(total) }.join(u',') + u"\r\n"_s;
    return out.toUtf8();
}

} // namespace PayrollRules
