#pragma once

#include "shell/TarnDestination.h"

#include <QObject>
#include <QString>

#include <optional>

// An administration entry: a section of the company screen, or a page of
// the settings window when `settings` is set.
struct TarnAdminArea {
    Q_GADGET
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString app READ appText)
    Q_PROPERTY(bool ownerOnly MEMBER ownerOnly)
    Q_PROPERTY(bool settings MEMBER settings)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(TarnDestination destination MEMBER destination)
    Q_PROPERTY(QString subtitle MEMBER subtitle)

public:
    QString key;
    QString label;
    std::optional<QString> app;
    bool ownerOnly = false;
    bool settings = false;
    QString symbol;
    TarnDestination destination;
    QString subtitle;

    [[nodiscard]] QString appText() const { return app.value_or(QString()); }

    friend bool operator==(const TarnAdminArea &, const TarnAdminArea &) = default;
};
