#include "money/TarnBooksRequests.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

QJsonObject TarnBooksCompanyName::toJSON() const
{
    return { { u"name"_s, name } };
}

QJsonObject TarnBooksSourceLink::toJSON() const
{
    return { { u"enabled"_s, enabled } };
}

QJsonObject TarnBooksSourcePost::toJSON() const
{
    QJsonObject json { { u"kind"_s, kind }, { u"id"_s, id } };
    if (kind == "invoice"_L1 && income_account_id)
        json.insert(u"income_account_id"_s, *income_account_id);
    return json;
}

QJsonObject TarnBooksBankImport::toJSON() const
{
    QJsonArray array;
    for (const TarnBankCSV::Row &row : rows) {
        array.append(QJsonObject { { u"date"_s, row.date }, { u"description"_s, row.description },
            { u"amount"_s, row.amount }, { u"reference"_s, row.reference } });
    }
    return { { u"bank_account_id"_s, bank_account_id }, { u"rows"_s, array } };
}

QJsonObject TarnBooksEntryChoice::toJSON() const
{
    return { { u"entry_id"_s, entry_id } };
}

QJsonObject TarnBooksAccountChoice::toJSON() const
{
    return { { u"account_id"_s, account_id } };
}

QJsonObject TarnBooksStatementClose::toJSON() const
{
    return { { u"bank_account_id"_s, bank_account_id }, { u"statement_date"_s, statement_date },
        { u"statement_balance"_s, statement_balance } };
}

QJsonObject TarnBooksEffectiveDate::toJSON() const
{
    return { { u"date"_s, date } };
}
