#include "money/TarnBooksDocuments.h"

#include "money/TarnMoneyInput.h"
#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

namespace {

// A quantity as ten-thousandths: "1.5" gives 15000.
std::optional<qint64> quantityUnits(QStringView text)
{
    const qsizetype point = text.indexOf(u'.');
    const QStringView whole = point < 0 ? text : text.first(point);
    const QStringView fraction = point < 0 ? QStringView() : text.sliced(point + 1);
    if (whole.size() > 6 || fraction.size() > 4 || (whole.isEmpty() && fraction.isEmpty()))
        return std::nullopt;
    qint64 units = 0;
    for (const QChar c : whole) {
        if (c.unicode() < u'0' || c.unicode() > u'9')
            return std::nullopt;
        units = units * 10 + (c.unicode() - u'0');
    }
    for (qsizetype i = 0; i < 4; ++i) {
        const QChar c = i < fraction.size() ? fraction[i] : u'0';
        if (c.unicode() < u'0' || c.unicode() > u'9')
            return std::nullopt;
        units = units * 10 + (c.unicode() - u'0');
    }
    if (units == 0)
        return std::nullopt;
    return units;
}

} // namespace

std::optional<TarnBooksLinePosting> TarnBooksLineDraft::posting() const
{
    const QString text = description.trimmed();
    const QString quantityText = quantity.trimmed();
    const std::optional<qint64> units = quantityUnits(quantityText);
    const std::optional<qint64> price = TarnMoneyInput::cents(unitPriceUSD, true);
    if (text.isEmpty() || accountID.isEmpty() || !units || !price)
        return std::nullopt;
    // Ten-thousandths of a unit times cents can pass 64 bits (a million hours
    // at a billion dollars); such a line is refused, never wrapped.
    qint64 product = 0;
    if (__builtin_mul_overflow(*units, *price, &product) || __builtin_add_overflow(product, qint64(5'000), &product))
        return std::nullopt;
    return TarnBooksLinePosting {
        .description = text,
        .quantity = quantityText,
        .unitPriceCents = *price,
        .accountID = accountID,
        .amountCents = product / 10'000,
    };
}

TarnBooksCustomerInvoice TarnBooksCustomerInvoice::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .customer = json.string("customer"_L1),
        .invoice_number = json.optionalString("invoice_number"_L1),
        .due_on = json.string("due_on"_L1),
        .amount = json.integer("amount"_L1),
        .remaining = json.integer("remaining"_L1),
        .status = json.string("status"_L1),
    };
}

TarnBooksBill TarnBooksBill::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .vendor = json.string("vendor"_L1),
        .bill_number = json.optionalString("bill_number"_L1),
        .due_date = json.string("due_date"_L1),
        .amount = json.integer("amount"_L1),
        .remaining = json.integer("remaining"_L1),
        .status = json.string("status"_L1),
    };
}

TarnBooksBillPayment TarnBooksBillPayment::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .amount = json.integer("amount"_L1),
        .bill_id = json.optionalString("bill_id"_L1),
        .vendor = json.optionalString("vendor"_L1),
        .paid_on = json.optionalString("paid_on"_L1),
        .status = json.optionalString("status"_L1),
    };
}

TarnBooksCustomerReceipt TarnBooksCustomerReceipt::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .amount = json.integer("amount"_L1),
        .invoice_id = json.optionalString("invoice_id"_L1),
        .customer = json.optionalString("customer"_L1),
        .received_on = json.optionalString("received_on"_L1),
        .status = json.optionalString("status"_L1),
    };
}

TarnBooksDocumentLine TarnBooksDocumentLine::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .document_kind = json.string("document_kind"_L1),
        .document_id = json.string("document_id"_L1),
        .position = json.integer("position"_L1),
        .description = json.string("description"_L1),
        .quantity = json.string("quantity"_L1),
        .unit_price_cents = json.integer("unit_price_cents"_L1),
        .amount_cents = json.integer("amount_cents"_L1),
        .account_id = json.string("account_id"_L1),
    };
}
