#pragma once

#include <QSqlDatabase>

// The payments terminal's demo: a month of card payments dated back from
// today with open invoices and a refund in each state, and recurring charges
// with their past runs. Each part plants itself when its tables are empty,
// so an older data folder gets what it lacks.
namespace PaymentsSeed {

void plant(const QSqlDatabase &db);

} // namespace PaymentsSeed
