#include "screens/company/NativeConnectionsView.h"

#include "mail/TarnMailCalls.h"
#include "money/TarnBankFeedCalls.h"
#include "money/TarnLedgerDates.h"
#include "money/TarnMoneyInput.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "service/TarnRefreshLoop.h"
#include "shell/TarnAccess.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

// The feed brings a row in every few hours: a minute keeps it current
// without asking the service for nothing.
constexpr int refreshMs = 60'000;

} // namespace

NativeConnectionsView::NativeConnectionsView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_accounts(new NativeFeedAccountModel(this))
    , m_rows(new NativeFeedRowModel(this))
{
}

QString NativeConnectionsView::today()
{
    return QDate::currentDate().toString(Qt::ISODate);
}

QString NativeConnectionsView::describe(const TarnExternalReconciliation &result)
{
    const QString bank = TarnMoneyInput::dollars(result.external_balance);
    if (result.balanced)
        return u"Balanced on %1: the bank and the books both show %2."_s.arg(result.date, bank);
    QString text = u"On %1 the bank shows %2 and the books %3, %4 apart"_s.arg(result.date, bank,
        TarnMoneyInput::dollars(result.books_balance), TarnMoneyInput::dollars(std::abs(result.difference)));
    if (result.uncategorized < 1)
        return text + u"."_s;
    return text
        + u": %1 %2 to categorize in the books."_s.arg(result.uncategorized)
              .arg(result.uncategorized == 1 ? u"row"_s : u"rows"_s);
}

std::optional<TarnExternalBaseline> NativeConnectionsView::baseline(
    const QString &date, const QString &balance, const QDate &today, QString *refusal)
{
    const std::optional<QString> day = bankDay(date, today, refusal);
    if (!day)
        return std::nullopt;
    const QString typed = balance.trimmed();
    const bool overdrawn = typed.startsWith(u'-');
    const std::optional<qint64> cents = TarnMoneyInput::cents(overdrawn ? typed.mid(1) : typed, true);
    if (!cents) {
        *refusal = u"Type the balance in dollars, such as 12,500.00."_s;
        return std::nullopt;
    }
    return TarnExternalBaseline { *day, overdrawn ? -*cents : *cents };
}

std::optional<QString> NativeConnectionsView::bankDay(const QString &date, const QDate &today, QString *refusal)
{
    const QString day = date.trimmed();
    if (!TarnLedgerDates::isDay(day)) {
        *refusal = u"Give the day as YYYY-MM-DD."_s;
        return std::nullopt;
    }
    if (QDate::fromString(day, Qt::ISODate) > today) {
        *refusal = u"The bank's balance is for today or an earlier day."_s;
        return std::nullopt;
    }
    return day;
}

bool NativeConnectionsView::mayRead() const
{
    return m_api.session() && TarnAccess::fromSession(*m_api.session()).owner;
}

void NativeConnectionsView::appear()
{
    TarnRefreshLoop::run(
        this, &NativeConnectionsView::m_generation, ++m_generation, refreshMs, &NativeConnectionsView::load);
}

void NativeConnectionsView::disappear()
{
    ++m_generation;
}

void NativeConnectionsView::clear()
{
    disappear();
    m_accounts->setRows({});
    m_rows->setRows({});
    m_summary = {};
    m_googleConnected = false;
    m_googleEmail.clear();
    m_reconciliation.clear();
    m_reconciledAccount.clear();
    m_loading = m_loaded = m_busy = false;
    m_error.clear();
    Q_EMIT changed();
    Q_EMIT busyChanged();
    Q_EMIT errorTextChanged();
}

QCoro::Task<> NativeConnectionsView::load()
{
    const QPointer<NativeConnectionsView> self(this);
    // A later reading (after a change, or the screen shown again) makes this one's answer stale.
    const int generation = m_generation;
    const int reading = ++m_reading;
    const auto stale = [&] { return !self || generation != m_generation || reading != m_reading; };
    if (!m_loaded) {
        m_loading = true;
        Q_EMIT busyChanged();
    }
    // Only owners see the section; anyone else has nothing to read.
    try {
        if (mayRead()) {
            const TarnMailStatus google = co_await TarnMailCalls::status(m_api);
            if (stale())
                co_return;
            m_googleConnected = google.configured;
            m_googleEmail = google.email;
            const TarnMercurySummary summary = co_await TarnBankFeedCalls::mercurySummary(m_api);
            if (stale())
                co_return;
            show(summary);
        }
    } catch (const TarnAPIError &error) {
        if (stale())
            co_return;
        setError(refusalOf(error));
    }
    m_loading = false;
    m_loaded = true;
    Q_EMIT busyChanged();
    Q_EMIT refreshed();
}

