#pragma once

#include "money/TarnBooksRegister.h"
#include "shell/NativeKeyedListModel.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

class TarnAPI;

// The Reports page: revenue, expenses and net income for a chosen period, and
// the register of one account (or every account) in that period, a hundred
// entries at a time; `more` appends the next hundred.
class NativeBooksReport : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool loading READ loading NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)
    Q_PROPERTY(QString revenue READ revenue NOTIFY changed)
    Q_PROPERTY(QString expenses READ expenses NOTIFY changed)
    Q_PROPERTY(QString netIncome READ netIncome NOTIFY changed)
    Q_PROPERTY(QAbstractListModel *entries READ registerModel CONSTANT)
    Q_PROPERTY(int registerTotal READ registerTotal NOTIFY changed)
    Q_PROPERTY(bool hasMore READ hasMore NOTIFY changed)

public:
    struct Row {
        QString id;
        QString date;
        QString memo;
        QString amount;
        // "6100 Software" lines, debits first, joined for one line of text.
        QString accounts;
        bool reversal = false;
        friend bool operator==(const Row &, const Row &) = default;
    };

    explicit NativeBooksReport(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] QString error() const { return m_error; }
    [[nodiscard]] QString revenue() const;
    [[nodiscard]] QString expenses() const;
    [[nodiscard]] QString netIncome() const;
    [[nodiscard]] QAbstractListModel *registerModel() { return &m_rows; }
    [[nodiscard]] int registerTotal() const { return static_cast<int>(m_total); }
    [[nodiscard]] bool hasMore() const { return m_rows.rowCount() < m_total; }

    // A period's figures and the first page of its register; an empty
    // account is every account.
    Q_INVOKABLE void load(const QString &start, const QString &end, const QString &accountID);
    Q_INVOKABLE void more();
    // The shown period again from its first page, once the ledger changed;
    // nothing before a period was asked for.
    void refresh();

Q_SIGNALS:
    void changed();

private:
    QCoro::Task<> loadPeriod(QString start, QString end, QString accountID, int generation);
    QCoro::Task<> loadPage(qint64 offset, int generation);
    void append(const TarnBooksRegister &page);

    TarnAPI &m_api;
    TarnBooksReport m_report;
    NativeKeyedListModel<Row, &Row::id> m_rows;
    QString m_start;
    QString m_end;
    QString m_accountID;
    qint64 m_total = 0;
    bool m_loading = false;
    QString m_error;
    int m_generation = 0;
};
