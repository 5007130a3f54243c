#pragma once

#include "money/TarnBooksBank.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <optional>

class TarnAPI;

// The Banking page's month-end reconciliation: a bank account and statement
// date give the service's preview; the typed statement ending balance closes
// the statement only when it equals the adjusted balance and every bank row
// through the date is matched, so an unbalanced statement is never sent.
class NativeReconciliation : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool loading READ loading NOTIFY changed)
    Q_PROPERTY(bool hasPreview READ hasPreview NOTIFY changed)
    Q_PROPERTY(QString ledgerBalance READ ledgerBalance NOTIFY changed)
    Q_PROPERTY(QString outstandingTotal READ outstandingTotal NOTIFY changed)
    Q_PROPERTY(QString adjustedBalance READ adjustedBalance NOTIFY changed)
    Q_PROPERTY(int importedCount READ importedCount NOTIFY changed)
    Q_PROPERTY(int unmatchedCount READ unmatchedCount NOTIFY changed)
    Q_PROPERTY(int futureMatchCount READ futureMatchCount NOTIFY changed)
    Q_PROPERTY(QString lastClosedDate READ lastClosedDate NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)
    Q_PROPERTY(QString closedID READ closedID NOTIFY changed)

public:
    static constexpr auto warning = "Closing locks imported rows through this date. Review every match and compare "
                                    "with the bank statement first.";

    explicit NativeReconciliation(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool hasPreview() const { return m_preview.has_value(); }
    [[nodiscard]] QString ledgerBalance() const;
    [[nodiscard]] QString outstandingTotal() const;
    [[nodiscard]] QString adjustedBalance() const;
    [[nodiscard]] int importedCount() const;
    [[nodiscard]] int unmatchedCount() const;
    [[nodiscard]] int futureMatchCount() const;
    [[nodiscard]] QString lastClosedDate() const;
    [[nodiscard]] QString error() const { return m_error; }
    [[nodiscard]] QString closedID() const { return m_closedID; }

    // "Preview reconciliation".
    Q_INVOKABLE void preview(const QString &bankAccountID, const QString &statementDate);
    // "Close balanced statement" with the "Statement ending balance in USD";
    // false when refused here (nothing sent), with the reason in `error`.
    Q_INVOKABLE bool close(const QString &statementBalance);

    // A typed balance in cents: an amount as money is typed, with a leading
    // "-" for an overdrawn account.
    [[nodiscard]] static std::optional<qint64> balanceCents(const QString &typed);

Q_SIGNALS:
    void changed();
    // The statement was closed: the books are loaded again.
    void closed();

private:
    QCoro::Task<> loadPreview(QString bankID, QString date, int generation);
    QCoro::Task<> closeStatement(qint64 balance, int generation);
    [[nodiscard]] qint64 figure(qint64 TarnBooksReconciliation::*field) const;

    TarnAPI &m_api;
    std::optional<TarnBooksReconciliation> m_preview;
    bool m_loading = false;
    QString m_error;
    QString m_closedID;
    int m_generation = 0;
};
