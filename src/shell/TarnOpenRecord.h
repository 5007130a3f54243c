#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

// A record one screen asked another to open, with the list it was picked
// from so that the opened view can step to the next or previous one.
struct TarnOpenRecord {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QList<TarnOpenRecord> siblings MEMBER siblings)

public:
    QString id;
    QString name;
    QList<TarnOpenRecord> siblings;

    // The sibling `step` places away (1 next, -1 previous), carrying the same
    // siblings; none at either end or when this record is not among them.
    [[nodiscard]] std::optional<TarnOpenRecord> neighbour(qsizetype step) const;

    // Written out rather than defaulted: a defaulted comparison of a record
    // holding a list of itself sends Qt's equality traits into a loop.
    friend bool operator==(const TarnOpenRecord &a, const TarnOpenRecord &b);
};
