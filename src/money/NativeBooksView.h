#pragma once

#include "money/NativeBankImport.h"
#include "money/NativeBankRows.h"
#include "money/NativeBooksDashboard.h"
#include "money/NativeBooksExpenses.h"
#include "money/NativeBooksReport.h"
#include "money/NativeBooksTransactions.h"
#include "money/NativeReconciliation.h"
#include "money/TarnBooks.h"
#include "money/TarnPaymentsTerminal.h"
#include "shell/NativeKeyedListModel.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QVariantList>

class TarnAPI;

// The books area's state: one books overview (with the workspace's payments
// where the person may see them) handed to the pages' states, the chart of
// accounts by group, the company, the link to the workspace's own invoices
// and payments, and the journal's reversals and voids. Every change on a page
// loads the books again, so every figure comes from the ledger as it stands.
class NativeBooksView : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool loading READ loading NOTIFY stateChanged)
    Q_PROPERTY(QString error READ error NOTIFY stateChanged)
    Q_PROPERTY(QString company READ company NOTIFY stateChanged)
    Q_PROPERTY(bool sourceLinked READ sourceLinked NOTIFY stateChanged)
    Q_PROPERTY(QString sourceTitle READ sourceTitle NOTIFY stateChanged)
    Q_PROPERTY(QString sourceDetail READ sourceDetail NOTIFY stateChanged)
    Q_PROPERTY(QAbstractListModel *sourceRecords READ sourceRecords CONSTANT)
    Q_PROPERTY(QAbstractListModel *accounts READ accounts CONSTANT)
    // The bills, each followed by the payments made on it; and the receipts
    // taken on customer invoices under the invoice they settle. Each row
    // under its bill's or invoice's title ("section"), voidable until voided.
    Q_PROPERTY(QAbstractListModel *bills READ bills CONSTANT)
    Q_PROPERTY(QAbstractListModel *receipts READ receipts CONSTANT)
    Q_PROPERTY(QVariantList bankAccounts READ bankAccounts NOTIFY stateChanged)
    // Every account as [{ "id", "name" }], named by code and name, in the
    // chart's order: the choices of the register and of categorizing.
    Q_PROPERTY(QVariantList accountChoices READ accountChoices NOTIFY stateChanged)
    // The same led by "All accounts" (an empty id): the register's choices.
    Q_PROPERTY(QVariantList registerChoices READ registerChoices NOTIFY stateChanged)
    // The income accounts led by "Default income account" (an empty id, which
    // leaves the choice to the books): where a posted invoice's sale goes.
    Q_PROPERTY(QVariantList incomeChoices READ incomeChoices NOTIFY stateChanged)
    // The period the Expenses and Reports pages open on: the year to date.
    Q_PROPERTY(QString periodStart READ periodStart CONSTANT)
    Q_PROPERTY(QString periodEnd READ periodEnd CONSTANT)
    Q_PROPERTY(bool busy READ busy NOTIFY formChanged)
    Q_PROPERTY(QString formError READ formError NOTIFY formChanged)
    Q_PROPERTY(NativeBooksDashboard *dashboard READ dashboard CONSTANT)
    Q_PROPERTY(NativeBooksTransactions *transactions READ transactions CONSTANT)
    Q_PROPERTY(NativeBooksExpenses *expenses READ expenses CONSTANT)
    Q_PROPERTY(NativeBooksReport *report READ report CONSTANT)
    Q_PROPERTY(NativeBankRows *bankRows READ bankRows CONSTANT)
    Q_PROPERTY(NativeBankImport *statementImport READ statementImport CONSTANT)
    Q_PROPERTY(NativeReconciliation *reconciliation READ reconciliation CONSTANT)

