#pragma once

#include "money/TarnBooks.h"
#include "money/TarnBooksPages.h"
#include "money/TarnPaymentRecords.h"
#include "shell/NativeKeyedListModel.h"

#include <QObject>
#include <QString>

// The Transactions and Invoices pages: the books entries merged with the
// workspace's payments (a payment already posted into the books is listed
// once), searched and filtered by source, and the invoices open and paid
// with what remains on them.
class NativeBooksTransactions : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY filterChanged)
    // "all", "books", "payments" or "mercury".
    Q_PROPERTY(QString source READ source WRITE setSource NOTIFY filterChanged)
    Q_PROPERTY(QAbstractListModel *transactions READ transactions CONSTANT)
    Q_PROPERTY(QAbstractListModel *invoices READ invoices CONSTANT)

public:
    struct TransactionRow {
        QString id;
        QString date;
        QString title;
        QString detail;
        QString amount;
        // "in", "out" or "journal".
        QString direction;
        QString source;
        QString status;
        friend bool operator==(const TransactionRow &, const TransactionRow &) = default;
    };
    struct InvoiceRow {
        QString id;
        QString title;
        QString customer;
        QString date;
        QString amount;
        QString remaining;
        bool open = false;
        QString status;
        // A books invoice not voided yet with no receipt standing on it: one
        // the ledger can void (its receipts are voided first).
        bool voidable = false;
        friend bool operator==(const InvoiceRow &, const InvoiceRow &) = default;
    };

    explicit NativeBooksTransactions(QObject *parent = nullptr);

    void show(const TarnBooks &books, const QList<TarnPayment> &payments, const QList<TarnOpenInvoice> &open);

    [[nodiscard]] QString query() const { return m_query; }
    void setQuery(const QString &query);
    [[nodiscard]] QString source() const;
    void setSource(const QString &source);
    [[nodiscard]] QAbstractListModel *transactions() { return &m_transactions; }
    [[nodiscard]] QAbstractListModel *invoices() { return &m_invoices; }

Q_SIGNALS:
    void filterChanged();

private:
    void apply();

    QList<TarnBooksPages::Transaction> m_all;
    QString m_query;
    std::optional<TarnBooksPages::Source> m_source;
    NativeKeyedListModel<TransactionRow, &TransactionRow::id> m_transactions;
    NativeKeyedListModel<InvoiceRow, &InvoiceRow::id> m_invoices;
};
