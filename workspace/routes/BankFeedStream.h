#pragma once

#include <QList>
#include <QString>

// The simulated bank behind the books' feed: the accounts it holds and the
// rows each connected account brings in. A connection's rows follow from
// its connection time alone, so the same connection always yields the same
// rows and tests can predict them.
namespace BankFeedStream {

// One account at the bank, in the order the bank hands them over. `code` is
// the books' bank account it feeds ("1000" is already in the demo books).
struct Account {
    QString name;
    QString mask;
    QString code;
};

// One row of the feed: its bank day, text, signed cents and a reference that
// no other row of the feed shares, so the books never take it for a repeat.
struct Row {
    qint64 dueMs = 0;
    QString date;
    QString description;
    qint64 amount = 0;
    QString reference;

    friend bool operator==(const Row &, const Row &) = default;
};

// A row every six hours; a new connection brings in a day of history.
inline constexpr qint64 intervalMs = 6LL * 60 * 60 * 1000;
inline constexpr int historyRows = 4;
// An account's rows older than this many are not fed in one go.
inline constexpr int catchUpRows = 120;

[[nodiscard]] const QList<Account> &accounts();
// Row `n` (from 0) of a connection made at `connectedMs` that brought in
// `history` rows dated before it.
[[nodiscard]] Row row(qint64 connectedMs, int history, int n);
// How many of its rows have come in by `nowMs`.
[[nodiscard]] int dueCount(qint64 connectedMs, int history, qint64 nowMs);

} // namespace BankFeedStream
