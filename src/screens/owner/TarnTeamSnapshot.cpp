#include "screens/owner/TarnTeamSnapshot.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnTeamSnapshot TarnTeamSnapshot::fromJSON(const TarnJSONObject &json)
{
    return { .today = json.string("today"_L1),
        .months = json.list<TarnMoneyMonth>("months"_L1),
        .open_invoices = json.integer("open_invoices"_L1),
        .open_invoices_amount = json.integer("open_invoices_amount"_L1),
        .open_invoices_overdue = json.integer("open_invoices_overdue"_L1),
        .unpaid_bills = json.integer("unpaid_bills"_L1),
        .unpaid_bills_amount = json.integer("unpaid_bills_amount"_L1),
        .unpaid_bills_overdue = json.integer("unpaid_bills_overdue"_L1),
        .payments_received = json.integer("payments_received"_L1),
        .payments_received_amount = json.integer("payments_received_amount"_L1),
        .support_open = json.integer("support_open"_L1),
        .support_overdue = json.integer("support_overdue"_L1),
        .inbox_waiting = json.integer("inbox_waiting"_L1),
        .week_start = json.string("week_start"_L1),
        .team = json.list<TarnTeamWeek>("team"_L1) };
}
