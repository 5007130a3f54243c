#pragma once

#include <QJsonObject>
#include <QString>

// The body of a reaction toggle: `active` adds the person's reaction,
// otherwise it is removed.
struct TarnReactionChange {
    QString emoji;
    bool active = false;

    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("emoji"), emoji }, { QStringLiteral("active"), active } };
    }
};