public:
    struct AccountRow {
        QString id;
        QString group;
        QString code;
        QString name;
        // On the account's natural side (TarnBooksPages::naturalBalance).
        QString balance;
        friend bool operator==(const AccountRow &, const AccountRow &) = default;
    };
    struct SourceRow {
        QString key;
        QString kind;
        QString id;
        QString title;
        QString date;
        QString amount;
        friend bool operator==(const SourceRow &, const SourceRow &) = default;
    };

    struct DocumentRow {
        QString key;
        // "bill", "bill_payment" or "receipt": the kind voidRecord takes.
        QString kind;
        QString id;
        QString section;
        QString title;
        QString date;
        QString amount;
        QString status;
        bool voidable = false;
        friend bool operator==(const DocumentRow &, const DocumentRow &) = default;
    };

    explicit NativeBooksView(TarnAPI &api, QObject *parent = nullptr);
    ~NativeBooksView() override;

    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] QString error() const { return m_error; }
    [[nodiscard]] QString company() const { return m_books.company; }
    [[nodiscard]] bool sourceLinked() const { return m_books.source_linked; }
    [[nodiscard]] QString sourceTitle() const;
    [[nodiscard]] QString sourceDetail() const;
    [[nodiscard]] QAbstractListModel *sourceRecords() { return &m_sources; }
    [[nodiscard]] QAbstractListModel *accounts() { return &m_accounts; }
    [[nodiscard]] QAbstractListModel *bills() { return &m_bills; }
    [[nodiscard]] QAbstractListModel *receipts() { return &m_receipts; }
    [[nodiscard]] QVariantList bankAccounts() const;
    [[nodiscard]] QVariantList accountChoices() const;
    [[nodiscard]] QVariantList registerChoices() const;
    [[nodiscard]] QVariantList incomeChoices() const;
    [[nodiscard]] static QString periodStart();
    [[nodiscard]] static QString periodEnd();
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] QString formError() const { return m_formError; }
    [[nodiscard]] NativeBooksDashboard *dashboard() const { return m_dashboard; }
    [[nodiscard]] NativeBooksTransactions *transactions() const { return m_transactions; }
    [[nodiscard]] NativeBooksExpenses *expenses() const { return m_expenses; }
    [[nodiscard]] NativeBooksReport *report() const { return m_report; }
    [[nodiscard]] NativeBankRows *bankRows() const { return m_bankRows; }
    [[nodiscard]] NativeBankImport *statementImport() const { return m_import; }
    [[nodiscard]] NativeReconciliation *reconciliation() const { return m_reconciliation; }

    Q_INVOKABLE void reload();
    // Forgets what was shown: the session ended, and the next person must
    // not see it.
    void clear();
    Q_INVOKABLE void setCompany(const QString &name);
    Q_INVOKABLE void setSourceLinked(bool linked);
    // Posts one record of the review ("invoice" or "payment"); an invoice may
    // name the income account it goes to.
    Q_INVOKABLE void postSource(const QString &kind, const QString &id, const QString &incomeAccountID);
    // False when the day is refused here: nothing is sent.
    Q_INVOKABLE bool reverseEntry(const QString &entryID, const QString &date);
    // kind: "bill", "invoice", "bill_payment" or "receipt".
    Q_INVOKABLE bool voidRecord(const QString &kind, const QString &id, const QString &date);

Q_SIGNALS:
    void stateChanged();
    void formChanged();
    // A change went through (here or on the Banking page's rows); the books
    // are loaded again.
    void done(const QString &message);

private:
    QCoro::Task<> load(int generation);
    // Runs one change, then loads the books again; a failure shows in formError.
    template <typename Call> QCoro::Task<> change(Call call, QString message);
    void apply(const TarnPaymentsTerminal &terminal);
    void applyDocuments();
    // The accounts of one group of the chart, or all for an empty group.
    [[nodiscard]] QVariantList choicesIn(const QString &group) const;
    void setForm(bool busy, const QString &error);

    TarnAPI &m_api;
    TarnBooks m_books;
    NativeKeyedListModel<AccountRow, &AccountRow::id> m_accounts;
    NativeKeyedListModel<SourceRow, &SourceRow::key> m_sources;
    NativeKeyedListModel<DocumentRow, &DocumentRow::key> m_bills;
    NativeKeyedListModel<DocumentRow, &DocumentRow::key> m_receipts;
    NativeBooksDashboard *m_dashboard;
    NativeBooksTransactions *m_transactions;
    NativeBooksExpenses *m_expenses;
    NativeBooksReport *m_report;
    NativeBankRows *m_bankRows;
    NativeBankImport *m_import;
    NativeReconciliation *m_reconciliation;
    bool m_loading = false;
    bool m_busy = false;
    QString m_error;
    QString m_formError;
    int m_generation = 0;
};
