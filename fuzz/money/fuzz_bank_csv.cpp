// libFuzzer target: any bytes through the file check and the statement reader.
// Besides crashes it checks what the reader promises of every row it returns.
#include "money/TarnBankCSV.h"
#include "money/TarnLedgerDates.h"

#include <QByteArray>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    QString text;
    try {
        text = TarnBankCSV::decodeFile(bytes);
    } catch (const TarnBankCSV::ParseError &) {
        // Not UTF-8: still read the Latin-1 view, since parse takes any text.
        text = QString::fromLatin1(bytes);
    }
    try {
        const QList<TarnBankCSV::Row> rows = TarnBankCSV::parse(text);
        if (rows.isEmpty() || rows.size() > TarnBankCSV::maxRows)
            std::abort();
        for (const TarnBankCSV::Row &row : rows) {
            if (!TarnLedgerDates::isDay(row.date) || row.description.isEmpty() || row.amount == 0
                || row.amount > TarnBankCSV::bankLimitCents || row.amount < -TarnBankCSV::bankLimitCents
                || row.description != row.description.trimmed() || row.reference != row.reference.trimmed())
                std::abort();
        }
    } catch (const TarnBankCSV::ParseError &error) {
        if (error.message().isEmpty())
            std::abort();
    }
    return 0;
}
