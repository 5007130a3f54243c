#include "money/NativeReconciliation.h"

#include "money/NativeOutcome.h"
#include "money/TarnBooksCalls.h"
#include "money/TarnLedgerDates.h"
#include "money/TarnMoneyInput.h"
#include "service/TarnAPI.h"

#include <QPointer>

using namespace Qt::StringLiterals;

NativeReconciliation::NativeReconciliation(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
{
}

qint64 NativeReconciliation::figure(qint64 TarnBooksReconciliation::*field) const
{
    return m_preview ? (*m_preview).*field : 0;
}

QString NativeReconciliation::ledgerBalance() const
{
    return TarnMoneyInput::dollars(figure(&TarnBooksReconciliation::ledger_balance));
}

QString NativeReconciliation::outstandingTotal() const
{
    return TarnMoneyInput::dollars(figure(&TarnBooksReconciliation::outstanding_total));
}

QString NativeReconciliation::adjustedBalance() const
{
    return TarnMoneyInput::dollars(figure(&TarnBooksReconciliation::adjusted_balance));
}

int NativeReconciliation::importedCount() const
{
    return static_cast<int>(figure(&TarnBooksReconciliation::imported_count));
}

int NativeReconciliation::unmatchedCount() const
{
    return static_cast<int>(figure(&TarnBooksReconciliation::unmatched_count));
}

int NativeReconciliation::futureMatchCount() const
{
    return static_cast<int>(figure(&TarnBooksReconciliation::future_match_count));
}

QString NativeReconciliation::lastClosedDate() const
{
    return m_preview ? m_preview->last_closed_date.value_or(QString()) : QString();
}

std::optional<qint64> NativeReconciliation::balanceCents(const QString &typed)
{
    const QString trimmed = typed.trimmed();
    const bool negative = trimmed.startsWith(u'-');
    const std::optional<qint64> cents = TarnMoneyInput::cents(negative ? trimmed.mid(1) : trimmed, true);
    if (!cents)
        return std::nullopt;
    return negative ? -*cents : *cents;
}

void NativeReconciliation::preview(const QString &bankAccountID, const QString &statementDate)
{
    const int generation = ++m_generation;
    m_preview.reset();
    m_closedID.clear();
    if (!TarnLedgerDates::isDay(statementDate)) {
        m_error = u"Give the statement date as YYYY-MM-DD."_s;
        Q_EMIT changed();
        return;
    }
    m_error.clear();
    m_loading = true;
    Q_EMIT changed();
    loadPreview(bankAccountID, statementDate, generation);
}

QCoro::Task<> NativeReconciliation::loadPreview(QString bankID, QString date, int generation)
{
    const QPointer<NativeReconciliation> self(this);
    auto call = [&] { return TarnBooksCalls::booksReconciliation(m_api, bankID, date); };
    NativeOutcome<TarnBooksReconciliation> outcome = co_await nativeOutcome(std::move(call));
    if (!self || generation != m_generation)
        co_return;
    m_loading = false;
    m_preview = outcome.value;
    m_error = outcome.error;
    Q_EMIT changed();
}

bool NativeReconciliation::close(const QString &statementBalance)
{
    const std::optional<qint64> balance = balanceCents(statementBalance);
    if (!m_preview || m_loading)
        m_error = u"Preview the reconciliation first."_s;
    else if (!balance)
        m_error = u"Type the statement ending balance in USD, such as 1250.00."_s;
    else if (m_preview->unmatched_count > 0)
        m_error = u"Match or categorize every bank row through this date first."_s;
    else if (*balance != m_preview->adjusted_balance)
        m_error = u"The statement ending balance differs from the adjusted balance by %1."_s.arg(
            TarnMoneyInput::dollars(*balance - m_preview->adjusted_balance));
    else {
        m_error.clear();
        m_loading = true;
        Q_EMIT changed();
        closeStatement(*balance, m_generation);
        return true;
    }
    Q_EMIT changed();
    return false;
}

QCoro::Task<> NativeReconciliation::closeStatement(qint64 balance, int generation)
{
    const QPointer<NativeReconciliation> self(this);
    const QString bankID = m_preview->bank_account_id;
    const QString date = m_preview->statement_date;
    auto call = [&] { return TarnBooksCalls::closeBooksReconciliation(m_api, bankID, date, balance); };
    NativeOutcome<TarnBooksReconciliationClosed> outcome = co_await nativeOutcome(std::move(call));
    if (!self || generation != m_generation)
        co_return;
    m_loading = false;
    m_error = outcome.error;
    if (outcome.value) {
        m_closedID = outcome.value->id;
        m_preview = outcome.value->preview;
        m_preview->last_closed_date = date;
    }
    Q_EMIT changed();
    if (outcome.value)
        Q_EMIT closed();
}
