#pragma once

#include "money/NativePaymentClientPanel.h"
#include "money/TarnPaymentFilter.h"
#include "money/TarnPaymentsTerminal.h"
#include "shell/NativeKeyedListModel.h"

#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QString>

#include <functional>

class TarnAPI;

// The payments terminal's screen state: the filtered payments with their
// pills, this month's received total, the open invoices with the chosen
// client's saved cards, the refund, charge and offline-payment forms, and
// the chosen client's cards and schedules in `client`.
// Typed amounts and days are checked here, so an invalid form is never sent
// and says why in `formError`. A charge keeps its request key per invoice
// until it succeeds: trying again after a lost answer is recognised by the
// service and charges once.
class NativePaymentsView : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool loading READ loading NOTIFY stateChanged)
    Q_PROPERTY(QString error READ error NOTIFY stateChanged)
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY stateChanged)
    Q_PROPERTY(QAbstractListModel *payments READ payments CONSTANT)
    Q_PROPERTY(QAbstractListModel *openInvoices READ openInvoices CONSTANT)
    Q_PROPERTY(QAbstractListModel *cards READ cards CONSTANT)
    Q_PROPERTY(QAbstractListModel *clients READ clients CONSTANT)
    Q_PROPERTY(NativePaymentClientPanel *client READ client CONSTANT)
    Q_PROPERTY(QString receivedTotal READ receivedTotal NOTIFY stateChanged)
    Q_PROPERTY(int receivedCount READ receivedCount NOTIFY stateChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY formChanged)
    Q_PROPERTY(QString formError READ formError NOTIFY formChanged)

public:
    struct PaymentRow {
        QString id;
        QString client;
        QString amount;
        QString date;
        int tone = 0;
        QString pill;
        bool refundable = false;
        QString leftToRefund;
        // The refund request waiting on a decision, if any.
        QString requestID;
        // How it was paid, and its reference when it has one.
        QString detail;
        // A pending offline payment, which can be marked paid.
        bool markable = false;
        friend bool operator==(const PaymentRow &, const PaymentRow &) = default;
    };
    struct InvoiceRow {
        QString id;
        QString client;
        QString number;
        QString dueOn;
        QString remaining;
        friend bool operator==(const InvoiceRow &, const InvoiceRow &) = default;
    };
    struct ClientRow {
        QString id;
        QString name;
        friend bool operator==(const ClientRow &, const ClientRow &) = default;
    };
    struct CardRow {
        QString id;
        QString label;
        friend bool operator==(const CardRow &, const CardRow &) = default;
    };

    explicit NativePaymentsView(TarnAPI &api, QObject *parent = nullptr);
    ~NativePaymentsView() override;

    // Until the chosen client's cards are in too, so the screen is drawn whole.
    [[nodiscard]] bool loading() const { return m_loading || m_client.loading(); }
    [[nodiscard]] QString error() const { return m_error; }
    [[nodiscard]] QString filter() const;
    void setFilter(const QString &filter);
    [[nodiscard]] QAbstractListModel *payments() { return &m_payments; }
    [[nodiscard]] QAbstractListModel *openInvoices() { return &m_invoices; }
    [[nodiscard]] QAbstractListModel *cards() { return &m_cards; }
    [[nodiscard]] QAbstractListModel *clients() { return &m_clients; }
    [[nodiscard]] NativePaymentClientPanel *client() { return &m_client; }
    [[nodiscard]] QString receivedTotal() const;
    [[nodiscard]] int receivedCount() const;
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] QString formError() const { return m_formError; }

    Q_INVOKABLE void reload();
    // Forgets what was shown: the session ended, and the next person must
    // not see it.
    void clear();
    // False when the amount is refused here: nothing is sent.
    Q_INVOKABLE bool requestRefund(const QString &paymentID, const QString &amount, const QString &reason);
    Q_INVOKABLE void decideRefund(const QString &requestID, bool approve, const QString &note);
    // Shows the saved cards of the invoice's client.
    Q_INVOKABLE void chooseInvoice(const QString &invoiceID);
    Q_INVOKABLE void charge(const QString &invoiceID, const QString &profileID);
    // False when the reference or day is refused here: nothing is sent.
    Q_INVOKABLE bool recordOffline(const QString &invoiceID, const QString &reference, const QString &paidOn);
    // A payment taken outside the terminal and not tied to an invoice. False
    // when the form is refused here: nothing is sent.
    Q_INVOKABLE bool recordPayment(
        const QString &clientID, const QString &amount, bool paid, const QString &reference, const QString &paidOn);
    // A pending offline payment has arrived. When someone changed it first,
    // their version is shown with the refusal.
    Q_INVOKABLE void markPaid(const QString &paymentID);

Q_SIGNALS:
    void stateChanged();
    void formChanged();
    // A form's change went through; the list is loaded again.
    void done(const QString &message);

private:
    QCoro::Task<> load(int generation);
    QCoro::Task<> loadCards(QString clientID, int generation);
    // Runs one change, then reloads; its failure shows in formError, and
    // `succeeded` runs only when it went through.
    template <typename Call> QCoro::Task<> change(Call call, QString message, std::function<void()> succeeded = {});
    void apply();
    void setForm(bool busy, const QString &error);
    [[nodiscard]] const TarnOpenInvoice *invoice(const QString &id) const;

    TarnAPI &m_api;
    TarnPaymentsTerminal m_terminal;
    TarnPaymentFilter m_filter = TarnPaymentFilter::all;
    NativeKeyedListModel<PaymentRow, &PaymentRow::id> m_payments;
    NativeKeyedListModel<InvoiceRow, &InvoiceRow::id> m_invoices;
    NativeKeyedListModel<CardRow, &CardRow::id> m_cards;
    NativeKeyedListModel<ClientRow, &ClientRow::id> m_clients;
    NativePaymentClientPanel m_client;
    QHash<QString, QString> m_chargeKeys;
    bool m_loading = false;
    bool m_busy = false;
    QString m_error;
    QString m_formError;
    // Bumped by every load, so an older answer never overwrites a newer one.
    int m_generation = 0;
    int m_cardsGeneration = 0;
};
