#pragma once

#include <QStringList>

// `tarn bank-csv FILE`: checks a bank statement the way the import does and
// prints its rows as JSON, or the message the user would see.
int runBankCSV(const QStringList &args);
