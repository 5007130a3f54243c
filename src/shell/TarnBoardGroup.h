#pragma once

#include "shell/TarnDestination.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

// A work-board tile: a place to go, or only suggestions for the assistant
// when `open` is absent.
struct TarnBoardGroup {
    Q_GADGET
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QVariant open READ openVariant)
    Q_PROPERTY(QStringList prompts MEMBER prompts)

public:
    QString key;
    QString label;
    QString symbol;
    std::optional<TarnDestination> open;
    QStringList prompts;

    // Null for a tile without a destination, so that QML can test it.
    [[nodiscard]] QVariant openVariant() const { return open ? QVariant::fromValue(*open) : QVariant(); }

    friend bool operator==(const TarnBoardGroup &, const TarnBoardGroup &) = default;
};
