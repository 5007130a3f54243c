#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

class TarnJSONObject;

// A piece of work on a product board, in one of its stages. `version`
// counts its moves; a move carries the version it was based on.
struct TarnBoardItem {
    QString id;
    QString title;
    QString stage;
    std::optional<QString> client_name {};
    std::optional<QString> owner_name {};
    std::optional<QString> due_date {};
    qint64 version = 0;

    static TarnBoardItem fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnBoardItem &, const TarnBoardItem &) = default;
};

// A product the company delivers and its stages in order, with the work on it.
struct TarnProductBoard {
    QString id;
    QString name;
    QStringList stages;
    QList<TarnBoardItem> items;

    static TarnProductBoard fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnProductBoard &, const TarnProductBoard &) = default;
};
