#include "money/NativeBooksView.h"

#include "money/NativeOutcome.h"
#include "money/TarnBooksCalls.h"
#include "money/TarnBooksPages.h"
#include "money/TarnLedgerDates.h"
#include "money/TarnMoneyInput.h"
#include "money/TarnPaymentsCalls.h"
#include "service/TarnAPI.h"

#include <QDate>
#include <QHash>
#include <QPointer>
#include <QVariantMap>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using AccountRow = NativeBooksView::AccountRow;
using SourceRow = NativeBooksView::SourceRow;
using DocumentRow = NativeBooksView::DocumentRow;

QList<NativeKeyedListModel<DocumentRow, &DocumentRow::key>::Role> documentRoles()
{
    return {
        { "kind", [](const DocumentRow &r) { return r.kind; } },
        { "recordId", [](const DocumentRow &r) { return r.id; } },
        { "section", [](const DocumentRow &r) { return r.section; } },
        { "title", [](const DocumentRow &r) { return r.title; } },
        { "date", [](const DocumentRow &r) { return r.date; } },
        { "amount", [](const DocumentRow &r) { return r.amount; } },
        { "status", [](const DocumentRow &r) { return r.status; } },
        { "voidable", [](const DocumentRow &r) { return r.voidable; } },
    };
}

// A payment or receipt says its status only when the service sends one; one
// without is taken to stand.
bool stands(const std::optional<QString> &status)
{
    return status.value_or(QString()) != "Voided"_L1;
}

QString titled(const QString &what, const std::optional<QString> &number, const QString &party)
{
    return (number && !number->isEmpty() ? what + u' ' + *number : what) + u" \u00B7 "_s + party;
}

// The positions of payments or receipts by the document they apply to, each
// list in the answer's order; one that names no document goes under "".
template <typename Settlement>
QHash<QString, QList<qsizetype>> byParent(
    const QList<Settlement> &settlements, std::optional<QString> Settlement::*parent)
{
    QHash<QString, QList<qsizetype>> positions;
    for (qsizetype at = 0; at < settlements.size(); ++at)
        positions[(settlements[at].*parent).value_or(QString())].append(at);
    return positions;
}

// One row per payment or receipt at `positions`, under `section`.
template <typename Settlement>
void appendSettlements(QList<DocumentRow> &rows, const QList<Settlement> &settlements,
    const QList<qsizetype> &positions, const QString &section, const QString &kind, const QString &title,
    std::optional<QString> Settlement::*date)
{
    for (const qsizetype at : positions) {
        const Settlement &settlement = settlements[at];
        rows.append({ kind + u'/' + settlement.id, kind, settlement.id, section, title,
            (settlement.*date).value_or(QString()), TarnMoneyInput::dollars(settlement.amount),
            settlement.status.value_or(QString()), stands(settlement.status) });
    }
}

// What no listed document took, in the answer's order.
QList<qsizetype> leftOver(const QHash<QString, QList<qsizetype>> &positions)
{
    QList<qsizetype> rest;
    for (const QList<qsizetype> &some : positions)
        rest.append(some);
    std::sort(rest.begin(), rest.end());
    return rest;
}

} // namespace

NativeBooksView::NativeBooksView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_accounts({
          { "accountId", [](const AccountRow &r) { return r.id; } },
          { "group", [](const AccountRow &r) { return r.group; } },
          { "code", [](const AccountRow &r) { return r.code; } },
          { "name", [](const AccountRow &r) { return r.name; } },
          { "balance", [](const AccountRow &r) { return r.balance; } },
      })
    , m_sources({
          { "kind", [](const SourceRow &r) { return r.kind; } },
          { "recordId", [](const SourceRow &r) { return r.id; } },
          { "title", [](const SourceRow &r) { return r.title; } },
          { "date", [](const SourceRow &r) { return r.date; } },
          { "amount", [](const SourceRow &r) { return r.amount; } },
      })
    , m_bills(documentRoles())
    , m_receipts(documentRoles())
    , m_dashboard(new NativeBooksDashboard(api, this))
    , m_transactions(new NativeBooksTransactions(this))
    , m_expenses(new NativeBooksExpenses(api, this))
    , m_report(new NativeBooksReport(api, this))
    , m_bankRows(new NativeBankRows(api, this))
    , m_import(new NativeBankImport(api, this))
    , m_reconciliation(new NativeReconciliation(api, this))
{
    connect(m_bankRows, &NativeBankRows::booksChanged, this, &NativeBooksView::reload);
    connect(m_bankRows, &NativeBankRows::done, this, &NativeBooksView::done);
    connect(m_import, &NativeBankImport::imported, this, &NativeBooksView::reload);
    connect(m_reconciliation, &NativeReconciliation::closed, this, &NativeBooksView::reload);
}

NativeBooksView::~NativeBooksView() = default;

