#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>

// The body of joining a room's huddle (starting it when none runs): the
// people to ring.
struct TarnHuddleJoin {
    QList<QString> invite;

    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("invite"), QJsonArray::fromStringList(invite) } };
    }
};
