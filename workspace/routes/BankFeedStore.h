#pragma once

#include "workspace/WorkspaceReply.h"

#include <QJsonObject>
#include <QString>

class WorkspaceStore;

// The books' bank feed: the bank accounts connected to it, the rows each has
// brought into the books' bank rows (source "mercury"), the balance the bank
// showed on a day (the baseline) and the reconciliations of the bank's balance
// against the books. Rows come in as they fall due whenever the feed or the
// books are read. Owners only; `me` has been checked by the caller.
class BankFeedStore {
public:
    explicit BankFeedStore(WorkspaceStore &store);

    [[nodiscard]] bool isOwner(const QString &me) const;
    [[nodiscard]] bool hasAccounts() const;

    // Brings every connected account's due rows into the books.
    void deliver(qint64 nowMs);

    [[nodiscard]] WorkspaceReply summary(qint64 nowMs);
    // Connects the bank's next account not yet connected.
    [[nodiscard]] WorkspaceReply connect(const QString &me, qint64 nowMs);
    [[nodiscard]] WorkspaceReply setBaseline(const QString &me, const QString &accountID, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply reconcile(const QString &me, const QString &accountID, const QJsonObject &body);

    // The demo's checking account, connected now: the demo books already hold
    // its history, so only later rows come in, over a baseline on the day
    // before its oldest row.
    void plantDemo(qint64 nowMs);

private:
    [[nodiscard]] QString insertAccount(int bankIndex, const QString &me, qint64 nowMs, int history, int delivered);
    [[nodiscard]] QJsonObject account(const QString &id) const;
    // What the bank says the account held at the end of `day`: the baseline and
    // the rows fed in after it; null without a baseline or before it.
    [[nodiscard]] QJsonValue bankBalance(const QString &id, const QString &day) const;
    [[nodiscard]] qint64 booksBalance(const QString &bankAccountID, const QString &day) const;

    WorkspaceStore &m_store;
};
