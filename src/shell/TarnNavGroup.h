#pragma once

#include "shell/TarnNavItem.h"

#include <QList>
#include <QObject>
#include <QString>

// A labelled group of sidebar items.
struct TarnNavGroup {
    Q_GADGET
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QList<TarnNavItem> items MEMBER items)

public:
    QString label;
    QList<TarnNavItem> items;

    friend bool operator==(const TarnNavGroup &, const TarnNavGroup &) = default;
};
