#include "money/TarnBooks.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnBooksSourceRecord TarnBooksSourceRecord::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .amount = json.integer("amount"_L1),
        .title = json.optionalString("title"_L1),
        .date = json.optionalString("date"_L1),
    };
}

TarnBooksSourceReview TarnBooksSourceReview::fromJSON(const TarnJSONObject &json)
{
    return {
        .invoices = json.list<TarnBooksSourceRecord>("invoices"_L1),
        .payments = json.list<TarnBooksSourceRecord>("payments"_L1),
    };
}

TarnBooks TarnBooks::fromJSON(const TarnJSONObject &json)
{
    return {
        .company = json.string("company"_L1),
        .source_linked = json.boolean("source_linked"_L1),
        .source_review = json.optional<TarnBooksSourceReview>("source_review"_L1),
        .parties = json.optionalList<TarnBooksParty>("parties"_L1),
        .accounts = json.list<TarnBooksAccount>("accounts"_L1),
        .entries = json.list<TarnBooksEntry>("entries"_L1),
        .entry_count = json.integer("entry_count"_L1),
        .bills = json.list<TarnBooksBill>("bills"_L1),
        .bill_payments = json.optionalList<TarnBooksBillPayment>("bill_payments"_L1),
        .customer_invoices = json.list<TarnBooksCustomerInvoice>("customer_invoices"_L1),
        .document_lines = json.optionalList<TarnBooksDocumentLine>("document_lines"_L1),
        .customer_receipts = json.optionalList<TarnBooksCustomerReceipt>("customer_receipts"_L1),
        .bank_rows = json.list<TarnBooksBankRow>("bank_rows"_L1),
        .bank_matches = json.optionalList<TarnBooksBankMatch>("bank_matches"_L1),
        .bank_matched = json.optionalList<TarnBooksMatchedRow>("bank_matched"_L1),
    };
}
