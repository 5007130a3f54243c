#pragma once

#include "money/TarnBooks.h"
#include "shell/NativeKeyedListModel.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QVariantList>

class TarnAPI;

// The Banking page's rows: those waiting for review and those matched to the
// ledger, from the books overview it is given. A row is matched to an entry
// that moves the same amount through its account, unmatched, or categorized
// to an account (the service posts the entry); each change asks for the
// books to be loaded again.
class NativeBankRows : public QObject {
    Q_OBJECT
    Q_PROPERTY(QAbstractListModel *unmatched READ unmatched CONSTANT)
    Q_PROPERTY(QAbstractListModel *matched READ matched CONSTANT)
    Q_PROPERTY(QString unmatchedEmpty READ unmatchedEmpty CONSTANT)
    Q_PROPERTY(QString matchedEmpty READ matchedEmpty CONSTANT)
    Q_PROPERTY(bool busy READ busy NOTIFY stateChanged)
    Q_PROPERTY(QString error READ error NOTIFY stateChanged)

public:
    struct Row {
        QString id;
        QString date;
        QString description;
        QString amount;
        // "Matched to ledger" once matched; where it came from before.
        QString detail;
        friend bool operator==(const Row &, const Row &) = default;
    };

    explicit NativeBankRows(TarnAPI &api, QObject *parent = nullptr);

    void setBooks(const TarnBooks &books);

    [[nodiscard]] QAbstractListModel *unmatched() { return &m_unmatched; }
    [[nodiscard]] QAbstractListModel *matched() { return &m_matched; }
    [[nodiscard]] static QString unmatchedEmpty() { return QStringLiteral("No unmatched bank transactions"); }
    [[nodiscard]] static QString matchedEmpty() { return QStringLiteral("No bank rows reviewed yet"); }
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] QString error() const { return m_error; }

    // The entries a row may be matched to: [{ "id", "label" }].
    Q_INVOKABLE QVariantList candidates(const QString &rowID) const;
    Q_INVOKABLE void match(const QString &rowID, const QString &entryID);
    Q_INVOKABLE void unmatch(const QString &rowID);
    Q_INVOKABLE void categorize(const QString &rowID, const QString &accountID);

Q_SIGNALS:
    void stateChanged();
    // A row changed on the service: the books are loaded again.
    void booksChanged();
    void done(const QString &message);

private:
    template <typename Call> QCoro::Task<> change(Call call, QString message);

    TarnAPI &m_api;
    TarnBooks m_books;
    NativeKeyedListModel<Row, &Row::id> m_unmatched;
    NativeKeyedListModel<Row, &Row::id> m_matched;
    bool m_busy = false;
    QString m_error;
};
