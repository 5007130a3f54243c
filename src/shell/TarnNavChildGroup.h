#pragma once

#include "shell/TarnNavChild.h"

#include <QList>
#include <QObject>
#include <QString>

// A labelled run of entries under one sidebar item.
struct TarnNavChildGroup {
    Q_GADGET
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QList<TarnNavChild> items MEMBER items)

public:
    QString label;
    QList<TarnNavChild> items;

    friend bool operator==(const TarnNavChildGroup &, const TarnNavChildGroup &) = default;
};
