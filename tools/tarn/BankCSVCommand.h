#pragma once

class CommandLine;

// `tarn bank-csv FILE`: checks a bank statement the way the import does and
// prints its rows as JSON, or the message the user would see.
[[nodiscard]] int runBankCSV(CommandLine &line);
