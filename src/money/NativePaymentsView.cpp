#include "money/NativePaymentsView.h"

#include "money/NativeOutcome.h"
#include "money/TarnLedgerDates.h"
#include "money/TarnMoneyInput.h"
#include "money/TarnPaymentRefundState.h"
#include "money/TarnPaymentTotals.h"
#include "money/TarnPaymentsCalls.h"
#include "service/TarnAPI.h"

#include <QDate>
#include <QPointer>
#include <QUuid>

#include <algorithm>

#include <array>

using namespace Qt::StringLiterals;

namespace {

using PaymentRow = NativePaymentsView::PaymentRow;
using InvoiceRow = NativePaymentsView::InvoiceRow;
using CardRow = NativePaymentsView::CardRow;
using ClientRow = NativePaymentsView::ClientRow;

QString detailOf(const TarnPayment &payment)
{
    const QString method = payment.method.value_or(QString());
    const QString reference = payment.reference.value_or(QString());
    if (method == "refund"_L1)
        return u"Refund of %1"_s.arg(reference);
    const QString how = method == "offline"_L1 ? u"Offline"_s : method == "card"_L1 ? u"Card"_s : method;
    return reference.isEmpty() ? how : QString(how + u" · "_s + reference);
}

struct FilterName {
    TarnPaymentFilter filter;
    QLatin1StringView name;
};
constexpr std::array filterNames { FilterName { TarnPaymentFilter::all, "all"_L1 },
    FilterName { TarnPaymentFilter::paid, "paid"_L1 }, FilterName { TarnPaymentFilter::pending, "pending"_L1 },
    FilterName { TarnPaymentFilter::refunded, "refunded"_L1 } };

} // namespace

NativePaymentsView::NativePaymentsView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_payments({
          { "paymentId", [](const PaymentRow &r) { return r.id; } },
          { "client", [](const PaymentRow &r) { return r.client; } },
          { "amount", [](const PaymentRow &r) { return r.amount; } },
          { "date", [](const PaymentRow &r) { return r.date; } },
          { "tone", [](const PaymentRow &r) { return r.tone; } },
          { "pill", [](const PaymentRow &r) { return r.pill; } },
          { "refundable", [](const PaymentRow &r) { return r.refundable; } },
          { "leftToRefund", [](const PaymentRow &r) { return r.leftToRefund; } },
          { "requestId", [](const PaymentRow &r) { return r.requestID; } },
          { "detail", [](const PaymentRow &r) { return r.detail; } },
          { "markable", [](const PaymentRow &r) { return r.markable; } },
      })
    , m_invoices({
          { "invoiceId", [](const InvoiceRow &r) { return r.id; } },
          { "client", [](const InvoiceRow &r) { return r.client; } },
          { "number", [](const InvoiceRow &r) { return r.number; } },
          { "dueOn", [](const InvoiceRow &r) { return r.dueOn; } },
          { "remaining", [](const InvoiceRow &r) { return r.remaining; } },
      })
    , m_cards({
          { "profileId", [](const CardRow &r) { return r.id; } },
          { "label", [](const CardRow &r) { return r.label; } },
      })
    , m_clients({
          { "clientId", [](const ClientRow &r) { return r.id; } },
          { "name", [](const ClientRow &r) { return r.name; } },
      })
    , m_client(api)
{
    connect(&m_client, &NativePaymentClientPanel::changed, this, &NativePaymentsView::reload);
    connect(&m_client, &NativePaymentClientPanel::stateChanged, this, &NativePaymentsView::stateChanged);
}

NativePaymentsView::~NativePaymentsView() = default;

QString NativePaymentsView::filter() const
{
    for (const FilterName &named : filterNames) {
        if (named.filter == m_filter)
            return named.name;
    }
    return {};
}

void NativePaymentsView::setFilter(const QString &filter)
{
    for (const FilterName &named : filterNames) {
        if (named.name == filter && named.filter != m_filter) {
            m_filter = named.filter;
            apply();
            Q_EMIT stateChanged();
        }
    }
}

QString NativePaymentsView::receivedTotal() const
{
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    return TarnMoneyInput::dollars(TarnPaymentTotals::receivedInMonth(m_terminal.payments, today).total);
}

int NativePaymentsView::receivedCount() const
{
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    return static_cast<int>(TarnPaymentTotals::receivedInMonth(m_terminal.payments, today).count);
}

void NativePaymentsView::reload()
{
    load(++m_generation);
}

void NativePaymentsView::clear()
{
    ++m_generation;
    m_terminal = {};
    m_chargeKeys.clear();
    m_cards.setRows({});
    m_client.clear();
    m_loading = false;
    m_busy = false;
    m_error.clear();
    m_formError.clear();
    apply();
    Q_EMIT stateChanged();
}

