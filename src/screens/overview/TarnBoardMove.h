#pragma once

#include <QJsonObject>
#include <QString>

// A board item moved to another stage, from the version it was seen at.
struct TarnBoardMove {
    QString stage;
    qint64 version = 0;

    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("stage"), stage }, { QStringLiteral("version"), version } };
    }
};