QString NativeBooksView::sourceTitle() const
{
    if (!m_books.source_linked)
        return u"Tarn activity is not linked"_s;
    return m_sources.rowCount() == 0
        ? u"No Tarn records need posting"_s
        : u"Connected to this legal company. Review each eligible record before posting it."_s;
}

QString NativeBooksView::sourceDetail() const
{
    return m_books.source_linked
        ? QString()
        : u"Tarn invoices and payments are separate until you verify they belong to this legal company."_s;
}

QVariantList NativeBooksView::bankAccounts() const
{
    QVariantList banks;
    for (const TarnBooksAccount &account : m_books.accounts) {
        if (account.bank != 0)
            banks.append(QVariantMap { { u"id"_s, account.id }, { u"name"_s, account.name } });
    }
    return banks;
}

QVariantList NativeBooksView::choicesIn(const QString &group) const
{
    QVariantList choices;
    for (const AccountRow &account : m_accounts.rows()) {
        if (group.isEmpty() || account.group == group)
            choices.append(
                QVariantMap { { u"id"_s, account.id }, { u"name"_s, QString(account.code + u' ' + account.name) } });
    }
    return choices;
}

QVariantList NativeBooksView::accountChoices() const
{
    return choicesIn(QString());
}

QVariantList NativeBooksView::incomeChoices() const
{
    return QVariantList { QVariantMap { { u"id"_s, QString() }, { u"name"_s, u"Default income account"_s } } }
    + choicesIn(TarnBooksPages::accountGroupTitle(u"Income"_s));
}

QVariantList NativeBooksView::registerChoices() const
{
    return QVariantList { QVariantMap { { u"id"_s, QString() }, { u"name"_s, u"All accounts"_s } } } + accountChoices();
}

QString NativeBooksView::periodStart()
{
    return QDate(QDate::currentDate().year(), 1, 1).toString(Qt::ISODate);
}

QString NativeBooksView::periodEnd()
{
    return QDate::currentDate().toString(Qt::ISODate);
}

void NativeBooksView::reload()
{
    load(++m_generation);
}

void NativeBooksView::clear()
{
    ++m_generation;
    m_books = {};
    apply({});
    m_loading = false;
    m_busy = false;
    m_error.clear();
    m_formError.clear();
    Q_EMIT stateChanged();
}

QCoro::Task<> NativeBooksView::load(int generation)
{
    const QPointer<NativeBooksView> self(this);
    m_loading = true;
    Q_EMIT stateChanged();
    auto call = [&] { return TarnBooksCalls::books(m_api); };
    NativeOutcome<TarnBooks> outcome = co_await nativeOutcome(std::move(call));
    if (!self || generation != m_generation)
        co_return;
    // The terminal's payments fill in where the books are silent; a person
    // without the terminal sees the books alone.
    TarnPaymentsTerminal terminal;
    if (outcome.value) {
        try {
            terminal = co_await TarnPaymentsCalls::payments(m_api);
        } catch (const TarnAPIError &) {
            terminal = {};
        }
        if (!self || generation != m_generation)
            co_return;
        m_books = std::move(*outcome.value);
        apply(terminal);
    }
    m_loading = false;
    m_error = outcome.error;
    Q_EMIT stateChanged();
}

void NativeBooksView::apply(const TarnPaymentsTerminal &terminal)
{
    QList<AccountRow> accounts;
    for (const TarnBooksPages::AccountGroup &group : TarnBooksPages::chartOfAccounts(m_books.accounts)) {
        for (const TarnBooksAccount &account : group.accounts) {
            accounts.append({ account.id, group.title, account.code, account.name,
                TarnMoneyInput::dollars(TarnBooksPages::naturalBalance(account)) });
        }
    }
    m_accounts.setRows(accounts);
    QList<SourceRow> sources;
    if (m_books.source_linked && m_books.source_review) {
        const auto add = [&sources](const QString &kind, const QList<TarnBooksSourceRecord> &records) {
            for (const TarnBooksSourceRecord &record : records) {
                sources.append({ kind + u'/' + record.id, kind, record.id, record.title.value_or(record.id),
                    record.date.value_or(QString()), TarnMoneyInput::dollars(record.amount) });
            }
        };
        add(u"invoice"_s, m_books.source_review->invoices);
        add(u"payment"_s, m_books.source_review->payments);
    }
    m_sources.setRows(sources);
    applyDocuments();
    m_dashboard->show(m_books, terminal.payments, QDate::currentDate());
    m_transactions->show(m_books, terminal.payments, terminal.open_invoices);
    m_bankRows->setBooks(m_books);
}

