#pragma once

#include <QJsonObject>
#include <QString>

// The body of naming a request.
struct TarnAgentRename {
    QString title;

    [[nodiscard]] QJsonObject toJSON() const;
};
