#pragma once

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// Pages of the journal with their lines, and the income statement of a
// period: what the register and report endpoints answer.

// One line of an entry, carrying its account's code, name and type.
struct TarnBooksRegisterLine {
    QString entry_id;
    QString code;
    QString name;
    QString type;
    qint64 debit = 0;
    qint64 credit = 0;

    static TarnBooksRegisterLine fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksRegisterLine &, const TarnBooksRegisterLine &) = default;
};

struct TarnBooksRegisterEntry {
    QString id;
    QString entry_date;
    QString memo;
    std::optional<QString> source_type;
    std::optional<QString> reverses_id;
    qint64 amount = 0;
    QList<TarnBooksRegisterLine> lines;

    static TarnBooksRegisterEntry fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksRegisterEntry &, const TarnBooksRegisterEntry &) = default;
};

// One page (limit entries from offset) of the `total` entries of a period.
struct TarnBooksRegister {
    QString start;
    QString end;
    QString account_id;
    qint64 total = 0;
    qint64 limit = 0;
    qint64 offset = 0;
    QList<TarnBooksRegisterEntry> entries;

    static TarnBooksRegister fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksRegister &, const TarnBooksRegister &) = default;
};

struct TarnBooksReport {
    QString start;
    QString end;
    qint64 revenue = 0;
    qint64 expenses = 0;
    qint64 net_income = 0;

    static TarnBooksReport fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksReport &, const TarnBooksReport &) = default;
};
