#pragma once

#include "money/TarnBankFeed.h"
#include "money/TarnBankFeedRequests.h"
#include "screens/company/NativeFeedAccountModel.h"
#include "screens/company/NativeFeedRowModel.h"

#include <QCoroTask>
#include <QDate>
#include <QObject>
#include <QString>
#include <QUrl>

#include <optional>

class TarnAPI;
class TarnAPIError;

// The company's connections, for owners: the Google account behind mail and
// the calendar, and the books' bank feed (its connected accounts, their
// balances at the bank and in the books, the newest rows, a baseline and the
// reconciliation of the bank's balance against the books).
//
// Read when shown and every minute while shown, since the feed brings rows
// in over time. Changes are sent one at a time; typed baselines are checked
// here before anything is sent. A refusal is kept in `errorText`; a
// signed-out answer emits `signedOut`. Connecting Google goes through the
// browser: `googleConnectStarted` hands its address to whoever signs in, who
// calls finishGoogle() with the outcome.
class NativeConnectionsView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeFeedAccountModel *accounts READ accounts CONSTANT)
    Q_PROPERTY(NativeFeedRowModel *rows READ rows CONSTANT)
    Q_PROPERTY(bool googleConnected READ googleConnected NOTIFY changed)
    Q_PROPERTY(QString googleEmail READ googleEmail NOTIFY changed)
    Q_PROPERTY(int accountCount READ accountCount NOTIFY changed)
    Q_PROPERTY(int feedRowCount READ feedRowCount NOTIFY changed)
    Q_PROPERTY(int uncategorized READ uncategorized NOTIFY changed)
    Q_PROPERTY(int available READ available NOTIFY changed)
    Q_PROPERTY(QString reconciliation READ reconciliation NOTIFY changed)
    Q_PROPERTY(QString reconciledAccount READ reconciledAccount NOTIFY changed)
    Q_PROPERTY(QString today READ today CONSTANT)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    explicit NativeConnectionsView(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] NativeFeedAccountModel *accounts() const { return m_accounts; }
    [[nodiscard]] NativeFeedRowModel *rows() const { return m_rows; }
    [[nodiscard]] bool googleConnected() const { return m_googleConnected; }
    [[nodiscard]] QString googleEmail() const { return m_googleEmail; }
    [[nodiscard]] int accountCount() const { return int(m_summary.accounts.size()); }
    [[nodiscard]] int feedRowCount() const { return int(m_summary.rows.size()); }
    [[nodiscard]] int uncategorized() const { return int(m_summary.uncategorized); }
    [[nodiscard]] int available() const { return int(m_summary.available); }
    [[nodiscard]] QString reconciliation() const { return m_reconciliation; }
    [[nodiscard]] QString reconciledAccount() const { return m_reconciledAccount; }
    [[nodiscard]] static QString today();
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }

    // The sentence a reconciliation is shown as.
    [[nodiscard]] static QString describe(const TarnExternalReconciliation &result);
    // A typed baseline as it is sent, or why it is refused.
    [[nodiscard]] static std::optional<TarnExternalBaseline> baseline(
        const QString &date, const QString &balance, const QDate &today, QString *refusal);
    // A bank's day as typed: a real day, and no later than today.
    [[nodiscard]] static std::optional<QString> bankDay(const QString &date, const QDate &today, QString *refusal);

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    // Forgets everything shown: the session ended.
    void clear();

    Q_INVOKABLE void connectGoogle();
    void finishGoogle(const QString &error);
    Q_INVOKABLE void connectBank();
    // `balance` in dollars as typed, a leading "-" for an overdrawn account.
    Q_INVOKABLE void setBaseline(const QString &accountId, const QString &date, const QString &balance);
    Q_INVOKABLE void reconcile(const QString &accountId, const QString &date);

Q_SIGNALS:
    void changed();
    void busyChanged();
    void errorTextChanged();
    // A load or an action has finished (for tests and the screenshot).
    void refreshed();
    void actionFinished();
    void signedOut();
    // The browser is to open this to connect Google.
    void googleConnectStarted(const QUrl &start);

private:
    [[nodiscard]] bool mayRead() const;
    QCoro::Task<> load();
    void show(const TarnMercurySummary &summary);
    QCoro::Task<> googleTask();
    // An action the service answers with the feed as it then stands.
    QCoro::Task<> summaryAction(QCoro::Task<TarnMercurySummary> call);
    // Reconciles, then reads the feed again for the account's new state.
    QCoro::Task<TarnMercurySummary> reconciled(QString accountId, TarnExternalReconcile day);
    // Ends an action: the refusal shown (or cleared), `busy` off.
    void finish(const QString &refusal);
    [[nodiscard]] QString refusalOf(const TarnAPIError &error);
    void setError(const QString &text);
    void setBusy(bool busy);

    TarnAPI &m_api;
    NativeFeedAccountModel *m_accounts;
    NativeFeedRowModel *m_rows;
    TarnMercurySummary m_summary;
    bool m_googleConnected = false;
    QString m_googleEmail;
    QString m_reconciliation;
    QString m_reconciledAccount;
    int m_generation = 0;
    int m_reading = 0;
    bool m_busy = false;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
};