void NativeBooksView::applyDocuments()
{
    const QList<TarnBooksBillPayment> payments = m_books.bill_payments.value_or(QList<TarnBooksBillPayment>());
    QHash<QString, QList<qsizetype>> paidOn = byParent(payments, &TarnBooksBillPayment::bill_id);
    QList<DocumentRow> bills;
    // A bill is voided only once nothing stands paid on it (the service
    // refuses it before its payments are voided), so it is offered only then.
    for (const TarnBooksBill &bill : m_books.bills) {
        const QString section = titled(u"Bill"_s, bill.bill_number, bill.vendor);
        const bool owed = bill.status != "Voided"_L1 && bill.remaining > 0;
        bills.append({ u"bill/"_s + bill.id, u"bill"_s, bill.id, section, u"Bill"_s, u"Due "_s + bill.due_date,
            TarnMoneyInput::dollars(bill.amount),
            owed ? TarnMoneyInput::dollars(bill.remaining) + u" remaining"_s : bill.status,
            owed && bill.remaining == bill.amount });
        appendSettlements(bills, payments, paidOn.take(bill.id), section, u"bill_payment"_s, u"Payment"_s,
            &TarnBooksBillPayment::paid_on);
    }
    appendSettlements(bills, payments, leftOver(paidOn), u"Payments without a bill"_s, u"bill_payment"_s, u"Payment"_s,
        &TarnBooksBillPayment::paid_on);
    m_bills.setRows(bills);

    const QList<TarnBooksCustomerReceipt> receipts
        = m_books.customer_receipts.value_or(QList<TarnBooksCustomerReceipt>());
    QHash<QString, QList<qsizetype>> settling = byParent(receipts, &TarnBooksCustomerReceipt::invoice_id);
    QList<DocumentRow> received;
    for (const TarnBooksCustomerInvoice &invoice : m_books.customer_invoices)
        appendSettlements(received, receipts, settling.take(invoice.id),
            titled(u"Invoice"_s, invoice.invoice_number, invoice.customer), u"receipt"_s, u"Receipt"_s,
            &TarnBooksCustomerReceipt::received_on);
    appendSettlements(received, receipts, leftOver(settling), u"Receipts without an invoice"_s, u"receipt"_s,
        u"Receipt"_s, &TarnBooksCustomerReceipt::received_on);
    m_receipts.setRows(received);
}

void NativeBooksView::setForm(bool busy, const QString &error)
{
    m_busy = busy;
    m_formError = error;
    Q_EMIT formChanged();
}

template <typename Call> QCoro::Task<> NativeBooksView::change(Call call, QString message)
{
    const QPointer<NativeBooksView> self(this);
    setForm(true, {});
    const auto outcome = co_await nativeOutcome(std::move(call));
    if (!self)
        co_return;
    setForm(false, outcome.error);
    if (outcome.error.isEmpty()) {
        m_report->refresh();
        Q_EMIT done(message);
    }
    reload();
}

void NativeBooksView::setCompany(const QString &name)
{
    change([this, name] { return TarnBooksCalls::setBooksCompany(m_api, name); }, u"Company name saved"_s);
}

void NativeBooksView::setSourceLinked(bool linked)
{
    change([this, linked] { return TarnBooksCalls::setBooksSourceLinked(m_api, linked); },
        linked ? u"Tarn activity linked"_s : u"Tarn activity unlinked"_s);
}

void NativeBooksView::postSource(const QString &kind, const QString &id, const QString &incomeAccountID)
{
    const std::optional<QString> income
        = incomeAccountID.isEmpty() ? std::nullopt : std::optional<QString>(incomeAccountID);
    change([this, kind, id, income] { return TarnBooksCalls::postBooksSource(m_api, kind, id, income); },
        u"Posted to the books"_s);
}

bool NativeBooksView::reverseEntry(const QString &entryID, const QString &date)
{
    if (!TarnLedgerDates::isDay(date)) {
        setForm(false, u"Give the day as YYYY-MM-DD."_s);
        return false;
    }
    change(
        [this, entryID, date] { return TarnBooksCalls::reverseBooksEntry(m_api, entryID, date); }, u"Entry reversed"_s);
    return true;
}

bool NativeBooksView::voidRecord(const QString &kind, const QString &id, const QString &date)
{
    using Void = QCoro::Task<TarnBooksEntryID> (*)(TarnAPI &, const QString &, const QString &);
    const Void call = kind == "bill"_L1 ? &TarnBooksCalls::voidBooksBill
        : kind == "invoice"_L1          ? &TarnBooksCalls::voidBooksInvoice
        : kind == "bill_payment"_L1     ? &TarnBooksCalls::voidBooksBillPayment
        : kind == "receipt"_L1          ? &TarnBooksCalls::voidBooksCustomerReceipt
                                        : nullptr;
    if (!call || !TarnLedgerDates::isDay(date)) {
        setForm(false, u"Give the day as YYYY-MM-DD."_s);
        return false;
    }
    change([this, call, id, date] { return call(m_api, id, date); }, u"Voided"_s);
    return true;
}
