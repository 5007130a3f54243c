#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QSqlDatabase>
#include <QString>

// The books of the workspace's legal company: a double-entry ledger in
// integer cents over SQLite, with the documents posted into it (customer
// invoices and receipts, bills and bill payments), bank rows imported or fed
// in and matched to entries, and closed reconciliations. Every entry is
// checked to balance before anything is stored, and every operation is one
// transaction, so a refused one leaves the books as they were.
class BooksLedger {
public:
    struct Line {
        QString account_id;
        qint64 debit = 0;
        qint64 credit = 0;
    };

    // An answer: `body` with status 200, or `error` with its status.
    struct Outcome {
        int status = 200;
        QString error;
        QJsonObject body;

        [[nodiscard]] bool ok() const { return error.isEmpty(); }
        static Outcome refused(int status, QString error) { return { status, std::move(error), {} }; }
    };

    explicit BooksLedger(QSqlDatabase db);

    [[nodiscard]] QJsonObject overview() const;
    [[nodiscard]] Outcome report(const QString &start, const QString &end) const;
    [[nodiscard]] Outcome registerPage(
        const QString &start, const QString &end, const QString &accountID, qint64 limit, qint64 offset) const;

    // Posts a balanced entry; answers {"id"}.
    [[nodiscard]] Outcome post(const QString &date, const QString &memo, const QList<Line> &lines);
    [[nodiscard]] Outcome reverse(const QString &entryID, const QString &date);
    // kind: "bill", "invoice", "bill_payment" or "receipt".
    [[nodiscard]] Outcome voidDocument(const QString &kind, const QString &id, const QString &date);

    [[nodiscard]] Outcome importRows(const QString &bankID, const QJsonArray &rows);
    [[nodiscard]] Outcome match(const QString &rowID, const QString &entryID);
    [[nodiscard]] Outcome unmatch(const QString &rowID);
    [[nodiscard]] Outcome categorize(const QString &rowID, const QString &accountID);
    [[nodiscard]] Outcome reconciliation(const QString &bankID, const QString &date) const;
    [[nodiscard]] Outcome close(const QString &bankID, const QString &date, qint64 balance);

    [[nodiscard]] Outcome setCompany(const QString &name);
    [[nodiscard]] Outcome setSourceLinked(bool linked);
    // Posts a payments-terminal invoice or payment into the books.
    [[nodiscard]] Outcome postSource(const QString &kind, const QString &id, const QString &incomeAccountID);

    // A row the bank feed brought in, kept as any bank row is.
    void addFeedRow(const QString &bankID, const QString &date, const QString &description, qint64 amount,
        const QString &reference);

    // Sums of debits and credits over every line: equal in balanced books.
    [[nodiscard]] QPair<qint64, qint64> totals() const;

    // A year of the demo company's books, ending this month, when the ledger
    // holds no account yet.
    void plantDemoWhenEmpty();

private:
    // Stores a checked entry inside the caller's transaction; answers its id,
    // or an outcome saying why it was refused.
    Outcome insertEntry(const QString &date, const QString &memo, const QList<Line> &lines,
        const QString &sourceType = {}, const QString &sourceID = {}, const QString &reverses = {});
    Outcome reverseInside(const QString &entryID, const QString &date);
    // Runs `work` in one transaction, committed only when it succeeds.
    template <typename Work> Outcome inTransaction(Work work);
    void insertDocument(const QString &id, const QString &kind, const QString &party, const QString &number,
        const QString &date, const QString &due, qint64 amount, const QString &appliesTo, const QString &entryID);
    void insertBankRow(const QString &bankID, const QString &date, const QString &description, qint64 amount,
        const QString &reference, const QString &source, int occurrence, const QString &entryID);

    QSqlDatabase m_db;
};