QCoro::Task<> NativePaymentsView::load(int generation)
{
    const QPointer<NativePaymentsView> self(this);
    m_loading = true;
    Q_EMIT stateChanged();
    auto call = [&] { return TarnPaymentsCalls::payments(m_api); };
    NativeOutcome<TarnPaymentsTerminal> outcome = co_await nativeOutcome(std::move(call));
    if (!self || generation != m_generation)
        co_return;
    m_loading = false;
    m_error = outcome.error;
    if (outcome.value) {
        m_terminal = std::move(*outcome.value);
        apply();
        // Who paid last is the likeliest to be asked about.
        if (m_client.clientId().isEmpty() && !m_terminal.payments.isEmpty())
            m_client.setClientId(m_terminal.payments.first().client_id.value_or(QString()));
    }
    Q_EMIT stateChanged();
}

void NativePaymentsView::apply()
{
    QList<TarnPaymentRefundState::Request> requests;
    QHash<QString, QString> waiting;
    for (const TarnPaymentRefundRequest &request : m_terminal.refund_requests) {
        requests.append(TarnPaymentRefundState::Request::from(request));
        if (request.status == "Requested"_L1)
            waiting.insert(request.payment_id, request.id);
    }
    const TarnPaymentRefundState refunds(requests);
    QList<PaymentRow> rows;
    for (const TarnPayment &payment : m_terminal.payments) {
        if (!matches(m_filter, payment, refunds))
            continue;
        const TarnPaymentPill pill = refunds.pill(payment.id, payment.status, payment.amount);
        rows.append({ payment.id, payment.client, TarnMoneyInput::dollars(payment.amount), payment.date, pill.tone,
            pill.text, refunds.canRefund(payment.id, payment.status, payment.amount),
            TarnMoneyInput::text(refunds.leftToRefund(payment.id, payment.amount)), waiting.value(payment.id),
            detailOf(payment), payment.status == "Pending"_L1 && payment.method == u"offline"_s });
    }
    m_payments.setRows(rows);
    QList<ClientRow> clients;
    for (const TarnPaymentClient &client : m_terminal.clients)
        clients.append({ client.id, client.name });
    m_clients.setRows(clients);
    QList<InvoiceRow> invoices;
    for (const TarnOpenInvoice &open : m_terminal.open_invoices) {
        invoices.append({ open.id, open.client, open.invoice_number.value_or(open.id), open.due_on,
            TarnMoneyInput::dollars(open.remaining) });
    }
    m_invoices.setRows(invoices);
}

const TarnOpenInvoice *NativePaymentsView::invoice(const QString &id) const
{
    for (const TarnOpenInvoice &open : m_terminal.open_invoices) {
        if (open.id == id)
            return &open;
    }
    return nullptr;
}

void NativePaymentsView::setForm(bool busy, const QString &error)
{
    m_busy = busy;
    m_formError = error;
    Q_EMIT formChanged();
}

template <typename Call>
QCoro::Task<> NativePaymentsView::change(Call call, QString message, std::function<void()> succeeded)
{
    const QPointer<NativePaymentsView> self(this);
    setForm(true, {});
    const auto outcome = co_await nativeOutcome(std::move(call));
    if (!self)
        co_return;
    setForm(false, outcome.error);
    if (outcome.error.isEmpty()) {
        if (succeeded)
            succeeded();
        Q_EMIT done(message);
    }
    reload();
}

bool NativePaymentsView::requestRefund(const QString &paymentID, const QString &amount, const QString &reason)
{
    const std::optional<qint64> cents = TarnMoneyInput::cents(amount, false);
    qint64 left = 0;
    for (const TarnPayment &payment : m_terminal.payments) {
        if (payment.id == paymentID)
            left = payment.amount;
    }
    for (const TarnPaymentRefundRequest &request : m_terminal.refund_requests) {
        if (request.payment_id == paymentID && (request.status == "Requested"_L1 || request.status == "Refunded"_L1))
            left -= request.amount;
    }
    if (!cents || *cents > left) {
        setForm(false, u"Type an amount from 0.01 to %1."_s.arg(TarnMoneyInput::text(left)));
        return false;
    }
    const qint64 value = *cents;
    change([this, paymentID, value,
               reason] { return TarnPaymentsCalls::requestPaymentRefund(m_api, paymentID, value, reason); },
        u"Refund requested"_s);
    return true;
}

