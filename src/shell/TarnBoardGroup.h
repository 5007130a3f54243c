#pragma once

#include "shell/TarnDestination.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

// A work-board tile: a place to go, or only suggestions for the assistant
// when `open` is absent.
struct TarnBoardGroup {
    Q_GADGET
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(bool opens READ opens)
    Q_PROPERTY(TarnDestination open READ openOrNone)
    Q_PROPERTY(QStringList prompts MEMBER prompts)

public:
    QString key;
    QString label;
    QString symbol;
    std::optional<TarnDestination> open;
    QStringList prompts;

    [[nodiscard]] bool opens() const { return open.has_value(); }
    [[nodiscard]] TarnDestination openOrNone() const { return open.value_or(TarnDestination()); }

    friend bool operator==(const TarnBoardGroup &, const TarnBoardGroup &) = default;
};