void NativeConnectionsView::show(const TarnMercurySummary &summary)
{
    m_summary = summary;
    m_accounts->setRows(summary.accounts);
    m_rows->setRows(summary.rows);
    Q_EMIT changed();
}

void NativeConnectionsView::connectGoogle()
{
    if (!m_busy && !m_googleConnected)
        googleTask();
}

QCoro::Task<> NativeConnectionsView::googleTask()
{
    const QPointer<NativeConnectionsView> self(this);
    try {
        const TarnMailConnectStart start = co_await TarnMailCalls::connectStart(m_api);
        if (self)
            Q_EMIT googleConnectStarted(QUrl(start.url));
    } catch (const TarnAPIError &error) {
        if (self)
            setError(refusalOf(error));
    }
}

void NativeConnectionsView::finishGoogle(const QString &error)
{
    setError(error);
    if (error.isEmpty())
        load();
}

void NativeConnectionsView::connectBank()
{
    if (!m_busy && m_summary.available > 0)
        summaryAction(TarnBankFeedCalls::connectMercury(m_api));
}

QCoro::Task<> NativeConnectionsView::summaryAction(QCoro::Task<TarnMercurySummary> call)
{
    const QPointer<NativeConnectionsView> self(this);
    setBusy(true);
    QString refusal;
    try {
        const TarnMercurySummary summary = co_await std::move(call);
        if (!self)
            co_return;
        show(summary);
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        refusal = refusalOf(error);
    }
    finish(refusal);
}

void NativeConnectionsView::setBaseline(const QString &accountId, const QString &date, const QString &balance)
{
    if (m_busy)
        return;
    QString refusal;
    const std::optional<TarnExternalBaseline> typed = baseline(date, balance, QDate::currentDate(), &refusal);
    if (!typed) {
        setError(refusal);
        return;
    }
    summaryAction(TarnBankFeedCalls::setExternalBaseline(m_api, accountId, *typed));
}

void NativeConnectionsView::reconcile(const QString &accountId, const QString &date)
{
    if (m_busy)
        return;
    QString refusal;
    const std::optional<QString> day = bankDay(date, QDate::currentDate(), &refusal);
    if (!day) {
        setError(refusal);
        return;
    }
    summaryAction(reconciled(accountId, TarnExternalReconcile { *day }));
}

QCoro::Task<TarnMercurySummary> NativeConnectionsView::reconciled(QString accountId, TarnExternalReconcile day)
{
    const QPointer<NativeConnectionsView> self(this);
    const TarnExternalReconciliation result
        = co_await TarnBankFeedCalls::reconcileExternalBalance(m_api, accountId, day);
    if (!self)
        co_return TarnMercurySummary();
    m_reconciliation = describe(result);
    m_reconciledAccount = accountId;
    Q_EMIT changed();
    // The account shows its last reconciliation.
    const TarnMercurySummary summary = co_await TarnBankFeedCalls::mercurySummary(m_api);
    co_return TarnMercurySummary(summary);
}

void NativeConnectionsView::finish(const QString &refusal)
{
    setError(refusal);
    setBusy(false);
    Q_EMIT actionFinished();
}

QString NativeConnectionsView::refusalOf(const TarnAPIError &error)
{
    if (error.kind() == TarnAPIError::Kind::signedOut)
        Q_EMIT signedOut();
    return error.text();
}

void NativeConnectionsView::setError(const QString &text)
{
    if (m_error == text)
        return;
    m_error = text;
    Q_EMIT errorTextChanged();
}

void NativeConnectionsView::setBusy(bool busy)
{
    if (m_busy == busy)
        return;
    m_busy = busy;
    Q_EMIT busyChanged();
}