void NativePaymentsView::decideRefund(const QString &requestID, bool approve, const QString &note)
{
    const auto decision
        = approve ? TarnPaymentsCalls::RefundDecision::Approve : TarnPaymentsCalls::RefundDecision::Deny;
    change([this, requestID, decision,
               note] { return TarnPaymentsCalls::decidePaymentRefund(m_api, requestID, decision, note); },
        approve ? u"Refund approved"_s : u"Refund denied"_s);
}

void NativePaymentsView::chooseInvoice(const QString &invoiceID)
{
    const TarnOpenInvoice *open = invoice(invoiceID);
    m_cards.setRows({});
    if (open)
        loadCards(open->client_id, ++m_cardsGeneration);
}

QCoro::Task<> NativePaymentsView::loadCards(QString clientID, int generation)
{
    const QPointer<NativePaymentsView> self(this);
    auto call = [&] { return TarnPaymentsCalls::paymentCards(m_api, clientID); };
    NativeOutcome<TarnPaymentCards> outcome = co_await nativeOutcome(std::move(call));
    if (!self || generation != m_cardsGeneration)
        co_return;
    if (!outcome.value) {
        setForm(false, outcome.error);
        co_return;
    }
    QList<CardRow> rows;
    for (const TarnPaymentCard &card : outcome.value->cards)
        rows.append({ card.payment_profile_id,
            u"%1 ending %2, expires %3"_s.arg(card.card_type, card.last4, card.expiration) });
    m_cards.setRows(rows);
}

void NativePaymentsView::charge(const QString &invoiceID, const QString &profileID)
{
    const TarnOpenInvoice *open = invoice(invoiceID);
    if (!open || profileID.isEmpty()) {
        setForm(false, u"Choose an open invoice and a saved card."_s);
        return;
    }
    // One key per invoice until a charge of it succeeds.
    QString &key = m_chargeKeys[invoiceID];
    if (key.isEmpty())
        key = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const TarnOpenInvoice owed = *open;
    const TarnPaymentCard card { profileID, {}, {}, {}, std::nullopt };
    const QString requestKey = key;
    change([this, owed, card, requestKey] { return TarnPaymentsCalls::chargeInvoice(m_api, owed, card, requestKey); },
        u"Charged %1"_s.arg(TarnMoneyInput::dollars(owed.remaining)),
        [this, invoiceID] { m_chargeKeys.remove(invoiceID); });
}

bool NativePaymentsView::recordOffline(const QString &invoiceID, const QString &reference, const QString &paidOn)
{
    if (!invoice(invoiceID) || reference.trimmed().isEmpty()) {
        setForm(false, u"Give the payment a reference."_s);
        return false;
    }
    if (!TarnLedgerDates::isDay(paidOn)) {
        setForm(false, u"Give the day it was paid as YYYY-MM-DD."_s);
        return false;
    }
    const QString trimmed = reference.trimmed();
    change([this, invoiceID, trimmed,
               paidOn] { return TarnPaymentsCalls::recordOfflineInvoicePayment(m_api, invoiceID, trimmed, paidOn); },
        u"Payment recorded"_s);
    return true;
}

bool NativePaymentsView::recordPayment(
    const QString &clientID, const QString &amount, bool paid, const QString &reference, const QString &paidOn)
{
    const std::optional<qint64> cents = TarnMoneyInput::cents(amount, false);
    const QString trimmed = reference.trimmed();
    QString refusal;
    if (clientID.isEmpty())
        refusal = u"Choose who paid."_s;
    else if (!cents)
        refusal = u"Type an amount of at least 0.01, with up to two decimals."_s;
    else if (trimmed.isEmpty() || trimmed.size() > 120)
        refusal = u"Give the payment a reference of up to 120 characters."_s;
    else if (!TarnLedgerDates::isDay(paidOn))
        refusal = u"Give the day it was paid as YYYY-MM-DD."_s;
    if (!refusal.isEmpty()) {
        setForm(false, refusal);
        return false;
    }
    const TarnPaymentRecordDraft draft { clientID, *cents, paid ? u"Paid"_s : u"Pending"_s, trimmed, paidOn };
    change([this, draft] { return TarnPaymentsCalls::recordPayment(m_api, draft); }, u"Payment recorded"_s);
    return true;
}

void NativePaymentsView::markPaid(const QString &paymentID)
{
    const auto shown = std::find_if(m_terminal.payments.cbegin(), m_terminal.payments.cend(),
        [&paymentID](const TarnPayment &payment) { return payment.id == paymentID; });
    if (shown == m_terminal.payments.cend())
        return;
    const TarnPaymentChange paidNow { shown->version.value_or(0), u"Paid"_s, std::nullopt, std::nullopt };
    change([this, paymentID, paidNow] { return TarnPaymentsCalls::updatePayment(m_api, paymentID, paidNow); },
        u"Marked paid"_s);
}
